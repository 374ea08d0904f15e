#pragma once

#include <string>
#include <string_view>

namespace qinghe::portal_server {

/// Undoes percent escapes byte by byte. A byte below 16 may come with one hex digit; an escape
/// ends at the second digit, at the next "%" and at the end. A "%" without a digit stays.
std::string decodeEscapes(std::string_view raw);

/// Text from code page bytes, as UTF-8; invalid bytes become U+FFFD.
std::string utf8FromCodePage(std::string_view bytes);

/// A whole page as code page bytes; what does not fit the code page becomes "?".
std::string codePageFromUtf8(std::string_view text);

/// The same, appended to what is there.
void appendCodePage(std::string& bytes, std::string_view utf8);

/// Text as it is kept and shown: no angle bracket but those of "<br>" is left bare, line ends
/// become "<br>", zero bytes go.
std::string storedText(std::string_view text);

/// Stored text for the inside of an attribute or a page title: quotes and brackets as entities.
std::string attributeText(std::string_view text);

/// Comparison without regard to the case of ASCII letters.
bool sameName(std::string_view left, std::string_view right);

std::string lowered(std::string_view text);

/// Decimal digits only, at most 18 of them; -1 for anything else.
long long wholeNumber(std::string_view text);

}  // namespace qinghe::portal_server
