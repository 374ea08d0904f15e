#pragma once

#include <QtGlobal>
#include <optional>
#include <unordered_map>
#include <vector>

namespace qinghe {

/// The keys of a set's rows in the set's order, and where each stands.
class KeyList {
 public:
  void append(qint64 key);
  qint64 size() const { return static_cast<qint64>(keys_.size()); }
  qint64 at(qint64 position) const { return keys_[static_cast<std::size_t>(position)]; }
  std::optional<qint64> positionOf(qint64 key) const;

 private:
  std::vector<qint64> keys_;
  // Made by the first search: most sets are only walked.
  mutable std::unordered_map<qint64, qint64> positions_;
};

}  // namespace qinghe
