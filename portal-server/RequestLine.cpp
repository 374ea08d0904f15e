#include "RequestLine.h"

#include <algorithm>

namespace qinghe::portal_server {

std::optional<RequestLine> parseRequestLine(std::string_view line) {
  const bool http11 = line.ends_with(" HTTP/1.1");
  if (!http11 && !line.ends_with(" HTTP/1.0")) return {};
  line.remove_suffix(sizeof(" HTTP/1.1") - 1);
  const std::size_t blank = line.find(' ');
  if (blank == 0 || blank == std::string_view::npos) return {};
  const std::string_view method = line.substr(0, blank);
  const bool word =
      std::all_of(method.begin(), method.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
  std::string_view target = line.substr(blank + 1);
  target = target.substr(0, target.find(' '));
  const bool controls = std::any_of(target.begin(), target.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
  });
  if (!word || method.size() > 16 || target.empty() || controls) return {};
  return RequestLine{method, target, http11};
}

}  // namespace qinghe::portal_server
