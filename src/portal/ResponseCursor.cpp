#include "portal/ResponseCursor.h"

namespace qinghe {

ResponseCursor ResponseCursor::from(qsizetype offset) const {
  auto tail = *this;
  tail.advance(offset);
  return tail;
}

}  // namespace qinghe
