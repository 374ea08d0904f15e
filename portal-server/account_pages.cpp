#include "account_pages.h"

#include <algorithm>

#include "AnswerPage.h"
#include "RecordWriter.h"
#include "Refusal.h"
#include "sessions.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

// The client keeps its enterprise id in 16 bits.
constexpr std::int64_t lastEnterprise = 32767;
constexpr std::int64_t firstUserNumber = 1001;
constexpr std::int64_t mixedMode = 1;

const Table& enterprises() {
  static const Table& table = storedTable("qyxx");
  return table;
}

PortalAnswer accountAnswer(const Record& row) {
  AnswerPage page;
  page.beginRow();
  page.number(row.integer("id"));
  page.text(row.text("user_no"));
  page.text(row.text("user_name"));
  page.number(row.integer("submit_mode"));
  page.number(row.integer("haye_id"));
  page.text(row.text("haye"));
  page.number(row.integer("user_level"));
  page.endRow();
  return std::move(page).finish();
}

PortalAnswer refusedLogin() {
  AnswerPage page;
  page.beginRow();
  page.number(0);
  for (int cell = 2; cell <= 7; ++cell) page.text({});
  page.endRow();
  PortalAnswer answer = std::move(page).finish();
  answer.note = "login refused";
  answer.brake = Brake::Tightens;
  return answer;
}

bool isFilled(const std::vector<Assignment>& row, std::string_view column) {
  return std::any_of(row.begin(), row.end(), [&](const Assignment& cell) {
    const auto* text = std::get_if<std::string>(&cell.value);
    return cell.column->name == column && text && !text->empty();
  });
}

std::int64_t nextUserNumber(StoreReader& store) {
  std::int64_t last = firstUserNumber - 1;
  for (const Record& row :
       store.records({.table = &enterprises(), .fields = {enterprises().column("user_no")}})) {
    last = std::max<std::int64_t>(last, wholeNumber(row.text("user_no")));
  }
  return last + 1;
}

std::int64_t registerEnterprise(StoreWriter& store, std::vector<Assignment> row,
                                const std::string& name) {
  for (const std::string_view column : {"user_name", "user_pass", "qiye"}) {
    if (!isFilled(row, column)) throw Refusal("registration is not filled in");
  }
  if (store.count(enterprises(), Expression::equal(enterprises(), "user_name", name)) > 0) {
    throw Refusal("registered name is taken");
  }
  row.push_back(assign(enterprises(), "user_no", std::to_string(nextUserNumber(store))));
  row.push_back(assign(enterprises(), "submit_mode", mixedMode));
  const std::int64_t id = store.insert(enterprises(), row);
  if (id > lastEnterprise) throw Refusal("the portal is full");
  return id;
}

}  // namespace

PortalAnswer loginPage(const PortalRequest& request, StoreWriter& store) {
  const std::string number = request.parameters.text("USER_NO");
  const std::string password = storedText(request.parameters.text("USER_PASS"));
  const auto row = store.first(enterprises(), Expression::equal(enterprises(), "user_no", number));
  if (!row || password.empty() || row->text("user_pass") != password) return refusedLogin();
  logIn(store, request.address, row->integer("id"));
  PortalAnswer answer = accountAnswer(*row);
  answer.brake = Brake::Releases;
  return answer;
}

PortalAnswer logoutPage(const PortalRequest& request, StoreWriter& store) {
  const auto row =
      store.first(enterprises(),
                  Expression::equal(enterprises(), "user_no", request.parameters.text("USER_NO")));
  const bool here = row && contains(loggedInAt(store, request.address), row->integer("id"));
  if (here) logOut(store, request.address, row->integer("id"));
  PortalAnswer answer = AnswerPage().finish();
  if (!here) answer.note = "was not logged in";
  return answer;
}

PortalAnswer registrationPage(const PortalRequest& request, StoreWriter& store) {
  if (!sameName(request.parameters.bytes("stable"), "qyxx")) throw Refusal("unknown table");
  const RowKey key = parseRowKey(enterprises(), request.parameters.text("stid"));
  std::vector<Assignment> row = postedRow(enterprises(), request.parameters);
  std::int64_t id = key.id;
  if (id == 0) {
    const std::string name = storedText(request.parameters.text("USER_NAME"));
    id = registerEnterprise(store, std::move(row), name);
    logIn(store, request.address, id);
  } else {
    if (!contains(loggedInAt(store, request.address), id)) throw Refusal("foreign write");
    // The registered name is fixed, and an empty password would lock its owner out.
    const bool emptyPassword = !isFilled(row, "user_pass");
    std::erase_if(row, [&](const Assignment& cell) {
      return cell.column->name == "user_name" ||
             (emptyPassword && cell.column->name == "user_pass");
    });
    store.update(enterprises(), id, row);
  }
  PortalAnswer answer = accountAnswer(*store.byId(enterprises(), id));
  if (key.id == 0) answer.brake = Brake::Tightens;
  return answer;
}

PortalAnswer updateLoginPage(const PortalRequest& request, StoreWriter& store) {
  if (!sameName(request.parameters.bytes("stable"), "qyxx")) throw Refusal("unknown table");
  const RowKey key = parseRowKey(enterprises(), request.parameters.text("sid"));
  const Visitors visitors = loggedInAt(store, request.address);
  if (key.id == 0 || !contains(visitors, key.id)) throw Refusal("foreign write");
  const std::vector<Assignment> row = postedRow(enterprises(), request.parameters);
  const bool longTexts = std::all_of(row.begin(), row.end(), [](const Assignment& cell) {
    return cell.column->type == Type::LongText;
  });
  if (row.empty() || !longTexts) throw Refusal("not a long text");
  store.update(enterprises(), key.id, row);
  return numberAnswer(key.id);
}

}  // namespace qinghe::portal_server
