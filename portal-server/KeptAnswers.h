#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// Answers that everybody gets alike, kept for as long as nobody writes to the store.
///
/// A page says of its answer that it is for all; what depends on who asks is made anew each time.
/// One commit, by whichever process, and all of them are forgotten. What they take is bounded; when
/// it is full, it begins anew. Used by the thread of the store's reader.
class KeptAnswers {
 public:
  static constexpr std::size_t mostBytes = 8U << 20U;
  static constexpr std::size_t largest = 1U << 20U;

  explicit KeptAnswers(Store& store) : store_(store) {}

  /// The answer that is kept, or the one that `make` reads from the store.
  PortalAnswer answered(const PortalRequest& request, const std::function<PortalAnswer()>& make);

 private:
  /// Whether what is kept tells what the store holds now; if not, it is forgotten.
  bool isCurrent();
  void keep(std::string key, const PortalAnswer& answer);
  void forget();

  Store& store_;
  std::unordered_map<std::string, PortalAnswer> answers_;
  std::size_t bytes_ = 0;
  std::uint32_t version_ = 0;  // of the store, for all of them
};

}  // namespace qinghe::portal_server
