#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "AnswerText.h"
#include "Portal.h"
#include "SqliteStore.h"

/// The portal's pages over a fresh copy of the demo trade, without sockets.
class PortalTest : public testing::Test {
 protected:
  using Fields = std::vector<std::pair<std::string, std::string>>;

  static constexpr const char* bookshop = "10.0.0.1";  ///< enterprise 1 is logged in here
  static constexpr const char* stranger = "10.0.0.9";  ///< nobody is

  PortalTest();

  /// A read or write request of the product family unless the page names its folder.
  AnswerText ask(std::string_view page, const Fields& fields,
                 const std::string& address = bookshop);
  /// The same request, travelling through the relay page.
  AnswerText relayed(std::string_view page, const Fields& fields,
                     const std::string& address = bookshop);
  AnswerText target(const std::string& target, const std::string& address = bookshop);
  AnswerText login(std::string_view number, std::string_view password, const std::string& address);
  /// One value of the store, as the portal's owner sees it.
  std::string stored(std::string_view table, std::int64_t id, std::string_view column);
  std::int64_t rowCount(std::string_view table);

  std::string host_ = "portal:8180";            ///< what the client calls the portal
  qinghe::portal_server::PortalAnswer answer_;  ///< the last one, as it left

  static std::string query(std::string_view page, const Fields& fields);

  QTemporaryDir folder_;
  std::unique_ptr<qinghe::portal_server::SqliteStore> store_;
  std::unique_ptr<qinghe::portal_server::Portal> portal_;
};
