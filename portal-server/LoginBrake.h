#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <unordered_map>

namespace qinghe::portal_server {

/// Slows down who guesses passwords, or who registers one company after the other: after some
/// attempts each further one of an address waits longer, one behind the other, and an address with
/// many waiting attempts is turned away.
///
/// Memory is bounded; an address is forgotten after some quiet minutes.
class LoginBrake {
 public:
  using Clock = std::chrono::steady_clock;

  /// How long an attempt that comes now has to wait; nothing when it is turned away.
  std::optional<Clock::duration> admit(const std::string& address, Clock::time_point now);
  /// Counts an attempt that makes the next ones wait.
  void failed(const std::string& address, Clock::time_point now);
  void succeeded(const std::string& address) { addresses_.erase(address); }
  std::size_t size() const { return addresses_.size(); }

 private:
  struct Attempts {
    int failures = 0;
    Clock::time_point free{};  ///< when the next attempt may run
    Clock::time_point last{};
  };

  void forgetQuiet(Clock::time_point now);

  std::unordered_map<std::string, Attempts> addresses_;
};

}  // namespace qinghe::portal_server
