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

  /// The sheet with the companies' message history, which no portal keeps: it goes into their
  /// local databases.
  static constexpr std::string_view localHistory = "local_xixi";

  /// All sheets. Throws `std::logic_error` when one is broken.
  static std::vector<Sheet> sheets();

  /// Fills the store in one transaction if no enterprise is registered in it. Whether it did.
  ///
  /// The inboxes' messages are dated so that the newest is of the day before: with dates of their
  /// own they would be too old to be kept soon.
  static bool fill(Store& store);
};

}  // namespace qinghe::portal_server
