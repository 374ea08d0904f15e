#include "help_pages.h"

#include <algorithm>
#include <map>

#include "BrowserPage.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::string_view welcome = "欢迎使用青禾云集帮助";
constexpr std::string_view pagePath = "/link/help.asp";
constexpr int deepest = 8;

// The topics in the order in which one reads them, each with its depth.
class HelpTree {
 public:
  explicit HelpTree(std::vector<Record> topics) : topics_(std::move(topics)) {
    for (const Record& topic : topics_) {
      below_[topic.integer("p_id")].push_back(&topic);
      byId_.emplace(topic.integer("id"), &topic);
    }
    walk(0, 0);
  }

  struct Place {
    const Record* topic;
    int depth;
  };
  const std::vector<Place>& inOrder() const { return order_; }

  const Record* find(std::int64_t id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : found->second;
  }
  std::vector<const Record*> below(std::int64_t id) const {
    const auto found = below_.find(id);
    return found == below_.end() ? std::vector<const Record*>() : found->second;
  }
  /// From the first level down to above the topic.
  std::vector<const Record*> above(const Record& topic) const {
    std::vector<const Record*> way;
    const Record* at = find(topic.integer("p_id"));
    for (int depth = 0; at && depth < deepest; ++depth) {
      way.insert(way.begin(), at);
      at = find(at->integer("p_id"));
    }
    return way;
  }

 private:
  void walk(std::int64_t parent, int depth) {
    if (depth == deepest) return;
    for (const Record* topic : below(parent)) {
      order_.push_back({topic, depth});
      walk(topic->integer("id"), depth + 1);
    }
  }

  std::vector<Record> topics_;
  std::map<std::int64_t, std::vector<const Record*>> below_;
  std::map<std::int64_t, const Record*> byId_;
  std::vector<Place> order_;
};

std::string addressOf(const Record& topic) {
  return std::string(pagePath) + "?id=" + std::to_string(topic.integer("id"));
}

void linkTopic(BrowserPage& page, const Record& topic, bool here) {
  page.link(addressOf(topic), topic.text("help_no"), here ? "here" : "");
}

void addTree(BrowserPage& page, const HelpTree& tree, const Record* shown) {
  page.raw("<nav><ul>");
  int depth = 0;
  bool open = false;
  for (const HelpTree::Place& place : tree.inOrder()) {
    if (open && place.depth <= depth) page.raw("</li>");
    for (; depth < place.depth; ++depth) page.raw("<ul>");
    for (; depth > place.depth; --depth) page.raw("</ul></li>");
    page.raw("<li>");
    open = true;
    linkTopic(page, *place.topic, place.topic == shown);
  }
  if (open) page.raw("</li>");
  for (; depth > 0; --depth) page.raw("</ul></li>");
  page.raw("</ul></nav>\n");
}

void addNeighbours(BrowserPage& page, const HelpTree& tree, const Record& topic) {
  const auto& order = tree.inOrder();
  const auto at = std::find_if(order.begin(), order.end(),
                               [&](const HelpTree::Place& each) { return each.topic == &topic; });
  if (at == order.end()) return;
  page.raw("<div class=\"turn\"><span>");
  if (at != order.begin()) {
    page.raw("上一篇：").link(addressOf(*(at - 1)->topic), (at - 1)->topic->text("help_no"));
  }
  page.raw("</span><span>");
  if (at + 1 != order.end()) {
    page.raw("下一篇：").link(addressOf(*(at + 1)->topic), (at + 1)->topic->text("help_no"));
  }
  page.raw("</span></div>\n");
}

void addTopic(BrowserPage& page, const HelpTree& tree, const Record& topic) {
  page.raw("<p class=\"quiet\">").link(pagePath, "系统帮助");
  for (const Record* above : tree.above(topic)) {
    page.raw(" / ");
    linkTopic(page, *above, false);
  }
  page.raw("</p>\n").element("h1", topic.text("help_no")).element("p", topic.text("help"));
  const auto below = tree.below(topic.integer("id"));
  if (!below.empty()) {
    page.raw("<ul>");
    for (const Record* each : below) {
      page.raw("<li>");
      linkTopic(page, *each, false);
      page.raw("</li>");
    }
    page.raw("</ul>\n");
  }
  addNeighbours(page, tree, topic);
}

}  // namespace

PortalAnswer helpPage(const PortalRequest& request, StoreReader& store) {
  const Table& table = storedTable("help");
  const HelpTree tree(store.records({.table = &table,
                                     .fields = {table.column("id"), table.column("p_id"),
                                                table.column("help_no"), table.column("help")},
                                     .order = {{table.column("id"), false}}}));
  const bool asked = request.parameters.has("id");
  const Record* topic = asked ? tree.find(wholeNumber(request.parameters.bytes("id"))) : nullptr;
  BrowserPage page(topic ? topic->text("help_no") : std::string(welcome));
  page.raw("<div class=\"help\">");
  addTree(page, tree, topic);
  page.raw("<main>");
  if (topic) {
    addTopic(page, tree, *topic);
  } else {
    page.element("h1", welcome);
    page.element("p", asked ? "没有这篇帮助，请从左边选择。" : "请从左边选择要看的内容。");
  }
  page.raw("</main></div>\n");
  return std::move(page).finish(asked && !topic ? 404 : 200);
}

}  // namespace qinghe::portal_server
