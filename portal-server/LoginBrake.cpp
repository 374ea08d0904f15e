#include "LoginBrake.h"

#include <algorithm>

namespace qinghe::portal_server {

namespace {

using namespace std::chrono_literals;

constexpr int freeFailures = 3;
constexpr auto firstWait = 500ms;
constexpr int mostDoublings = 3;
constexpr auto longestQueue = 15s;
constexpr auto quietTime = 10min;
constexpr std::size_t mostAddresses = 10'000;

LoginBrake::Clock::duration pause(int failures) {
  if (failures < freeFailures) return {};
  return firstWait * (1 << std::min(failures - freeFailures, mostDoublings));
}

}  // namespace

std::optional<LoginBrake::Clock::duration> LoginBrake::admit(const std::string& address,
                                                             Clock::time_point now) {
  const auto found = addresses_.find(address);
  if (found == addresses_.end()) return Clock::duration{};
  Attempts& attempts = found->second;
  const Clock::duration wait = pause(attempts.failures);
  if (wait == Clock::duration{}) return wait;
  const Clock::time_point at = std::max(now, attempts.free) + wait;
  if (at - now > longestQueue) return {};
  attempts.free = at;
  return at - now;
}

void LoginBrake::failed(const std::string& address, Clock::time_point now) {
  if (addresses_.size() >= mostAddresses) forgetQuiet(now);
  if (addresses_.size() >= mostAddresses && !addresses_.contains(address)) {
    addresses_.erase(addresses_.begin());
  }
  Attempts& attempts = addresses_[address];
  if (attempts.failures > 0 && now - attempts.last > quietTime) attempts = {};
  ++attempts.failures;
  attempts.last = now;
}

void LoginBrake::forgetQuiet(Clock::time_point now) {
  std::erase_if(addresses_, [&](const auto& entry) { return now - entry.second.last > quietTime; });
}

}  // namespace qinghe::portal_server
