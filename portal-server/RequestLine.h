#pragma once

#include <optional>
#include <string_view>

namespace qinghe::portal_server {

/// The first line of a request. The target is taken byte for byte up to its first blank: clients
/// send code page bytes, quotes and stray blanks in it, which strict parsers refuse.
struct RequestLine {
  std::string_view method;
  std::string_view target;
  bool http11 = true;
};

/// Reads "GET /path HTTP/1.1", without the line end. Nothing for anything else.
std::optional<RequestLine> parseRequestLine(std::string_view line);

}  // namespace qinghe::portal_server
