#include "read_pages.h"

#include <algorithm>

#include "AnswerPage.h"
#include "ConditionParser.h"
#include "Refusal.h"
#include "sessions.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr long long largestPageSize = 32767;
constexpr long long lastPage = 1'000'000'000;
constexpr long long mostStructureCells = 64;
constexpr std::int64_t mostStructureRows = 20'000;

const Table& requestedTable(Family family, const PortalRequest& request) {
  const Table* table = findTable(family, request.parameters.bytes("STABLE"));
  if (!table) throw Refusal("unknown table");
  return *table;
}

bool namesSecret(const std::vector<const Column*>& fields) {
  return std::any_of(fields.begin(), fields.end(),
                     [](const Column* column) { return column->access == Access::Secret; });
}

struct VisibleRows {
  Expression condition;
  bool forAll = false;  // whoever asks sees the same
};

// The client's condition, and around it what the asking address may see.
VisibleRows visibleRows(const Table& table, const PortalRequest& request, bool secret,
                        StoreReader& store) {
  Expression asked = ConditionParser(table).parse(request.parameters.text("STOTHER"));
  secret = secret || asked.touches(Access::Secret);
  const bool isPrivate = !table.readers.empty() || !table.parent.empty();
  if (!secret && !isPrivate) return {.condition = std::move(asked), .forAll = true};
  // A page can make its own name lead here, and then reads whatever the browser's address may.
  if (request.byBrowser) throw Refusal("a browser's reading of private rows");
  const Visitors visitors = loggedInAt(store, request.address);
  return {.condition = Expression::allOf({readScope(table, secret, visitors), std::move(asked)})};
}

struct AskedRows {
  Query query;
  bool forAll;
};

AskedRows requestedRows(Family family, const PortalRequest& request, StoreReader& store) {
  const Table& table = requestedTable(family, request);
  Query query{.table = &table,
              .fields = parseFields(table, request.parameters.text("STRDATA")),
              .order = parseOrder(table, request.parameters.text("STORDER"))};
  const bool secretOrder =
      std::any_of(query.order.begin(), query.order.end(),
                  [](const OrderTerm& term) { return term.column->access == Access::Secret; });
  auto visible = visibleRows(table, request, secretOrder || namesSecret(query.fields), store);
  query.condition = std::move(visible.condition);
  return {.query = std::move(query), .forAll = visible.forAll};
}

// A host name or address with or without a port; anything else in a header is not repeated.
bool isHost(std::string_view host) {
  return !host.empty() && std::all_of(host.begin(), host.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("-._:[]").find(c) != std::string_view::npos;
  });
}

// Tells links into this portal by the host that the client used.
class LinkedRows final : public RowSink {
 public:
  LinkedRows(AnswerPage& page, std::string host) : page_(page), host_(std::move(host)) {}
  void beginRow() override { page_.beginRow(); }
  void cell(const Column& column, const Cell& cell) override {
    const auto* text = std::get_if<std::string_view>(&cell);
    if (column.pageLink && text && text->starts_with('/')) {
      page_.text(std::string("http://").append(host_).append(*text));
    } else {
      page_.cell(column, cell);
    }
  }
  void endRow() override { page_.endRow(); }

 private:
  AnswerPage& page_;
  std::string host_;
};

PortalAnswer rowsAnswer(const AskedRows& asked, const PortalRequest& request, StoreReader& store) {
  const Query& query = asked.query;
  AnswerPage page;
  const bool links = std::any_of(query.fields.begin(), query.fields.end(),
                                 [](const Column* column) { return column->pageLink; });
  if (links && isHost(request.host)) {
    LinkedRows rows(page, request.host);
    store.read(query, rows);
  } else {
    store.read(query, page);
  }
  if (page.rows() == 0 && namesSecret(query.fields)) throw Refusal("not the enterprise's own row");
  PortalAnswer answer = std::move(page).finish();
  answer.forAll = asked.forAll;
  return answer;
}

long long pageSize(const PortalRequest& request) {
  const long long size = wholeNumber(request.parameters.bytes("STPAGESIZE"));
  if (size < 1 || size > largestPageSize) throw Refusal("broken page size");
  return size;
}

// Fills a row up to the number of cells that the client is going to read.
class PaddedRows final : public RowSink {
 public:
  PaddedRows(AnswerPage& page, long long missing) : page_(page), missing_(missing) {}
  void beginRow() override { page_.beginRow(); }
  void cell(const Column& column, const Cell& cell) override { page_.cell(column, cell); }
  void endRow() override {
    for (long long i = 0; i < missing_; ++i) page_.text({});
    page_.endRow();
  }

 private:
  AnswerPage& page_;
  long long missing_;
};

}  // namespace

PortalAnswer listPage(Family family, const PortalRequest& request, StoreReader& store) {
  return rowsAnswer(requestedRows(family, request, store), request, store);
}

PortalAnswer onePage(Family family, const PortalRequest& request, StoreReader& store) {
  const long long size = pageSize(request);
  const long long number = wholeNumber(request.parameters.bytes("STPAGE"));
  if (number < 1 || number > lastPage) throw Refusal("broken page number");
  AskedRows asked = requestedRows(family, request, store);
  asked.query.limit = size;
  asked.query.offset = (number - 1) * size;
  return rowsAnswer(asked, request, store);
}

PortalAnswer pageCount(Family family, const PortalRequest& request, StoreReader& store) {
  const long long size = pageSize(request);
  const Table& table = requestedTable(family, request);
  const auto visible = visibleRows(table, request, false, store);
  const std::int64_t rows = store.count(table, visible.condition);
  PortalAnswer answer = numberAnswer((rows + size - 1) / size);
  answer.forAll = visible.forAll;
  return answer;
}

PortalAnswer structurePage(const PortalRequest& request, StoreReader& store) {
  const Table& table = requestedTable(Family::Login, request);
  if (!table.structure) throw Refusal("table has no structure page");
  const long long cells = wholeNumber(request.parameters.bytes("STRUCTN"));
  if (cells < 1 || cells > mostStructureCells) throw Refusal("broken structure");
  Query query{.table = &table, .fields = {}, .limit = mostStructureRows};
  for (const Column& column : table.columns) {
    if (std::ssize(query.fields) < cells) query.fields.push_back(&column);
  }
  AnswerPage page;
  PaddedRows rows(page, cells - std::ssize(query.fields));
  store.read(query, rows);
  PortalAnswer answer = std::move(page).finish();
  answer.forAll = true;  // the page does not look at who asks
  return answer;
}

}  // namespace qinghe::portal_server
