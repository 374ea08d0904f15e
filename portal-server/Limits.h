#pragma once

#include <chrono>
#include <cstddef>

namespace qinghe::portal_server {

/// What a client may ask of the server.
struct Limits {
  std::size_t requestLine = 1U << 20U;  ///< the relay triples a long line twice
  std::size_t headers = 64U << 10U;
  std::size_t body = 4U << 20U;
  std::size_t connections = 512;
  std::chrono::milliseconds idle{75'000};      ///< between two requests of a kept connection
  std::chrono::milliseconds transfer{20'000};  ///< for a whole request, and for a whole answer
  std::chrono::milliseconds farewell{5'000};   ///< for requests under way when the server stops
  std::chrono::milliseconds house{60'000};  ///< between two looks at who is there and what is old
};

}  // namespace qinghe::portal_server
