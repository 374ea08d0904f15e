#pragma once

#include "values/failure.h"

namespace qinghe {

/// A failure of the local store: what was tried, and the engine's own words. `number` is the
/// engine's result code, or `cannotOpen`.
class StoreError : public Failure {
 public:
  /// The database file cannot be found or opened.
  static constexpr int cannotOpen = static_cast<int>(0x80004005U);

  StoreError(int number, const QString& description) : Failure(number, description) {}
};

}  // namespace qinghe
