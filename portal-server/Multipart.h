#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qinghe::portal_server {

/// One field of a form that a browser posted with a file in it.
struct FormPart {
  std::string name;
  std::string fileName;  ///< as the sender says, never used as a path; empty for a plain field
  bool isFile = false;
  std::string_view bytes;  ///< of the body it was read from
};

/// The boundary of a "multipart/form-data" content type; nothing for any other type.
std::optional<std::string> formBoundary(std::string_view contentType);

/// Takes a posted form apart; nothing when it is broken, cut off, or has too many parts.
std::optional<std::vector<FormPart>> parseForm(std::string_view body, std::string_view boundary);

}  // namespace qinghe::portal_server
