#pragma once

#include <atomic>
#include <boost/asio/ip/tcp.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace qinghe::portal_server {

/// How far a fetch of a foreign page may go.
struct ForeignLimits {
  std::chrono::milliseconds time{15'000};  ///< for all of it, redirects included
  std::size_t size = 2U << 20U;            ///< of the page, unpacked
  long redirects = 5;
};

/// A page of somebody else's, as its own bytes.
struct ForeignPage {
  std::string body;
  std::string charset;  ///< that the answer's header names; empty without one
  long status = 0;
  std::string failure;  ///< why there is no page; empty when there is one
};

/// Asked for each place before it is connected to, with the very address of the connection.
using MayConnect = std::function<bool(const boost::asio::ip::tcp::endpoint& place)>;

/// Fetches a page over http or https and waits for it; nothing else is fetched, also not by way of
/// a redirect. Names and proxies of the environment play no part. `stop` ends it soon.
ForeignPage fetchForeignPage(const std::string& url, const ForeignLimits& limits,
                             const MayConnect& mayConnect, const std::atomic<bool>& stop);

}  // namespace qinghe::portal_server
