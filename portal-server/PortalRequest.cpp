#include "PortalRequest.h"

#include "text_codec.h"

namespace qinghe::portal_server {

RequestTarget parseTarget(std::string_view target) {
  target = target.substr(0, target.find(' '));
  RequestTarget parsed;
  constexpr std::string_view scheme = "http://";
  if (sameName(target.substr(0, scheme.size()), scheme)) {
    target.remove_prefix(scheme.size());
    const std::size_t end = target.find_first_of("/?");
    parsed.host = lowered(target.substr(0, end));
    target = end == std::string_view::npos ? std::string_view() : target.substr(end);
  }
  const std::size_t question = target.find('?');
  std::string_view path = target.substr(0, question);
  while (path.starts_with('/')) path.remove_prefix(1);
  parsed.path = lowered(path);
  if (question != std::string_view::npos) parsed.query = target.substr(question + 1);
  return parsed;
}

}  // namespace qinghe::portal_server
