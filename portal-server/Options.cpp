#include "Options.h"

#include <boost/asio/ip/address.hpp>

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr long long lastPort = 65535;

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

}  // namespace

std::optional<Options> parseOptions(const std::vector<std::string>& arguments, std::string& error) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    if (name == "--help") {
      options.help = true;
    } else if (name == "--demo") {
      options.demo = true;
    } else if (name == "--listen" || name == "--db" || name == "--log") {
      if (++i == arguments.size()) {
        error = name + " needs a value";
        return {};
      }
      const std::string& value = arguments[i];
      if (name == "--db") options.database = value;
      if (name == "--log") options.log = value;
      if (name == "--listen" && !readEndpoint(value, options)) {
        error = "not an address and port: " + value;
        return {};
      }
    } else {
      error = "unknown option: " + name;
      return {};
    }
  }
  return options;
}

std::string usage() {
  return "usage: qinghe-portal [--listen ADDR:PORT] [--db FILE] [--log FILE] [--demo]\n"
         "\n"
         "  --listen ADDR:PORT  where to listen (127.0.0.1:8180); port 0 takes a free one\n"
         "  --db FILE           the database, made when it is missing (portal.db)\n"
         "  --log FILE          one line a request (the standard output)\n"
         "  --demo              fills an empty database with a small made-up trade\n"
         "  --help              this text\n"
         "\n"
         "It prints \"listening on ADDR:PORT\" once it takes requests, and stops on SIGTERM.\n";
}

}  // namespace qinghe::portal_server
