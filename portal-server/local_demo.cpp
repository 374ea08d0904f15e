#include "local_demo.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "DemoData.h"
#include "column_value.h"

namespace qinghe::portal_server {

namespace {

using Sheet = DemoData::Sheet;
using Line = DemoData::Line;
using Columns = std::vector<std::pair<std::string_view, std::string_view>>;  // local, portal

// The one enterprise of a machine; its goods name it by this key.
constexpr std::string_view localId = "1";

const Sheet& sheetOf(const std::vector<Sheet>& sheets, std::string_view storage) {
  const auto found = std::find_if(sheets.begin(), sheets.end(),
                                  [&](const Sheet& sheet) { return sheet.storage == storage; });
  if (found == sheets.end()) throw std::logic_error("demo data: a sheet is missing");
  return *found;
}

std::string_view cell(const Sheet& sheet, const Line& line, std::string_view column) {
  const auto found = std::find(sheet.columns.begin(), sheet.columns.end(), column);
  if (found == sheet.columns.end()) return {};
  return line[static_cast<std::size_t>(found - sheet.columns.begin())];
}

// Local rows hold what a user sees: line ends instead of tags.
std::string literal(std::string_view text) {
  std::string sql = "'";
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, 4) == "<br>") {
      sql += "'||char(13,10)||'";
      i += 3;
    } else {
      sql += text[i];
      if (text[i] == '\'') sql += '\'';
    }
  }
  return sql + "'";
}

void appendInsert(std::string& sql, std::string_view table,
                  const std::vector<std::pair<std::string_view, std::string>>& cells) {
  std::string names;
  std::string values;
  for (const auto& [name, value] : cells) {
    names.append(names.empty() ? "" : ",").append(name);
    values.append(values.empty() ? "" : ",").append(value);
  }
  sql.append("INSERT INTO ").append(table).append("(").append(names);
  sql.append(") VALUES (").append(values).append(");\n");
}

void appendMirror(std::string& sql, std::string_view table, const Sheet& sheet,
                  std::string_view enterprise, const Columns& columns) {
  int number = 0;
  for (const Line& line : sheet.lines) {
    if (cell(sheet, line, "qiye_id") != enterprise) continue;
    std::vector<std::pair<std::string_view, std::string>> cells{
        {"id", std::to_string(++number)},
        {"R_ID", std::string(cell(sheet, line, "id"))},
        {"QIYE_ID", std::string(localId)}};
    for (const auto& [local, portal] : columns) {
      const std::string_view value = cell(sheet, line, portal);
      const bool isNumber = local.ends_with("_ID") || local == "NOTH";
      cells.emplace_back(local, isNumber ? std::string(value) : literal(value));
    }
    appendInsert(sql, table, cells);
  }
}

std::string number(std::string_view text) {
  return text.empty() ? "0" : std::string(text);
}

std::string date(const Sheet& sheet, const Line& line, std::string_view column) {
  const auto kept = storedDate(cell(sheet, line, column));
  if (!kept) throw std::logic_error("demo data: an order without its date");
  return literal(*kept);
}

void appendOrderLines(std::string& sql, const Sheet& sheet, std::string_view order,
                      const std::string& localOrder, int* count) {
  for (const Line& line : sheet.lines) {
    if (cell(sheet, line, "gohu_id") != order) continue;
    std::vector<std::pair<std::string_view, std::string>> cells{
        {"id", std::to_string(++*count)}, {"R_ID", std::string(order)}, {"GOHU_ID", localOrder}};
    for (const std::string_view name : {"ximu", "ximu_bh", "gesh", "ximu_no", "lebi"}) {
      cells.emplace_back(name, literal(cell(sheet, line, name)));
    }
    for (const std::string_view name :
         {"ximu_id", "shli", "jige", "jine", "zhko", "ynsh", "baxi", "ling"}) {
      cells.emplace_back(name, number(cell(sheet, line, name)));
    }
    appendInsert(sql, "GOKU", cells);
  }
}

