#include "RunningServer.h"

#include <QFile>
#include <boost/asio/post.hpp>
#include <chrono>

#include "DemoData.h"

using namespace qinghe::portal_server;

RunningServer::RunningServer(Limits limits, HouseRules rules, const StoreBetween& between) {
  // On a busy machine a search of a moment may take long, and is none to be given up.
  const SqliteStore::Patience patience{.search = std::chrono::minutes(10)};
  store_ = std::make_unique<SqliteStore>(databasePath(), patience);
  DemoData::fill(*store_);
  if (between) between_ = between(*store_);
  portal_ = std::make_unique<Portal>(between_ ? *between_ : *store_, rules);
  log_ = std::make_unique<RequestLog>(folder_.filePath(QStringLiteral("p.log")).toStdString());
  server_ = std::make_unique<HttpServer>(context_, *portal_, *log_, limits);
  port_ = server_->listen({boost::asio::ip::address_v4::loopback(), 0}).port();
  thread_ = std::thread([this] { context_.run(); });
}

RunningServer::~RunningServer() {
  stop();
}

void RunningServer::stop() {
  if (!thread_.joinable()) return;
  boost::asio::post(context_, [this] { server_->stop(); });
  thread_.join();
  log_->flush();
}

std::string RunningServer::log() const {
  QFile file(folder_.filePath(QStringLiteral("p.log")));
  return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

std::string RunningServer::databasePath() const {
  return folder_.filePath(QStringLiteral("p.db")).toStdString();
}
