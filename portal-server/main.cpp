#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/system/system_error.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "DemoData.h"
#include "HttpServer.h"
#include "Options.h"
#include "Portal.h"
#include "RequestLog.h"
#include "SqliteStore.h"
#include "demo_pictures.h"

namespace {

using namespace qinghe::portal_server;

// The library's own words name its source lines, which tell an operator nothing.
boost::asio::ip::tcp::endpoint listenOn(HttpServer& server,
                                        const boost::asio::ip::tcp::endpoint& wanted) {
  try {
    return server.listen(wanted);
  } catch (const boost::system::system_error& error) {
    std::ostringstream words;
    words << "cannot listen on " << wanted << ": " << error.code().message();
    throw std::runtime_error(words.str());
  }
}

void run(const Options& options) {
  SqliteStore store(options.database);
  if (options.demo && DemoData::fill(store)) fillDemoPictures(store);
  RequestLog log(options.log);
  Portal portal(store, options.rules);

  boost::asio::io_context context(1);
  HttpServer server(context, portal, log, Limits{});
  boost::asio::signal_set signals(context, SIGTERM, SIGINT);
  signals.async_wait([&](boost::system::error_code, int) { server.stop(); });

  const boost::asio::ip::tcp::endpoint wanted(boost::asio::ip::make_address(options.address),
                                              options.port);
  std::cout << "listening on " << listenOn(server, wanted) << std::endl;
  context.run();
  log.note("stopped");
}

}  // namespace

int main(int argc, char** argv) {
  // Whoever read the first line of our output may be gone when the log wants to be written.
  std::signal(SIGPIPE, SIG_IGN);
  std::string error;
  const auto options = parseOptions(std::vector<std::string>(argv + 1, argv + argc), error);
  if (!options) {
    std::cerr << "qinghe-portal: " << error << "\n" << usage();
    return 2;
  }
  if (options->help) {
    std::cout << usage();
    return 0;
  }
  try {
    run(*options);
  } catch (const std::exception& failure) {
    std::cerr << "qinghe-portal: " << failure.what() << '\n';
    return 1;
  }
  return 0;
}