// The enterprise's copies of the orders it is a party to. A copy knows its twin by the portal's
// number of the order, in the header and in the lines.
void appendOrders(std::string& sql, const Sheet& headers, const Sheet& lines,
                  std::string_view enterprise) {
  int orders = 0;
  int count = 0;
  for (const Line& line : headers.lines) {
    const bool isParty = cell(headers, line, "gosh_id") == enterprise ||
                         cell(headers, line, "kehu_id") == enterprise;
    if (!isParty) continue;
    const std::string_view twin = cell(headers, line, "id");
    const std::string own = std::to_string(++orders);
    std::vector<std::pair<std::string_view, std::string>> cells{
        {"id", own},
        {"R_ID", std::string(twin)},
        {"ghrq", date(headers, line, "ghrq")},
        {"fhrq", date(headers, line, "fhrq")}};
    for (const std::string_view name : {"gohu_no", "gosh", "kehu", "feyo", "fhfs"}) {
      cells.emplace_back(name, literal(cell(headers, line, name)));
    }
    for (const std::string_view name : {"gosh_id", "kehu_id", "jhhs", "xshs", "sh", "fh", "shli",
                                        "jine", "zhko", "ynsh", "heji", "sher"}) {
      cells.emplace_back(name, number(cell(headers, line, name)));
    }
    appendInsert(sql, "GOHU", cells);
    appendOrderLines(sql, lines, twin, own, &count);
  }
}

// What the enterprise wrote and what was written to it.
void appendHistory(std::string& sql, const Sheet& sheet, std::string_view enterprise) {
  int number = 0;
  for (const Line& line : sheet.lines) {
    const std::string_view to = cell(sheet, line, "qyxx_id");
    const std::string_view from = cell(sheet, line, "user_id");
    if (to != enterprise && from != enterprise) continue;
    const auto moment = storedDate(cell(sheet, line, "dtime"));
    if (!moment) throw std::logic_error("demo data: a message without its date");
    appendInsert(sql, "XIXI",
                 {{"id", std::to_string(++number)},
                  {"qyxx_id", std::string(to)},
                  {"qyxx", literal(cell(sheet, line, "qyxx"))},
                  {"user_id", std::string(from)},
                  {"UserName", literal(cell(sheet, line, "username"))},
                  {"content", literal(cell(sheet, line, "content"))},
                  {"dtime", literal(*moment)}});
  }
}

}  // namespace

std::string localDemoSql(const std::string& userNumber) {
  const auto sheets = DemoData::sheets();
  const Sheet& enterprises = sheetOf(sheets, "qyxx");
  for (const Line& line : enterprises.lines) {
    if (cell(enterprises, line, "user_no") != userNumber) continue;
    const std::string_view id = cell(enterprises, line, "id");
    std::string sql = "BEGIN;\n";
    appendInsert(sql, "QYXX",
                 {{"id", std::string(localId)},
                  {"R_ID", std::string(id)},
                  {"user_no", literal(userNumber)},
                  {"user_name", literal(cell(enterprises, line, "user_name"))},
                  {"user_pass", literal(cell(enterprises, line, "user_pass"))}});
    appendMirror(sql, "XIMU", sheetOf(sheets, "ximu"), id,
                 {{"qiye", "qiye"},
                  {"LEBI_ID", "lebi_id"},
                  {"CHYE_ID", "chye_id"},
                  {"XIMU_NO", "ximu_no"},
                  {"XIMU", "ximu"},
                  {"GESH", "gesh"},
                  {"LEBI", "lebi"},
                  {"CHYE", "chye"},
                  {"SHXI", "shxi"},
                  {"JIGEX", "jigex"},
                  {"ZHKO", "zhko"},
                  {"JISH", "jish"},
                  {"NOTH", "noth"}});
    appendMirror(sql, "FUWU", sheetOf(sheets, "fuwu"), id,
                 {{"qiye", "qiye"},
                  {"XIMU_NO", "ximu_no"},
                  {"XIMU", "ximu"},
                  {"JIGEX", "jigex"},
                  {"ZHKO", "zhko"},
                  {"SHXI", "shxi"},
                  {"JISH", "jish"},
                  {"NOTH", "noth"}});
    appendOrders(sql, sheetOf(sheets, "gohu"), sheetOf(sheets, "goku"), id);
    appendHistory(sql, sheetOf(sheets, DemoData::localHistory), id);
    return sql + "COMMIT;\n";
  }
  throw std::logic_error("demo data: no enterprise " + userNumber);
}

}  // namespace qinghe::portal_server
