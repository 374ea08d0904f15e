#include "Portal.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>
#include <variant>

#include "AnswerPage.h"
#include "ConditionParser.h"
#include "Refusal.h"
#include "account_pages.h"
#include "browser_pages.h"
#include "company_page.h"
#include "help_pages.h"
#include "housekeeping.h"
#include "picture_pages.h"
#include "read_pages.h"
#include "write_pages.h"

namespace qinghe::portal_server {

namespace {

using Reading = PortalAnswer (*)(const PortalRequest&, StoreReader&);
using Writing = PortalAnswer (*)(const PortalRequest&, StoreWriter&);

constexpr std::string_view relayPath = "_vti_comm/review.asp";
constexpr std::string_view loginPath = "_vti_login/_vti_login2.asp";
constexpr std::string_view registrationPath = "_vti_login/_vti_add_login.asp";

struct Page {
  std::string_view path;
  std::variant<Reading, Writing> handler;
  bool tellsRows = false;  ///< of a table; some of them to everybody alike
};

template <Family family, PortalAnswer (*page)(Family, const PortalRequest&, StoreReader&)>
PortalAnswer under(const PortalRequest& request, StoreReader& store) {
  return page(family, request, store);
}

constexpr std::array<Page, 25> pages{{
    {loginPath, &loginPage},
    {"_vti_login/_vti_logout2.asp", &logoutPage},
    {registrationPath, &registrationPage},
    {"_vti_login/_vti_update_login.asp", &updateLoginPage},
    {"_vti_login/_vti_detail_field_s.asp", &under<Family::Login, &listPage>, true},
    {"_vti_login/_vti_detail_onepage.asp", &under<Family::Login, &onePage>, true},
    {"_vti_login/_vti_detail_page.asp", &under<Family::Login, &pageCount>, true},
    {"_vti_login/_vti_detail.asp", &structurePage, true},
    {"_vti_login/_vti_image.asp", &enterpriseImagePage},
    {"_vti_product/_vti_detail_field_s.asp", &under<Family::Product, &listPage>, true},
    {"_vti_product/_vti_detail_onepage.asp", &under<Family::Product, &onePage>, true},
    {"_vti_product/_vti_detail_page.asp", &under<Family::Product, &pageCount>, true},
    {"_vti_product/_vti_add.asp", &addPage},
    {"_vti_product/_vti_delete.asp", &deletePage},
    {"_vti_product/_vti_insert_xixi.asp", &insertMessagePage},
    {"_vti_product/_vti_image.asp", &recordImagePage},
    {"_vti_product/_vti_image_file.asp", &imageFile},
    {pictureUploadPath, &imageUploadPage},
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

// As the client tells it back: it trims what it reads.
std::string_view withoutBlanks(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

PortalAnswer failed(const std::exception& failure) {
  return unmarkedAnswer(500, std::string("failed: ") + failure.what());
}

PortalAnswer write(const Page& page, const PortalRequest& request, Store& store) {
  // Who may write is known by the address, and any page that somebody looks at there can send a
  // browser to these. The upload tells its own page from others.
  if (request.byBrowser && page.path != pictureUploadPath) throw Refusal("a browser's write");
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

std::optional<std::string> Portal::foreignAddress(const PortalRequest& request) {
  if (request.path != relayPath) return {};
  const std::string asked = request.parameters.text("review");
  if (asked.empty()) return {};
  const Table& services = storedTable("info_fuwu");
  const Column& address = *services.column("wazh");
  try {
    const auto offered = store_.reader().records(
        {.table = &services,
         .fields = {&address},
         .condition = Expression::equal(services, "noth", std::int64_t{1})});
    const bool listed = std::any_of(offered.begin(), offered.end(), [&](const Record& service) {
      return withoutBlanks(service.text(address.name)) == asked;
    });
    if (listed) return std::string(request.parameters.bytes("review"));
  } catch (const std::exception&) {
    // What cannot be looked up is not listed.
  }
  return {};
}

bool Portal::isWrite(const PortalRequest& request) {
  const Page* page = findPage(request.path);
  return page && std::holds_alternative<Writing>(page->handler);
}

bool Portal::isLogin(const PortalRequest& request) {
  return request.path == loginPath;
}

bool Portal::isRegistration(const PortalRequest& request) {
  if (request.path != registrationPath) return false;
  try {
    return parseRowKey(storedTable("qyxx"), request.parameters.text("stid")).id == 0;
  } catch (const Refusal&) {
    return false;
  }
}

PortalAnswer Portal::answer(const PortalRequest& request) {
  try {
    return answerFrom(request, store_.patientReader());
  } catch (const TooSlow&) {
    return unmarkedAnswer(503, "refused: the search takes too long");
  }
}

std::optional<PortalAnswer> Portal::answerAtOnce(const PortalRequest& request) {
  const Page* page = findPage(request.path);
  try {
    const auto make = [&] { return answerFrom(request, store_.reader()); };
    return page && page->tellsRows ? kept_.answered(request, make) : make();
  } catch (const TooSlow&) {
    return {};
  } catch (const std::exception& failure) {
    return failed(failure);
  }
}

PortalAnswer Portal::answerFrom(const PortalRequest& request, StoreReader& reader) {
  const Page* page = findPage(request.path);
  if (!page) return unmarkedAnswer(404, "unknown page");
  if (request.parameters.tooMany()) return unmarkedAnswer(400, "too many parameters");
  try {
    const auto* reading = std::get_if<Reading>(&page->handler);
    return reading ? (*reading)(request, reader) : write(*page, request, store_);
  } catch (const Refusal& refusal) {
    return unmarkedAnswer(200, std::string("refused: ") + refusal.what());
  } catch (const TooSlow&) {
    throw;
  } catch (const std::exception& failure) {
    return failed(failure);
  }
}

bool Portal::bringsPicture(const PortalRequest& request) {
  if (request.path != pictureUploadPath) return false;
  try {
    return portal_server::bringsPicture(request, store_.reader());
  } catch (const std::exception&) {
    return false;  // the answer tells what is wrong
  }
}

void Portal::readPicture(PortalRequest& request) {
  PictureReading reading;
  reading.copies = portal_server::readPicture(request.file, reading.fault);
  request.picture = std::move(reading);
  request.file = {};
}

void Portal::keepHouse(const std::vector<Visit>& visits, Visits::Clock::time_point now) {
  store_.transact([&](StoreWriter& writer) {
    updatePresence(writer, visits, now, rules_.offlineAfter);
    dropOldLogins(writer, now, rules_.keepLogins);
    dropOldMessages(writer, now, rules_.keepMessages);
  });
}

void Portal::welcome(const Visit& visit) {
  store_.transact([&](StoreWriter& writer) { welcomeBack(writer, visit); });
}

}  // namespace qinghe::portal_server
