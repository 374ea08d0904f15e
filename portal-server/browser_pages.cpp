#include "browser_pages.h"

#include "BrowserPage.h"

namespace qinghe::portal_server {

namespace {

std::vector<const Column*> fields(const Table& table, std::initializer_list<const char*> names) {
  std::vector<const Column*> columns;
  for (const char* name : names) columns.push_back(table.column(name));
  return columns;
}

}  // namespace

PortalAnswer welcomePage(const PortalRequest&, StoreReader& store) {
  BrowserPage page("青禾云集");
  const std::int64_t enterprises = store.count(storedTable("qyxx"), {});
  const Table& goods = storedTable("ximu");
  const std::int64_t live = store.count(goods, Expression::equal(goods, "noth", std::int64_t{1}));
  page.element("h1", "青禾云集");
  page.element("p", "在线企业目录：" + std::to_string(enterprises) + " 家企业，" +
                        std::to_string(live) + " 种商品。");
  page.raw("<p>").link("/link/help.asp", "系统帮助").raw("</p>\n");
  return std::move(page).finish();
}

PortalAnswer paperPage(const PortalRequest&, StoreReader& store) {
  const Table& table = storedTable("zhij");
  BrowserPage page("纸张参考价格");
  page.element("h1", "纸张参考价格").raw("<table id=\"paper\">\n");
  for (const Record& row : store.records(
           {.table = &table, .fields = fields(table, {"pinm", "guge", "jiag", "danw"})})) {
    page.raw("<tr>");
    for (const char* column : {"pinm", "guge", "jiag", "danw"}) {
      page.element("td", row.text(column));
    }
    page.raw("</tr>\n");
  }
  page.raw("</table>\n");
  return std::move(page).finish();
}

PortalAnswer closePage(const PortalRequest&, StoreReader&) {
  BrowserPage page("青禾云集");
  page.element("h1", "青禾云集").element("p", "没有待取的内容。");
  return std::move(page).finish();
}

}  // namespace qinghe::portal_server
