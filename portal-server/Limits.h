#pragma once

#include <chrono>
#include <cstddef>

#include "ForeignPage.h"

namespace qinghe::portal_server {

/// What a client may ask of the server.
struct Limits {
  std::size_t requestLine = 1U << 20U;  ///< the relay triples a long line twice
  std::size_t headers = 64U << 10U;
  std::size_t body = 4U << 20U;
  std::size_t connections = 512;
  std::size_t connectionsOfOneClient = 128;
  std::chrono::milliseconds idle{75'000};      ///< between two requests of a kept connection
  std::chrono::milliseconds transfer{20'000};  ///< for a whole request, and for a whole answer,
  std::size_t slowestRate = 16;                ///< and a millisecond more for so many bytes
  std::size_t unsent = 256U << 20U;  ///< bytes of answers that slow clients still have to take
  std::chrono::milliseconds farewell{5'000};  ///< for requests under way when the server stops
  std::chrono::milliseconds house{60'000};    ///< between two looks at who is there and what is old
  ForeignLimits foreign{};                    ///< of a page that the relay fetches elsewhere
  std::size_t foreignAtOnce = 32;             ///< such pages under way, waiting ones included
  std::size_t foreignOfOneClient = 4;         ///< of these, asked for by one address
  std::size_t picturesAtOnce = 16;            ///< uploads that wait to be decoded
  std::size_t picturesOfOneClient = 4;
  std::size_t searchesAtOnce = 16;  ///< reads that take longer than a moment
  std::size_t searchesOfOneClient = 4;
};

}  // namespace qinghe::portal_server
