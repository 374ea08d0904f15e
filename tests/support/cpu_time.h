#pragma once

#include <ctime>

namespace qinghe {

/// The milliseconds that this thread has worked. Unlike a clock's they do not grow while the
/// machine does something else.
inline double workedMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

}  // namespace qinghe
