#include "RequestDesk.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/bind_executor.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/use_awaitable.hpp>

#include "AnswerPage.h"
#include "OwnNetwork.h"
#include "picture_pages.h"

namespace qinghe::portal_server {

namespace net = boost::asio;

namespace {

constexpr auto plain = net::as_tuple(net::use_awaitable);

}  // namespace

RequestDesk::RequestDesk(net::io_context& context, Portal& portal, const Limits& limits,
                         std::function<void(const std::string&)> tell)
    : context_(context),
      portal_(portal),
      limits_(limits),
      tell_(std::move(tell)),
      houseTimer_(context),
      foreignPages_(limits.foreignAtOnce, limits.foreignOfOneClient),
      pictures_(limits.picturesAtOnce, limits.picturesOfOneClient),
      searches_(limits.searchesAtOnce, limits.searchesOfOneClient) {}

RequestDesk::~RequestDesk() {
  stopping_ = true;
  for (Pool* pool : {&fetchers_, &decoder_, &searcher_, &writer_}) pool->join();
}

void RequestDesk::stop() {
  stopping_ = true;
  houseTimer_.cancel();
  for (net::steady_timer* timer : heldBack_) timer->cancel();
}

net::awaitable<PortalAnswer> RequestDesk::answered(PortalRequest& request) {
  if (!Portal::unwrapRelay(request)) co_return co_await foreignAnswer(request);
  noteVisit(request.address);
  if (Portal::isLogin(request)) co_return co_await braked(logins_, request);
  if (Portal::isRegistration(request)) {
    co_return co_await braked(registrations_, request);
  }
  if (portal_.bringsPicture(request)) co_return co_await pictured(request);
  if (Portal::isWrite(request)) co_return co_await written(request);
  if (auto answer = portal_.answerAtOnce(request)) co_return std::move(*answer);
  co_return co_await searched(request);
}

net::awaitable<PortalAnswer> RequestDesk::searched(const PortalRequest& request) {
  const auto seat = searches_.take(request.address);
  if (!seat) co_return unmarkedAnswer(503, "refused: too many long searches at once");
  const auto work = [this, &request]() -> net::awaitable<PortalAnswer> {
    co_return portal_.answer(request);
  };
  co_return co_await net::co_spawn(searcher_, work, net::use_awaitable);
}

net::awaitable<PortalAnswer> RequestDesk::pictured(PortalRequest& request) {
  const auto seat = pictures_.take(request.address);
  if (!seat) co_return imagesBusyPage();
  const auto read = [&request]() -> net::awaitable<void> {
    Portal::readPicture(request);
    co_return;
  };
  co_await net::co_spawn(decoder_, read, net::use_awaitable);
  co_return co_await written(request);
}

net::awaitable<PortalAnswer> RequestDesk::written(const PortalRequest& request) {
  const auto work = [this, &request]() -> net::awaitable<PortalAnswer> {
    co_return portal_.answer(request);
  };
  co_return co_await net::co_spawn(writer_, work, net::use_awaitable);
}

net::awaitable<PortalAnswer> RequestDesk::braked(LoginBrake& brake, const PortalRequest& request) {
  const auto wait = brake.admit(request.address, LoginBrake::Clock::now());
  if (!wait) co_return unmarkedAnswer(200, "refused: too many attempts");
  if (*wait > LoginBrake::Clock::duration{} && !co_await heldBack(*wait)) {
    co_return unmarkedAnswer(503, "refused: the server stops");
  }
  PortalAnswer answer = co_await written(request);
  if (answer.brake == Brake::Tightens) {
    brake.failed(request.address, LoginBrake::Clock::now());
  } else if (answer.brake == Brake::Releases) {
    brake.succeeded(request.address);
  }
  co_return answer;
}

net::awaitable<PortalAnswer> RequestDesk::foreignAnswer(const PortalRequest& request) {
  const auto url = portal_.foreignAddress(request);
  if (!url) co_return unmarkedAnswer(200, "refused: the relay serves no such page");
  noteVisit(request.address);
  const auto seat = foreignPages_.take(request.address);
  if (!seat) co_return unmarkedAnswer(503, "refused: too many foreign pages at once");
  const bool inside = portal_.rules().relayOwnNetwork;
  const auto mayConnect = [inside](const net::ip::tcp::endpoint& place) {
    return inside || isOutsideOwnNetwork(place.address());
  };
  const auto work = [&]() -> net::awaitable<ForeignPage> {
    co_return fetchForeignPage(*url, limits_.foreign, mayConnect, stopping_);
  };
  auto [failure, page] = co_await net::co_spawn(fetchers_, work, plain);
  if (failure) co_return unmarkedAnswer(502, "foreign page failed");
  if (!page.failure.empty()) {
    co_return unmarkedAnswer(502, "foreign page failed: " + page.failure);
  }
  PortalAnswer answer{.body = std::move(page.body),
                      .note = "foreign page, status " + std::to_string(page.status),
                      .contentType = "text/html",
                      .foreign = true};
  if (!page.charset.empty()) answer.contentType += "; charset=" + page.charset;
  co_return answer;
}

net::awaitable<bool> RequestDesk::heldBack(LoginBrake::Clock::duration wait) {
  if (stopping_) co_return false;
  net::steady_timer timer(context_, wait);
  heldBack_.insert(&timer);
  co_await timer.async_wait(plain);
  heldBack_.erase(&timer);
  co_return !stopping_;
}

net::awaitable<void> RequestDesk::keepHouse() {
  while (!stopping_) {
    const auto now = Visits::Clock::now();
    visits_.forgetBefore(now - portal_.rules().offlineAfter);
    const auto work = [this, now, seen = visits_.all()]() -> net::awaitable<void> {
      portal_.keepHouse(seen, now);
      co_return;
    };
    const auto [failure] = co_await net::co_spawn(writer_, work, plain);
    tellFailure(failure);
    if (stopping_) break;
    houseTimer_.expires_after(limits_.house);
    co_await houseTimer_.async_wait(plain);
  }
}

// The request itself does not wait for this; it queues up behind what is written already.
void RequestDesk::noteVisit(const std::string& address) {
  const auto now = Visits::Clock::now();
  if (!visits_.note(address, now)) return;
  net::co_spawn(
      writer_,
      [this, visit = Visit{address, now}]() -> net::awaitable<void> {
        portal_.welcome(visit);
        co_return;
      },
      net::bind_executor(context_,
                         [this](const std::exception_ptr& failure) { tellFailure(failure); }));
}

void RequestDesk::tellFailure(const std::exception_ptr& failure) {
  if (!failure) return;
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& error) {
    tell_(std::string("housekeeping failed: ") + error.what());
  }
}

}  // namespace qinghe::portal_server
