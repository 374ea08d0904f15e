#include "Options.h"

#include <algorithm>
#include <array>
#include <boost/asio/ip/address.hpp>

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr long long lastPort = 65535;
constexpr long long mostDays = 3650;
constexpr long long mostMinutes = 1440;

bool readEndpoint(const std::string& text, Options& options) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string::npos) return false;
  std::string address = text.substr(0, colon);
  if (address.size() > 2 && address.front() == '[' && address.back() == ']') {
    address = address.substr(1, address.size() - 2);
  }
  boost::system::error_code error;
  boost::asio::ip::make_address(address, error);
  const long long port = wholeNumber(std::string_view(text).substr(colon + 1));
  if (error || port < 0 || port > lastPort) return false;
  options.address = address;
  options.port = static_cast<unsigned short>(port);
  return true;
}

bool readSpan(const std::string& text, long long longest, long long& span) {
  span = wholeNumber(text);
  return span >= 1 && span <= longest;
}

// Whether the value fits its option; `error` says why not.
bool readValue(const std::string& name, const std::string& value, Options& options,
               std::string& error) {
  long long span = 0;
  if (name == "--db") {
    options.database = value;
  } else if (name == "--log") {
    options.log = value;
  } else if (name == "--listen") {
    if (!readEndpoint(value, options)) error = "not an address and port: " + value;
  } else if (name == "--keep-messages") {
    if (!readSpan(value, mostDays, span)) error = "not 1 to 3650 days: " + value;
    options.rules.keepMessages = std::chrono::days(span);
  } else if (name == "--keep-logins") {
    if (!readSpan(value, mostDays, span)) error = "not 1 to 3650 days: " + value;
    options.rules.keepLogins = std::chrono::days(span);
  } else {
    if (!readSpan(value, mostMinutes, span)) error = "not 1 to 1440 minutes: " + value;
    options.rules.offlineAfter = std::chrono::minutes(span);
  }
  return error.empty();
}

bool takesValue(const std::string& name) {
  constexpr std::array names{"--listen",        "--db",          "--log",
                             "--keep-messages", "--keep-logins", "--offline-after"};
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

std::optional<Options> parseOptions(const std::vector<std::string>& arguments, std::string& error) {
  Options options;
  error.clear();
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (name == "--help") {
      options.help = true;
    } else if (name == "--demo") {
      options.demo = true;
    } else if (name == "--relay-own-network") {
      options.rules.relayOwnNetwork = true;
    } else if (!takesValue(name)) {
      error = "unknown option: " + name;
      return {};
    } else if (++i == arguments.size()) {
      error = name + " needs a value";
      return {};
    } else if (!readValue(name, arguments[i], options, error)) {
      return {};
    }
  }
  return options;
}

std::string usage() {
  return "usage: qinghe-portal [--listen ADDR:PORT] [--db FILE] [--log FILE] [--demo]\n"
         "                     [--keep-messages DAYS] [--keep-logins DAYS]\n"
         "                     [--offline-after MINUTES] [--relay-own-network]\n"
         "\n"
         "  --listen ADDR:PORT       where to listen (127.0.0.1:8180); port 0 takes a free one\n"
         "  --db FILE                the database, made when it is missing (portal.db)\n"
         "  --log FILE               one line a request (the standard output)\n"
         "  --demo                   fills an empty database with a small made-up trade\n"
         "  --keep-messages DAYS     how long an inbox keeps a message, 1 to 3650 (30)\n"
         "  --keep-logins DAYS       without a request from its address, a login is forgotten "
         "after\n"
         "                           that long, 1 to 3650 (7); the user logs in again\n"
         "  --offline-after MINUTES  without a request, a company is told as offline after\n"
         "                           that long, 1 to 1440 (15); its login stays\n"
         "  --relay-own-network      an information service may read a page inside this\n"
         "                           network; otherwise only those on the internet\n"
         "  --help                   this text\n"
         "\n"
         "It prints \"listening on ADDR:PORT\" once it takes requests, and stops on SIGTERM.\n";
}

}  // namespace qinghe::portal_server
