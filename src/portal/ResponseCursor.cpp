#include "portal/ResponseCursor.h"

#include <algorithm>

namespace qinghe {

ResponseCursor ResponseCursor::from(qsizetype offset) const {
  auto tail = *this;
  tail.position_ += std::clamp<qsizetype>(offset, 0, std::max<qsizetype>(length(), 0));
  return tail;
}

}  // namespace qinghe
