#include "PortalTest.h"

#include <QFile>
#include <chrono>

#include "DemoData.h"

using namespace qinghe::portal_server;

namespace {

// Filling the demo once and copying its file is much faster than filling it for each test.
const QString& filledDatabase() {
  static const QTemporaryDir folder;
  static const QString path = [] {
    const QString file = folder.filePath(QStringLiteral("demo.db"));
    SqliteStore store(file.toStdString());
    DemoData::fill(store);
    return file;
  }();
  return path;
}

}  // namespace

PortalTest::PortalTest() {
  const QString path = folder_.filePath(QStringLiteral("portal.db"));
  QFile::copy(filledDatabase(), path);
  // A thread that has to wait for its turn is no slow search.
  const SqliteStore::Patience patience{.atOnce = std::chrono::hours(1),
                                       .search = std::chrono::hours(1)};
  store_ = std::make_unique<SqliteStore>(path.toStdString(), patience);
  portal_ = std::make_unique<Portal>(*store_);
  login("1001", "123456", bookshop);
}

std::string PortalTest::query(std::string_view page, const Fields& fields) {
  std::string text(page.find('/') == std::string_view::npos ? "/_vti_product/" : "/");
  text += page;
  char joint = '?';
  for (const auto& [name, value] : fields) {
    text += joint + field(name, value);
    joint = '&';
  }
  return text;
}

AnswerText PortalTest::ask(std::string_view page, const Fields& fields,
                           const std::string& address) {
  return target(query(page, fields), address);
}

AnswerText PortalTest::relayed(std::string_view page, const Fields& fields,
                               const std::string& address) {
  const std::string url = "HTTP://" + host_ + query(page, fields);
  return target("/_vti_comm/review.asp?" + field("review", url), address);
}

AnswerText PortalTest::target(const std::string& text, const std::string& address) {
  const RequestTarget parsed = parseTarget(text);
  PortalRequest request{.path = parsed.path, .parameters = {}, .address = address, .host = host_};
  request.parameters.add(parsed.query);
  if (Portal::unwrapRelay(request)) {
    answer_ = portal_->answer(request);
  } else {
    answer_ = {.note = "relay refused"};
  }
  return AnswerText::read(answer_.body);
}

AnswerText PortalTest::login(std::string_view number, std::string_view password,
                             const std::string& address) {
  return ask(
      "_vti_login/_vti_login2.asp",
      {{"USER_NO", std::string(number)}, {"USER_PASS", std::string(password)}, {"SOFT_VER", "1.0"}},
      address);
}

std::string PortalTest::stored(std::string_view table, std::int64_t id, std::string_view column) {
  const auto row = store_->reader().byId(storedTable(table), id);
  return row ? row->text(column) : "no row";
}

std::int64_t PortalTest::rowCount(std::string_view table) {
  return store_->reader().count(storedTable(table), {});
}
