#include "Portal.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>
#include <variant>

#include "AnswerPage.h"
#include "Refusal.h"
#include "account_pages.h"
#include "browser_pages.h"
#include "housekeeping.h"
#include "read_pages.h"
#include "write_pages.h"

namespace qinghe::portal_server {

namespace {

using Reading = PortalAnswer (*)(const PortalRequest&, StoreReader&);
using Writing = PortalAnswer (*)(const PortalRequest&, StoreWriter&);

constexpr std::string_view relayPath = "_vti_comm/review.asp";
constexpr std::string_view loginPath = "_vti_login/_vti_login2.asp";

struct Page {
  std::string_view path;
  std::variant<Reading, Writing> handler;
};

template <Family family, PortalAnswer (*page)(Family, const PortalRequest&, StoreReader&)>
PortalAnswer under(const PortalRequest& request, StoreReader& store) {
  return page(family, request, store);
}

constexpr std::array<Page, 23> pages{{
    {loginPath, &loginPage},
    {"_vti_login/_vti_logout2.asp", &logoutPage},
    {"_vti_login/_vti_add_login.asp", &registrationPage},
    {"_vti_login/_vti_update_login.asp", &updateLoginPage},
    {"_vti_login/_vti_detail_field_s.asp", &under<Family::Login, &listPage>},
    {"_vti_login/_vti_detail_onepage.asp", &under<Family::Login, &onePage>},
    {"_vti_login/_vti_detail_page.asp", &under<Family::Login, &pageCount>},
    {"_vti_login/_vti_detail.asp", &structurePage},
    {"_vti_login/_vti_image.asp", &enterpriseImagePage},
    {"_vti_product/_vti_detail_field_s.asp", &under<Family::Product, &listPage>},
    {"_vti_product/_vti_detail_onepage.asp", &under<Family::Product, &onePage>},
    {"_vti_product/_vti_detail_page.asp", &under<Family::Product, &pageCount>},
    {"_vti_product/_vti_add.asp", &addPage},
    {"_vti_product/_vti_delete.asp", &deletePage},
    {"_vti_product/_vti_insert_xixi.asp", &insertMessagePage},
    {"_vti_product/_vti_image.asp", &recordImagePage},
    {"_vti_comm/close.asp", &closePage},
    {"link/help.asp", &helpPage},
    {"link/preview.asp", &previewPage},
    {"link/paper.asp", &paperPage},
    {"link/", &welcomePage},
    {"index.html", &welcomePage},
    {"", &welcomePage},
}};

const Page* findPage(std::string_view path) {
  const auto found =
      std::find_if(pages.begin(), pages.end(), [&](const Page& page) { return page.path == path; });
  return found == pages.end() ? nullptr : &*found;
}

std::string_view withoutDefaultPort(std::string_view host) {
  if (host.ends_with(":80")) host.remove_suffix(3);
  return host;
}

PortalAnswer run(const Page& page, const PortalRequest& request, Store& store) {
  if (const auto* reading = std::get_if<Reading>(&page.handler)) {
    return (*reading)(request, store.reader());
  }
  PortalAnswer answer;
  store.transact(
      [&](StoreWriter& writer) { answer = std::get<Writing>(page.handler)(request, writer); });
  return answer;
}

}  // namespace

bool Portal::unwrapRelay(PortalRequest& request) {
  if (request.path != relayPath) return true;
  const std::string carried(request.parameters.bytes("review"));
  const RequestTarget target = parseTarget(carried);
  const bool own =
      !target.host.empty() &&
      (request.host.empty() || withoutDefaultPort(target.host) == withoutDefaultPort(request.host));
  if (!own || target.path == relayPath) return false;
  request.path = target.path;
  request.parameters = {};
  request.parameters.add(target.query);
  return true;
}

bool Portal::isWrite(const PortalRequest& request) {
  const Page* page = findPage(request.path);
  return page && std::holds_alternative<Writing>(page->handler);
}

bool Portal::isLogin(const PortalRequest& request) {
  return request.path == loginPath;
}

PortalAnswer Portal::answer(const PortalRequest& request) {
  const Page* page = findPage(request.path);
  if (!page) return unmarkedAnswer(404, "unknown page");
  try {
    return run(*page, request, store_);
  } catch (const Refusal& refusal) {
    return unmarkedAnswer(200, std::string("refused: ") + refusal.what());
  } catch (const std::exception& failure) {
    return unmarkedAnswer(500, std::string("failed: ") + failure.what());
  }
}

void Portal::keepHouse(const std::vector<Visit>& visits, Visits::Clock::time_point now) {
  store_.transact([&](StoreWriter& writer) {
    updatePresence(writer, visits, now, rules_.offlineAfter);
    dropOldMessages(writer, now, rules_.keepMessages);
  });
}

void Portal::welcome(const Visit& visit) {
  store_.transact([&](StoreWriter& writer) { welcomeBack(writer, visit); });
}

}  // namespace qinghe::portal_server
