#include "write_pages.h"

#include <algorithm>
#include <map>

#include "AnswerPage.h"
#include "RecordWriter.h"
#include "Refusal.h"
#include "column_value.h"
#include "sessions.h"

namespace qinghe::portal_server {

namespace {

// A reader takes so much in one cell and so much in one answer; a longer message, or more of them,
// would keep the addressee from all others.
constexpr std::size_t longestMessage = 30'000;
constexpr std::int64_t mostMessages = 1'000;

// Makes room for one more message: the oldest one of whoever has sent most leaves, so that who
// floods an inbox pushes out nobody's messages but its own.
void makeRoom(StoreWriter& store, const Table& messages, std::int64_t addressee) {
  const Expression inbox = Expression::equal(messages, "qyxx_id", addressee);
  if (store.count(messages, inbox) < mostMessages) return;
  std::map<std::int64_t, std::vector<std::int64_t>> bySender;
  for (const Record& message : store.records({.table = &messages,
                               .fields = {messages.column("id"), messages.column("user_id")},
                               .condition = inbox,
                               .order = {{messages.column("id"), false}}})) {
    bySender[message.integer("user_id")].push_back(message.integer("id"));
  }
  const auto most = std::ranges::max_element(
      bySender, {}, [](const auto& sender) { return sender.second.size(); });
  store.remove(messages, Expression::equal(messages, "id", most->second.front()));
}

const Table& requestedTable(const PortalRequest& request) {
  const Table* table = findTable(Family::Product, request.parameters.bytes("stable"));
  if (!table) throw Refusal("unknown table");
  return *table;
}

}  // namespace

PortalAnswer addPage(const PortalRequest& request, StoreWriter& store) {
  const Table& table = requestedTable(request);
  const RowKey key = parseRowKey(table, request.parameters.text("stother"));
  RecordWriter writer(store, loggedInAt(store, request.address));
  return numberAnswer(writer.save(table, key, request.parameters));
}

PortalAnswer deletePage(const PortalRequest& request, StoreWriter& store) {
  const Table& posts = requestedTable(request);
  if (posts.storage != "publish") throw Refusal("table is not deleted from");
  const RowKey key = parseRowKey(posts, request.parameters.text("stother"));
  const auto post = store.byId(posts, key.id);
  if (!post) throw Refusal("unknown post");
  const auto forum = store.byId(storedTable("forum"), post->integer("forum_id"));
  const Visitors visitors = loggedInAt(store, request.address);
  if (!forum || !contains(visitors, forum->integer("border_id"))) throw Refusal("foreign delete");

  const std::int64_t replies = store.count(posts, Expression::equal(posts, "p_id", key.id));
  if (replies > 0) return numberAnswer(replies);
  store.remove(posts, Expression::equal(posts, "id", key.id));
  if (const auto parent = store.byId(posts, post->integer("p_id"))) {
    const std::int64_t parentId = parent->integer("id");
    const std::int64_t left = store.count(posts, Expression::equal(posts, "p_id", parentId));
    store.update(posts, parentId, {assign(posts, "return_num", left)});
  }
  return numberAnswer(0);
}

PortalAnswer insertMessagePage(const PortalRequest& request, StoreWriter& store) {
  const Table& messages = requestedTable(request);
  if (messages.storage != "xixi") throw Refusal("table takes no messages");
  std::vector<Assignment> row = postedRow(messages, request.parameters);
  const auto number = [&](std::string_view column) -> std::int64_t {
    for (const Assignment& cell : row) {
      if (cell.column->name == column) return std::get<std::int64_t>(cell.value);
    }
    return 0;
  };
  const Visitors visitors = loggedInAt(store, request.address);
  if (!contains(visitors, number("user_id"))) throw Refusal("message in a foreign name");
  if (!store.byId(storedTable("qyxx"), number("qyxx_id"))) throw Refusal("unknown addressee");
  const bool readable = std::all_of(row.begin(), row.end(), [](const Assignment& cell) {
    const auto* text = std::get_if<std::string>(&cell.value);
    return !text || text->size() <= longestMessage;
  });
  if (!readable) throw Refusal("message is too long");
  makeRoom(store, messages, number("qyxx_id"));
  std::erase_if(row, [](const Assignment& cell) { return cell.column->name == "dtime"; });
  row.push_back(assign(messages, "dtime", storedNow()));
  return numberAnswer(store.insert(messages, row));
}

}  // namespace qinghe::portal_server
