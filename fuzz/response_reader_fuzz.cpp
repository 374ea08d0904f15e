// Whatever page comes, from the portal or from anybody, it is read to its end or to a failure that
// the screens know, and what is read has the promised form.
//
// The input: the number of tables to pass, the number of columns, the length of the marker, the
// marker, the page in UTF-8. A byte 1 in the page stands for a text longer than the reader's
// positions reach.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "portal/GetHtml.h"
#include "portal/page_charset.h"
#include "values/failure.h"

using namespace Qt::StringLiterals;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

struct Input {
  qint16 tables;
  qint16 columns;
  QString marker;
  QByteArrayView page;
};

Input split(QByteArrayView bytes) {
  Input input{.tables = static_cast<signed char>(bytes[0]),
              .columns = static_cast<signed char>(bytes[1]),
              .marker = {},
              .page = {}};
  const auto marker = qMin<qsizetype>(static_cast<unsigned char>(bytes[2]), bytes.size() - 3);
  input.marker = QString::fromUtf8(bytes.sliced(3, marker));
  input.page = bytes.sliced(3 + marker);
  return input;
}

QString textOfPage(QByteArrayView page) {
  auto text = QString::fromUtf8(page);
  const auto longTexts = text.count(QChar(1));
  text.replace(QChar(1), longTexts > 2 ? u"x"_s : QString(33'000, u'x'));
  return text;
}

void requireCell(const QString& cell) {
  require(!cell.contains(u'<') && !cell.contains(u'>'));
  require(!cell.startsWith(u' ') && !cell.endsWith(u' '));
}

void requireTable(const QString& table) {
  require(table.isEmpty() || table.endsWith("</table>"_L1, Qt::CaseInsensitive));
}

void readRows(qinghe::GetHtml& html, qinghe::PortalState& state, int columns) {
  for (;;) {
    state.gResponse = html.GetRow(state.gResponse);
    if (state.gResponse.isEmpty()) return;
    require(state.gResponse.view().startsWith(u"<tr"));
    const auto before = state.gResponse.length();
    for (int column = 0; column < columns; ++column) {
      requireCell(html.GetRowItem());
      require(state.gResponse.view().startsWith(u"</td", Qt::CaseInsensitive));
    }
    require(state.gResponse.length() < before);
  }
}

void readArray(qinghe::GetHtml& html, qint16 columns) {
  const auto cells = html.GetARRAY(columns);
  require(cells.size() == static_cast<std::size_t>(columns) + 1);
  for (const auto& column : cells) {
    require(column.size() == cells[0].size() && column[0].isEmpty());
    for (const QString& cell : column) requireCell(cell);
  }
  for (const QString& cell : cells[0]) require(cell.isEmpty());
}

template <class Reading>
void untilFailure(const Reading& reading) {
  try {
    reading();
  } catch (const qinghe::Failure&) {
    // The screens end a reading so.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  const Input input =
      split(QByteArrayView(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  const QString page = textOfPage(input.page);
  // Nothing is transferred, so one control does for all inputs.
  static qinghe::Inet inet;
  qinghe::PortalState state;
  qinghe::GetHtml html(state, inet);

  untilFailure([&] {
    const QString table = html.ParseResponse(page);
    require(table.isEmpty() || table.startsWith("start_pos"_L1));
    requireTable(table);
    state.gResponse = table;
    readRows(html, state, 1 + (input.columns & 7));
  });
  untilFailure([&] {
    const QString table = html.ParseResponse2(page, input.marker, input.tables);
    requireTable(table);
    state.gResponse = table;
    readArray(html, input.columns);
  });
  const QString declared = qinghe::declaredText(input.page, input.marker.toUtf8());
  require(declared.size() <= 4 * input.page.size() + 4);
  return 0;
}
