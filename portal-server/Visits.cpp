#include "Visits.h"

namespace qinghe::portal_server {

namespace {

constexpr std::size_t mostAddresses = 10'000;

}  // namespace

bool Visits::note(const std::string& address, Clock::time_point now) {
  if (const auto known = addresses_.find(address); known != addresses_.end()) {
    known->second = now;
    return false;
  }
  // Who is pushed out merely counts as coming back at the next request.
  if (addresses_.size() >= mostAddresses) addresses_.erase(addresses_.begin());
  addresses_.emplace(address, now);
  return true;
}

void Visits::forgetBefore(Clock::time_point moment) {
  std::erase_if(addresses_, [&](const auto& entry) { return entry.second < moment; });
}

std::vector<Visit> Visits::all() const {
  std::vector<Visit> visits;
  visits.reserve(addresses_.size());
  for (const auto& [address, at] : addresses_) visits.push_back({address, at});
  return visits;
}

}  // namespace qinghe::portal_server
