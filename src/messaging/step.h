#pragma once

#include "values/failure.h"

namespace qinghe {

/// The one way in which the messenger skips a step that fails and goes on with the next. Whether it
/// succeeded.
template <class Work>
bool step(Work&& work) {
  try {
    work();
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace qinghe
