#pragma once

#include <atomic>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>
#include <exception>
#include <functional>
#include <set>
#include <string>

#include "Limits.h"
#include "LoginBrake.h"
#include "Portal.h"
#include "Seats.h"
#include "Visits.h"

namespace qinghe::portal_server {

/// Has each request answered where it holds nobody up.
///
/// Quick reads are answered on the one thread that runs the context. Long searches, pictures that
/// have to be decoded and foreign pages have threads of their own, with a bounded number under way
/// for all and for one client. Writes run one after the other on a thread of theirs, so that
/// reading never waits for the disk.
class RequestDesk {
 public:
  /// `tell` takes a line for the log.
  RequestDesk(boost::asio::io_context& context, Portal& portal, const Limits& limits,
              std::function<void(const std::string&)> tell);
  ~RequestDesk();

  /// The answer; a request for the relay page becomes the one that it carries.
  boost::asio::awaitable<PortalAnswer> answered(PortalRequest& request);
  /// Looks after the store now and then until `stop`.
  boost::asio::awaitable<void> keepHouse();
  /// Lets go of everything that only waits.
  void stop();

 private:
  using Pool = boost::asio::thread_pool;

  boost::asio::awaitable<PortalAnswer> searched(const PortalRequest& request);
  boost::asio::awaitable<PortalAnswer> written(const PortalRequest& request);
  /// An upload: its picture is read before the write is queued.
  boost::asio::awaitable<PortalAnswer> pictured(PortalRequest& request);
  /// A write that is slowed down when it fails, or is repeated, too often.
  boost::asio::awaitable<PortalAnswer> braked(LoginBrake& brake, const PortalRequest& request);
  /// The answer of the relay for a page that is none of this portal's.
  boost::asio::awaitable<PortalAnswer> foreignAnswer(const PortalRequest& request);
  /// Waits out what a brake imposes; false when the server stops before that is over.
  boost::asio::awaitable<bool> heldBack(LoginBrake::Clock::duration wait);
  void noteVisit(const std::string& address);
  void tellFailure(const std::exception_ptr& failure);

  boost::asio::io_context& context_;
  Portal& portal_;
  Limits limits_;
  std::function<void(const std::string&)> tell_;
  LoginBrake logins_;
  LoginBrake registrations_;
  boost::asio::steady_timer houseTimer_;
  std::set<boost::asio::steady_timer*> heldBack_;
  Seats foreignPages_;
  Seats pictures_;
  Seats searches_;
  Visits visits_;
  std::atomic<bool> stopping_ = false;  // also read by those who fetch
  Pool writer_{1};
  Pool searcher_{1};
  Pool decoder_{1};
  Pool fetchers_{4};
};

}  // namespace qinghe::portal_server
