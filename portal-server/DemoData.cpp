#include "DemoData.h"

#include <QDateTime>
#include <algorithm>
#include <stdexcept>

#include "column_value.h"
#include "demo_files.h"

namespace qinghe::portal_server {

namespace {

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const std::size_t end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

DemoData::Sheet readSheet(const DemoFile& file) {
  DemoData::Sheet sheet{.storage = file.name, .columns = {}, .lines = {}};
  for (const std::string_view line : split(file.text, '\n')) {
    if (line.empty()) continue;
    if (sheet.columns.empty()) {
      sheet.columns = split(line, '\t');
      continue;
    }
    sheet.lines.push_back(split(line, '\t'));
    if (sheet.lines.back().size() != sheet.columns.size()) {
      throw std::logic_error("demo data: broken line in " + std::string(file.name));
    }
  }
  return sheet;
}

std::vector<Assignment> rowOf(const Table& table, const DemoData::Sheet& sheet,
                              const DemoData::Line& line) {
  std::vector<Assignment> row;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Column* column = table.column(sheet.columns[i]);
    if (!column) throw std::logic_error("demo data: unknown column");
    auto value = columnValue(*column, line[i]);
    if (!value) throw std::logic_error("demo data: broken value in " + std::string(sheet.storage));
    row.push_back({column, std::move(*value)});
  }
  return row;
}

using Rows = std::vector<std::vector<Assignment>>;

// The moment of a row, as it is kept.
std::string& momentOf(std::vector<Assignment>& row) {
  const auto found = std::find_if(row.begin(), row.end(), [](const Assignment& cell) {
    return cell.column->type == Type::Date;
  });
  if (found == row.end()) throw std::logic_error("demo data: a row without its date");
  return std::get<std::string>(found->value);
}

// Moves all moments by whole days, so that the newest falls on the day before this one.
void bringUpToDate(Rows& rows) {
  const auto parsed = [](const std::string& moment) {
    return QDateTime::fromString(QString::fromStdString(moment),
                                 QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  };
  std::string newest;
  for (auto& row : rows) newest = std::max(newest, momentOf(row));
  const qint64 days = parsed(newest).date().daysTo(QDate::currentDate()) - 1;
  for (auto& row : rows) {
    std::string& moment = momentOf(row);
    const QDateTime moved = parsed(moment).addDays(days);
    moment = moved.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString();
  }
}

}  // namespace

std::vector<DemoData::Sheet> DemoData::sheets() {
  std::vector<Sheet> all;
  for (const DemoFile& file : demoFiles()) all.push_back(readSheet(file));
  return all;
}

bool DemoData::fill(Store& store) {
  bool filled = false;
  store.transact([&](StoreWriter& writer) {
    if (writer.count(storedTable("qyxx"), {}) > 0) return;
    for (const Sheet& sheet : sheets()) {
      if (sheet.storage == localHistory) continue;
      const Table& table = storedTable(sheet.storage);
      Rows rows;
      for (const Line& line : sheet.lines) rows.push_back(rowOf(table, sheet, line));
      if (sheet.storage == "xixi") bringUpToDate(rows);
      for (const auto& row : rows) writer.insert(table, row);
    }
    filled = true;
  });
  return filled;
}

}  // namespace qinghe::portal_server
