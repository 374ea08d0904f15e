#include "Parameters.h"

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::size_t mostParameters = 256;

}  // namespace

void Parameters::add(std::string_view query) {
  while (!query.empty()) {
    const std::size_t end = query.find('&');
    const std::string_view piece = query.substr(0, end);
    const std::size_t equals = piece.find('=');
    if (equals != std::string_view::npos && equals > 0) {
      const std::string_view name = piece.substr(0, equals);
      if (isFull()) return;
      if (!find(name)) {
        parameters_.push_back({std::string(name), decodeEscapes(piece.substr(equals + 1))});
      }
    }
    if (end == std::string_view::npos) break;
    query.remove_prefix(end + 1);
  }
}

void Parameters::add(std::string_view name, std::string_view value) {
  if (!isFull() && !find(name)) parameters_.push_back({std::string(name), std::string(value)});
}

bool Parameters::has(std::string_view name) const {
  return find(name) != nullptr;
}

std::string_view Parameters::bytes(std::string_view name) const {
  const Parameter* parameter = find(name);
  return parameter ? std::string_view(parameter->value) : std::string_view();
}

std::string Parameters::text(std::string_view name) const {
  return utf8FromCodePage(bytes(name));
}

bool Parameters::isFull() {
  tooMany_ = tooMany_ || parameters_.size() == mostParameters;
  return tooMany_;
}

const Parameters::Parameter* Parameters::find(std::string_view name) const {
  for (const Parameter& parameter : parameters_) {
    if (sameName(parameter.name, name)) return &parameter;
  }
  return nullptr;
}

}  // namespace qinghe::portal_server
