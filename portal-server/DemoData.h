#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Store.h"

namespace qinghe::portal_server {

/// The demo trade: tables of tab-separated values that are built into the program.
class DemoData {
 public:
  using Line = std::vector<std::string_view>;
  struct Sheet {
    std::string_view storage;  ///< the table that the lines go to
    std::vector<std::string_view> columns;
    std::vector<Line> lines;
  };

  /// All sheets. Throws `std::logic_error` when one is broken.
  static std::vector<Sheet> sheets();

  /// Fills the store in one transaction if no enterprise is registered in it. Whether it did.
  static bool fill(Store& store);
};

}  // namespace qinghe::portal_server
