#pragma once

#include <QTemporaryDir>
#include <boost/asio/io_context.hpp>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "HttpServer.h"
#include "SqliteStore.h"

/// A server with demo data and limits of the test's own, in a thread of this process.
class RunningServer {
 public:
  /// What the portal sees of the store.
  using StoreBetween =
      std::function<std::unique_ptr<qinghe::portal_server::Store>(qinghe::portal_server::Store&)>;

  explicit RunningServer(qinghe::portal_server::Limits limits = {},
                         qinghe::portal_server::HouseRules rules = {},
                         const StoreBetween& between = {});
  ~RunningServer();

  unsigned short port() const { return port_; }
  /// Ends it as a signal does; returns when it has ended.
  void stop();
  std::string log() const;
  std::string databasePath() const;

 private:
  QTemporaryDir folder_;
  std::unique_ptr<qinghe::portal_server::SqliteStore> store_;
  std::unique_ptr<qinghe::portal_server::Store> between_;
  std::unique_ptr<qinghe::portal_server::Portal> portal_;
  std::unique_ptr<qinghe::portal_server::RequestLog> log_;
  boost::asio::io_context context_{1};
  std::unique_ptr<qinghe::portal_server::HttpServer> server_;
  unsigned short port_ = 0;
  std::thread thread_;
};
