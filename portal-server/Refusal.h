#pragma once

#include <stdexcept>

namespace qinghe::portal_server {

/// A request that is not done: its answer has no marker, its reason goes to the log and nowhere
/// else. Nothing has been changed.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace qinghe::portal_server
