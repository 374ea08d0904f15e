#include "forms/EventGate.h"

namespace qinghe {

void EventGate::hold() {
  ++depth_;
}

void EventGate::release() {
  if (depth_ == 0) return;
  if (--depth_ == 0) emit opened();
}

}  // namespace qinghe
