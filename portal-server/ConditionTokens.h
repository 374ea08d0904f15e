#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qinghe::portal_server {

struct Token {
  enum class Kind : std::uint8_t { Word, Number, Text, Date, Sign, End };
  Kind kind = Kind::End;
  std::string text;  ///< without quotes or "#"
};

/// Cuts a condition text into its pieces, the last of which is `End`. Throws `Refusal` for a
/// character that belongs to none, an open quote, and a text that is too long.
std::vector<Token> conditionTokens(std::string_view text);

}  // namespace qinghe::portal_server
