#include "store/KeyList.h"

namespace qinghe {

void KeyList::append(qint64 key) {
  if (!positions_.empty()) positions_.emplace(key, size());
  keys_.push_back(key);
}

std::optional<qint64> KeyList::positionOf(qint64 key) const {
  if (positions_.empty()) {
    positions_.reserve(keys_.size());
    for (qint64 position = 0; position < size(); ++position) {
      positions_.emplace(at(position), position);
    }
  }
  const auto found = positions_.find(key);
  if (found == positions_.end()) return std::nullopt;
  return found->second;
}

}  // namespace qinghe
