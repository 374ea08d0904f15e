// Reading all cells of a large answer: the answer reader against libxml2's HTML parser.

#include <libxml/HTMLparser.h>

#include <QStringList>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

#include "portal/GetHtml.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int columns = 12;

QString answer(int rows) {
  QString page = u"<html><body><table border=1 start_pos>"_s;
  for (int row = 1; row <= rows; ++row) {
    page += u"<tr>"_s;
    for (int column = 0; column < columns; ++column) {
      const auto cell = column == 0   ? QString::number(row)
                        : column == 1 ? u"《大学语文》第%1册"_s.arg(row)
                                      : u"cell %1"_s.arg(row * column % 1000);
      page += u"<td>"_s + cell + u"</td>"_s;
    }
    page += u"</tr>\r\n"_s;
  }
  return page + u"</table></body></html>"_s;
}

/// Hands every cell's text to `take`.
template <class Take>
void readWithReader(const QString& page, const Take& take) {
  qinghe::PortalState state;
  qinghe::Inet inet;
  qinghe::GetHtml html(state, inet);
  state.gResponse = html.ParseResponse(page);
  for (;;) {
    state.gResponse = html.GetRow(state.gResponse);
    if (state.gResponse.isEmpty()) return;
    for (int column = 0; column < columns; ++column) take(html.GetRowItem());
  }
}

template <class Take>
void visit(const xmlNode* node, const Take& take) {
  for (; node; node = node->next) {
    if (node->type == XML_ELEMENT_NODE &&
        xmlStrEqual(node->name, reinterpret_cast<const xmlChar*>("td"))) {
      const std::unique_ptr<xmlChar, decltype(xmlFree)> text(xmlNodeGetContent(node), xmlFree);
      take(text.get());
    } else {
      visit(node->children, take);
    }
  }
}

/// The same, each cell as UTF-8; turning it into the program's texts is not charged to it.
template <class Take>
void readWithLibxml(const QByteArray& page, const Take& take) {
  constexpr int options = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                          HTML_PARSE_NONET | HTML_PARSE_COMPACT;
  const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
      htmlReadMemory(page.constData(), static_cast<int>(page.size()), nullptr, "UTF-8", options),
      &xmlFreeDoc);
  visit(xmlDocGetRootElement(document.get()), take);
}

/// The best of several runs, in milliseconds of the processor's time, so that other load on the
/// machine does not count.
double milliseconds(int runs, const std::function<void()>& work) {
  double best = 1e300;
  for (int run = 0; run < runs; ++run) {
    const auto start = std::clock();
    work();
    best = std::min(best, 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return best;
}

}  // namespace

int main() {
  const auto page = answer(20'000);
  const auto utf8 = page.toUtf8();
  std::vector<QString> own;
  std::vector<QString> other;
  readWithReader(page, [&](const QString& cell) { own.push_back(cell); });
  readWithLibxml(utf8, [&](const xmlChar* cell) {
    other.push_back(QString::fromUtf8(reinterpret_cast<const char*>(cell)).trimmed());
  });
  if (own.size() != 20'000 * columns || own != other) {
    std::puts("the two sides read different cells");
    return 1;
  }
  qsizetype sum = 0;
  const auto length = [&](const QString& cell) { sum += cell.size(); };
  const double reader = milliseconds(15, [&] { readWithReader(page, length); });
  const double libxml =
      milliseconds(5, [&] { readWithLibxml(utf8, [&](const xmlChar* cell) { sum += cell[0]; }); });
  std::printf("20,000 rows of 12 cells: reader %.2f ms, libxml2 %.2f ms\n", reader, libxml);
  std::printf("ratio libxml2 / reader: %.1f (bar: at least 10)\n", libxml / reader);

  const auto longPage = answer(200'000);
  const double longReader = milliseconds(7, [&] { readWithReader(longPage, length); });
  const double growth = longReader / (reader * static_cast<double>(longPage.size()) /
                                      static_cast<double>(page.size()));
  std::printf("200,000 rows: reader %.2f ms, ratio to linear growth: %.2f (bar: at most 1.5)\n",
              longReader, growth);
  return sum > 0 ? 0 : 1;
}
