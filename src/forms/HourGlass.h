#pragma once

namespace qinghe {

/// The hourglass pointer for as long as it lives, undone on every way out. Nests.
class HourGlass {
 public:
  HourGlass();
  ~HourGlass();
  HourGlass(const HourGlass&) = delete;
  HourGlass& operator=(const HourGlass&) = delete;
};

}  // namespace qinghe
