#include "company_page.h"

#include <algorithm>

#include "BrowserPage.h"
#include "pictures.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::int64_t mostListed = 120;
constexpr std::size_t longestCardText = 600;

/// One kind of catalogue record on the page.
struct Section {
  const char* kind;
  const char* heading;
  std::vector<const char*> details;
  bool priced;
};

const std::vector<Section>& sections() {
  static const std::vector<Section> all{
      {"ximu", "商品", {"lebi", "chye"}, true},
      {"fuwu", "服务", {}, true},
      {"mumu", "品牌", {"lebi"}, true},
      {"tupi", "图片", {}, false},
  };
  return all;
}

std::vector<Record> liveRecords(StoreReader& store, const Table& table, std::int64_t enterprise) {
  std::vector<const Column*> fields;
  for (const char* name : {"id", "ximu", "zhko", "jish", "lebi", "chye", "jigex"}) {
    if (const Column* column = table.column(name)) fields.push_back(column);
  }
  return store.records(
      {.table = &table,
       .fields = fields,
       .condition = Expression::allOf({Expression::equal(table, "qiye_id", enterprise),
                                       Expression::equal(table, "noth", std::int64_t{1})}),
       .order = {{table.column("id"), false}},
       .limit = mostListed});
}

// A price with what belongs to it: "￥72.00 七五折", "￥2.00 每册", "面议".
std::string priceText(const Record& row) {
  const std::string price = row.text("jigex");
  const std::string words = row.text("zhko");
  const bool known =
      std::any_of(price.begin(), price.end(), [](char c) { return c > '0' && c <= '9'; });
  if (!known) return words;
  const bool number = std::all_of(price.begin(), price.end(),
                                  [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
  return (number ? "￥" + price : price) + (words.empty() ? "" : " " + words);
}

bool isLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// What a company typed as its address on the web, as far as it is one.
std::string webAddress(std::string_view typed) {
  const bool plain = !typed.empty() && std::all_of(typed.begin(), typed.end(), [](char c) {
    return c > ' ' && c < 0x7F && c != '"' && c != '<' && c != '>' && c != '\'' && c != '\\';
  });
  if (!plain) return {};
  const std::string low = lowered(typed);
  if (low.starts_with("http://") || low.starts_with("https://")) return std::string(typed);
  if (typed.starts_with('/') && !typed.starts_with("//")) return std::string(typed);
  const bool host = typed.find('.') != std::string_view::npos && isLetterOrDigit(typed.front());
  return host ? "http://" + std::string(typed) : std::string();
}

std::string detailText(const Record& row, const Section& section) {
  std::string text;
  for (const char* column : section.details) {
    const std::string piece = row.text(column);
    if (piece.empty()) continue;
    if (!text.empty()) text += " · ";
    text += piece;
  }
  return text;
}

// The first letter of a name.
std::string initialOf(const std::string& name) {
  std::size_t end = std::min<std::size_t>(1, name.size());
  while (end < name.size() && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) ++end;
  return name.substr(0, end);
}

// The beginning of a long text; no letter, entity or line break is cut through.
std::string shortened(std::string text) {
  if (text.size() <= longestCardText) return text;
  std::size_t end = longestCardText;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  const std::size_t markup = text.find_last_of("<&", end == 0 ? 0 : end - 1);
  if (markup != std::string::npos && end - markup < 5) end = markup;
  return text.substr(0, end) + "……";
}

using Ids = std::vector<std::int64_t>;

// Where no record of a kind has a picture, its cards are words alone.
void addFace(BrowserPage& page, const Record& row, const Section& section, const Ids& pictured) {
  if (pictured.empty()) return;
  const std::int64_t id = row.integer("id");
  if (std::find(pictured.begin(), pictured.end(), id) == pictured.end()) {
    page.element("div", initialOf(row.text("ximu")), "face");
    return;
  }
  page.raw("<div class=\"face\"><a href=\"");
  page.raw(pictureAddress(section.kind, id, PictureSize::Large));
  page.raw("\"><img loading=\"lazy\" alt=\"\" src=\"");
  page.raw(pictureAddress(section.kind, id, PictureSize::Small)).raw("\"></a></div>");
}

void addCard(BrowserPage& page, const Record& row, const Section& section, const Ids& pictured) {
  page.raw("<div class=\"card\">");
  addFace(page, row, section, pictured);
  page.raw("<div class=\"words\">");
  const std::string link = section.priced ? std::string() : webAddress(row.text("zhko"));
  if (link.empty()) {
    page.element("h3", row.text("ximu"));
  } else {
    page.raw("<h3>").link(link, row.text("ximu")).raw("</h3>");
  }
  if (section.priced) {
    const std::string price = priceText(row);
    if (!price.empty()) page.element("div", price, "price");
  }
  const std::string details = detailText(row, section);
  if (!details.empty()) page.element("div", details, "quiet");
  // Goods have long texts of their own page in the shop; the others are known by theirs.
  const std::string words = std::string(section.kind) == "ximu" ? "" : shortened(row.text("jish"));
  if (!words.empty()) page.element("p", words, "quiet");
  page.raw("</div></div>\n");
}

void addSection(BrowserPage& page, StoreReader& store, const Section& section,
                std::int64_t enterprise) {
  const auto rows = liveRecords(store, storedTable(section.kind), enterprise);
  if (rows.empty()) return;
  const auto pictured = picturedRecords(store, section.kind, enterprise);
  page.element("h2", section.heading).raw("<div class=\"cards\">\n");
  for (const Record& row : rows) addCard(page, row, section, pictured);
  page.raw("</div>\n");
  if (static_cast<std::int64_t>(rows.size()) == mostListed) {
    page.element("p", "这里列出前 " + std::to_string(mostListed) + " 条。", "quiet");
  }
}

void addBanner(BrowserPage& page, StoreReader& store, const Record& company) {
  const std::int64_t id = company.integer("id");
  page.raw("<header class=\"banner\">");
  if (hasPicture(store, "qyxx", id)) {
    page.raw("<img alt=\"\" src=\"").raw(pictureAddress("qyxx", id, PictureSize::Small));
    page.raw("\">");
  }
  page.raw("<div>").element("h1", company.text("qiye"));
  std::string place;
  for (const char* column : {"haye", "shen", "area"}) {
    const std::string piece = company.text(column);
    if (!piece.empty()) place += (place.empty() ? "" : " · ") + piece;
  }
  page.element("div", place, "quiet").raw("</div></header>\n");
}

void addContacts(BrowserPage& page, const Record& company) {
  page.raw("<aside><h2>联系方式</h2><table>\n");
  const std::initializer_list<std::pair<const char*, const char*>> lines{
      {"地址", "dizh"},   {"邮编", "yobi"},  {"电话", "dihu"}, {"传真", "chzh"},
      {"联系人", "lixi"}, {"邮箱", "email"}, {"主页", "zhye"}};
  for (const auto& [caption, column] : lines) {
    const std::string text = company.text(column);
    if (text.empty()) continue;
    page.raw("<tr>").element("th", caption);
    const std::string link = std::string_view(column) == "zhye" ? webAddress(text) : std::string();
    if (link.empty()) {
      page.element("td", text);
    } else {
      page.raw("<td>").link(link, text).raw("</td>");
    }
    page.raw("</tr>\n");
  }
  page.raw("</table></aside>\n");
}

}  // namespace

PortalAnswer previewPage(const PortalRequest& request, StoreReader& store) {
  const Table& table = storedTable("qyxx");
  const auto company =
      store.first(table, Expression::equal(table, "user_no", request.parameters.text("stuserno")));
  if (!company) {
    BrowserPage page("企业网页");
    page.element("h1", "企业网页").element("p", "没有这个企业。");
    return std::move(page).finish(404);
  }
  BrowserPage page(company->text("qiye"));
  addBanner(page, store, *company);
  page.raw("<div class=\"columns\"><main><h2>企业介绍</h2>\n");
  const std::string words = company->text("jish");
  page.element("p", words.empty() ? "这家企业还没有介绍。" : words);
  page.raw("</main>\n");
  addContacts(page, *company);
  page.raw("</div>\n");
  for (const Section& section : sections()) {
    addSection(page, store, section, company->integer("id"));
  }
  return std::move(page).finish();
}

}  // namespace qinghe::portal_server
