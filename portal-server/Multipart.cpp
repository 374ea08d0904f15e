#include "Multipart.h"

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::size_t mostParts = 16;
constexpr std::size_t longestHead = 4096;
constexpr std::size_t longestBoundary = 70;
constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headEnd = "\r\n\r\n";

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

// Up to the ";" that ends an attribute; one inside quotes does not.
std::string_view cutAttribute(std::string_view& rest) {
  bool quoted = false;
  std::size_t at = 0;
  while (at < rest.size() && (quoted || rest[at] != ';')) quoted ^= rest[at++] == '"';
  const std::string_view attribute = rest.substr(0, at);
  rest.remove_prefix(at < rest.size() ? at + 1 : at);
  return trimmed(attribute);
}

// The value of an attribute in "kind; name=value; other=\"value\"".
std::optional<std::string> attributeOf(std::string_view header, std::string_view name) {
  cutAttribute(header);
  while (!header.empty()) {
    const std::string_view attribute = cutAttribute(header);
    const std::size_t equals = attribute.find('=');
    if (equals == std::string_view::npos) continue;
    if (!sameName(trimmed(attribute.substr(0, equals)), name)) continue;
    std::string_view value = trimmed(attribute.substr(equals + 1));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
      value = value.substr(1, value.size() - 2);
    }
    return std::string(value);
  }
  return {};
}

std::optional<FormPart> partFrom(std::string_view head, std::string_view bytes) {
  while (!head.empty()) {
    const std::size_t end = head.find(lineEnd);
    const std::string_view line = head.substr(0, end);
    head.remove_prefix(end == std::string_view::npos ? head.size() : end + lineEnd.size());
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return {};
    if (!sameName(trimmed(line.substr(0, colon)), "content-disposition")) continue;
    const std::string_view said = line.substr(colon + 1);
    auto name = attributeOf(said, "name");
    if (!name || name->empty()) return {};
    auto file = attributeOf(said, "filename");
    return FormPart{.name = std::move(*name),
                    .fileName = file.value_or(std::string()),
                    .isFile = file.has_value(),
                    .bytes = bytes};
  }
  return {};
}

}  // namespace

std::optional<std::string> formBoundary(std::string_view contentType) {
  std::string_view rest = contentType;
  if (!sameName(cutAttribute(rest), "multipart/form-data")) return {};
  auto boundary = attributeOf(contentType, "boundary");
  if (!boundary || boundary->empty() || boundary->size() > longestBoundary) return std::string();
  return boundary;
}

std::optional<std::vector<FormPart>> parseForm(std::string_view body, std::string_view boundary) {
  if (boundary.empty()) return {};
  const std::string first = "--" + std::string(boundary);
  const std::string next = std::string(lineEnd) + first;
  if (!body.starts_with(first)) return {};
  body.remove_prefix(first.size());
  std::vector<FormPart> parts;
  while (!body.starts_with("--")) {
    if (!body.starts_with(lineEnd) || parts.size() == mostParts) return {};
    body.remove_prefix(lineEnd.size());
    const std::size_t split = body.substr(0, longestHead).find(headEnd);
    if (split == std::string_view::npos) return {};
    const std::string_view head = body.substr(0, split);
    body.remove_prefix(split + headEnd.size());
    const std::size_t end = body.find(next);
    if (end == std::string_view::npos) return {};
    auto part = partFrom(head, body.substr(0, end));
    if (!part) return {};
    parts.push_back(std::move(*part));
    body.remove_prefix(end + next.size());
  }
  return parts;
}

}  // namespace qinghe::portal_server
