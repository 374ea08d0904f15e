#include "browser_pages.h"

#include <map>

#include "column_value.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::int64_t mostListed = 200;

constexpr std::string_view style =
    "body{font-family:sans-serif;max-width:56rem;margin:1.5rem auto;padding:0 1rem;"
    "line-height:1.6;color:#222;background:#fff}"
    "h1{border-bottom:3px solid #2e7d5b;padding-bottom:.3rem}h2{color:#2e7d5b}"
    "table{border-collapse:collapse}td,th{border:1px solid #ccc;padding:.2rem .6rem;"
    "text-align:left}.none{border:1px dashed #999;padding:3rem;text-align:center;color:#666}";

// A page of stored texts, which keep their own entities and line breaks.
class BrowserPage {
 public:
  explicit BrowserPage(std::string_view title) {
    html_ = "<!DOCTYPE html>\n<html lang=\"zh\"><head><meta charset=\"gb2312\"><title>";
    html_.append(attributeText(title)).append("</title><style>").append(style);
    html_ += "</style></head><body>\n";
    element("h1", title);
  }

  void element(std::string_view tag, std::string_view text) {
    html_.append("<").append(tag).append(">").append(storedText(text));
    html_.append("</").append(tag).append(">\n");
  }
  void raw(std::string_view html) { html_ += html; }

  PortalAnswer finish(unsigned status = 200) {
    html_ += "</body></html>\n";
    return {.status = status, .body = codePageFromUtf8(html_), .forBrowser = true};
  }

 private:
  std::string html_;
};

std::vector<const Column*> fields(const Table& table, std::initializer_list<const char*> names) {
  std::vector<const Column*> columns;
  for (const char* name : names) columns.push_back(table.column(name));
  return columns;
}

void listLive(BrowserPage& page, StoreReader& store, std::string_view storage,
              std::string_view heading, std::int64_t enterprise) {
  const Table& table = storedTable(storage);
  const auto rows = store.records(
      {.table = &table,
       .fields = fields(table, {"ximu", "jigex", "zhko"}),
       .condition = Expression::allOf({Expression::equal(table, "qiye_id", enterprise),
                                       Expression::equal(table, "noth", std::int64_t{1})}),
       .limit = mostListed});
  if (rows.empty()) return;
  page.element("h2", heading);
  page.raw("<table><tr><th>名称</th><th>价格</th><th>说明</th></tr>\n");
  for (const Record& row : rows) {
    page.raw("<tr>");
    for (const char* column : {"ximu", "jigex", "zhko"}) page.element("td", row.text(column));
    page.raw("</tr>\n");
  }
  page.raw("</table>\n");
}

PortalAnswer imagePage(const std::string& name) {
  BrowserPage page("图片");
  if (name.empty()) {
    page.element("p", "没有这条记录。");
  } else {
    page.element("h2", name);
    page.raw("<p class=\"none\">暂无图片</p>\n");
  }
  return page.finish(name.empty() ? 404 : 200);
}

}  // namespace

PortalAnswer welcomePage(const PortalRequest&, StoreReader& store) {
  BrowserPage page("青禾云集");
  const std::int64_t enterprises = store.count(storedTable("qyxx"), {});
  const Table& goods = storedTable("ximu");
  const std::int64_t live = store.count(goods, Expression::equal(goods, "noth", std::int64_t{1}));
  page.element("p", "在线企业目录：" + std::to_string(enterprises) + " 家企业，" +
                        std::to_string(live) + " 种商品。");
  page.raw("<p><a href=\"/link/help.asp\">系统帮助</a></p>\n");
  return page.finish();
}

PortalAnswer helpPage(const PortalRequest&, StoreReader& store) {
  const Table& table = storedTable("help");
  const auto topics =
      store.records({.table = &table, .fields = fields(table, {"id", "p_id", "help_no", "help"})});
  std::multimap<std::int64_t, const Record*> byParent;
  for (const Record& topic : topics) byParent.emplace(topic.integer("p_id"), &topic);

  BrowserPage page("欢迎使用青禾云集帮助");
  const auto tell = [&](const Record& topic, const char* heading) {
    page.element(heading, topic.text("help_no"));
    page.element("p", topic.text("help"));
  };
  for (auto [at, end] = byParent.equal_range(0); at != end; ++at) {
    tell(*at->second, "h2");
    for (auto [below, last] = byParent.equal_range(at->second->integer("id")); below != last;
         ++below) {
      tell(*below->second, "h3");
    }
  }
  return page.finish();
}

PortalAnswer previewPage(const PortalRequest& request, StoreReader& store) {
  const Table& table = storedTable("qyxx");
  const auto row =
      store.first(table, Expression::equal(table, "user_no", request.parameters.text("stuserno")));
  if (!row) {
    BrowserPage page("企业网页");
    page.element("p", "没有这个企业。");
    return page.finish(404);
  }
  BrowserPage page(row->text("qiye"));
  page.element("p", row->text("jish"));
  page.raw("<table>\n");
  const std::initializer_list<std::pair<const char*, const char*>> lines{
      {"地址", "dizh"},   {"邮编", "yobi"}, {"电话", "dihu"},
      {"联系人", "lixi"}, {"主页", "zhye"}, {"邮箱", "email"}};
  for (const auto& [caption, column] : lines) {
    page.raw("<tr>");
    page.element("th", caption);
    page.element("td", row->text(column));
    page.raw("</tr>\n");
  }
  page.raw("</table>\n");
  const std::int64_t id = row->integer("id");
  listLive(page, store, "ximu", "商品", id);
  listLive(page, store, "fuwu", "服务", id);
  listLive(page, store, "mumu", "品牌", id);
  return page.finish();
}

PortalAnswer paperPage(const PortalRequest&, StoreReader& store) {
  const Table& table = storedTable("zhij");
  BrowserPage page("纸张参考价格");
  page.raw("<table id=\"paper\">\n");
  for (const Record& row : store.records(
           {.table = &table, .fields = fields(table, {"pinm", "guge", "jiag", "danw"})})) {
    page.raw("<tr>");
    for (const char* column : {"pinm", "guge", "jiag", "danw"}) {
      page.element("td", row.text(column));
    }
    page.raw("</tr>\n");
  }
  page.raw("</table>\n");
  return page.finish();
}

PortalAnswer enterpriseImagePage(const PortalRequest& request, StoreReader& store) {
  const long long id = wholeNumber(request.parameters.bytes("id"));
  const auto row = store.byId(storedTable("qyxx"), id);
  return imagePage(row ? row->text("qiye") : std::string());
}

PortalAnswer recordImagePage(const PortalRequest& request, StoreReader& store) {
  const std::string name = lowered(request.parameters.bytes("stable"));
  const bool pictured = name == "ximu" || name == "fuwu" || name == "mumu" || name == "tupi";
  if (!pictured) return imagePage({});
  const long long id = wholeNumber(request.parameters.bytes("id"));
  const auto row = store.byId(storedTable(name), id);
  return imagePage(row ? row->text("ximu") : std::string());
}

PortalAnswer closePage(const PortalRequest&, StoreReader&) {
  BrowserPage page("青禾云集");
  page.element("p", "没有待取的内容。");
  return page.finish();
}

}  // namespace qinghe::portal_server
