#pragma once

#include <chrono>
#include <string>
#include <unordered_map>
#include <vector>

namespace qinghe::portal_server {

/// A request's address and moment.
struct Visit {
  std::string address;
  std::chrono::system_clock::time_point at;
};

/// When each address last asked for something, in memory alone: writing a row for every request
/// would make each read wait for the disk. Bounded; used by one thread.
class Visits {
 public:
  using Clock = std::chrono::system_clock;

  /// Whether the address comes back after having been forgotten, or for the first time.
  bool note(const std::string& address, Clock::time_point now);
  void forgetBefore(Clock::time_point moment);
  std::vector<Visit> all() const;

 private:
  std::unordered_map<std::string, Clock::time_point> addresses_;
};

}  // namespace qinghe::portal_server
