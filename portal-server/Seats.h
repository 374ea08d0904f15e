#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace qinghe::portal_server {

/// How many of something costly may be under way, in all and for one client. Used by one thread.
class Seats {
 public:
  Seats(std::size_t all, std::size_t ofOneClient) : all_(all), ofOneClient_(ofOneClient) {}
  Seats(const Seats&) = delete;
  Seats& operator=(const Seats&) = delete;

  /// Taken for as long as it lives; the seats must outlive it.
  class Seat {
   public:
    Seat(Seat&& other) noexcept : seats_(std::exchange(other.seats_, nullptr)), at_(other.at_) {}
    Seat& operator=(Seat&&) = delete;
    ~Seat() {
      if (seats_) seats_->taken_.erase(at_);
    }

   private:
    friend class Seats;
    Seat(Seats& seats, const std::string& client)
        : seats_(&seats), at_(seats.taken_.insert(client)) {}

    Seats* seats_;
    std::multiset<std::string>::iterator at_;
  };

  /// A seat for that client, or nothing when there is none left for it.
  std::optional<Seat> take(const std::string& client) {
    if (taken_.size() >= all_ || taken_.count(client) >= ofOneClient_) return {};
    return Seat(*this, client);
  }

 private:
  std::size_t all_;
  std::size_t ofOneClient_;
  std::multiset<std::string> taken_;  // the clients, once for each seat of theirs
};

}  // namespace qinghe::portal_server
