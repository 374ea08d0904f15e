#include "text_codec.h"

#include <QString>
#include <algorithm>
#include <array>
#include <cstdint>

#include "values/code_page.h"

namespace qinghe::portal_server {

namespace {

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isPlainAscii(std::string_view text) {
  return std::none_of(text.begin(), text.end(),
                      [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

// The code page of every character, taken once from the converter: pages are turned into bytes
// with each answer, and going through two more encodings would cost as much as reading the rows.
class CodePageBytes {
 public:
  CodePageBytes() {
    for (std::uint16_t code = 0; code < firstBeyondAscii; ++code) bytes_[code] = code;
    QString all;
    for (char16_t unit = firstBeyondAscii; unit != 0; ++unit) {
      all.append(QChar::isSurrogate(unit) ? QChar(u'?') : QChar(unit)).append(QChar(u'\n'));
    }
    const QByteArray bytes = toCodePage(all);
    std::size_t entry = firstBeyondAscii;
    for (const char* at = bytes.cbegin(); at != bytes.cend(); ++at) {
      if (*at == '\n') {
        ++entry;
      } else {
        bytes_[entry] =
            static_cast<std::uint16_t>(bytes_[entry] << 8U | static_cast<unsigned char>(*at));
      }
    }
  }

  /// Writes one or two bytes; the place behind them.
  char* write(char* out, char32_t character) const {
    const std::uint16_t both = character < bytes_.size() ? bytes_[character] : '?';
    if (both > 0xFF) *out++ = static_cast<char>(both >> 8U);
    *out++ = static_cast<char>(both & 0xFFU);
    return out;
  }

 private:
  static constexpr char16_t firstBeyondAscii = 0x80;
  std::array<std::uint16_t, 0x10000> bytes_{};
};

// The character beyond ASCII that begins at `at`, which moves behind it. Broken bytes give one "?"
// each.
char32_t nextCharacter(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : -1;
  if (more < 0) return U'?';
  char32_t character = lead & (0x3FU >> static_cast<unsigned>(more));
  for (int i = 0; i < more; ++i, ++at) {
    const auto next = static_cast<unsigned char>(at < text.size() ? text[at] : 0);
    if ((next & 0xC0U) != 0x80U) return U'?';
    character = character << 6U | (next & 0x3FU);
  }
  return character;
}

bool startsWithLineBreakTag(std::string_view text) {
  return text.size() >= 4 && sameName(text.substr(0, 4), "<br>");
}

}  // namespace

std::string decodeEscapes(std::string_view raw) {
  std::string bytes;
  bytes.reserve(raw.size());
  for (std::size_t i = 0; i < raw.size(); ++i) {
    const int high = raw[i] == '%' && i + 1 < raw.size() ? hexDigit(raw[i + 1]) : -1;
    if (high < 0) {
      bytes.push_back(raw[i]);
      continue;
    }
    const int low = i + 2 < raw.size() ? hexDigit(raw[i + 2]) : -1;
    bytes.push_back(static_cast<char>(low < 0 ? high : high * 16 + low));
    i += low < 0 ? 1 : 2;
  }
  return bytes;
}

std::string utf8FromCodePage(std::string_view bytes) {
  if (isPlainAscii(bytes)) return std::string(bytes);
  return fromCodePage(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())))
      .toStdString();
}

std::string codePageFromUtf8(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  appendCodePage(bytes, text);
  return bytes;
}

void appendCodePage(std::string& bytes, std::string_view utf8) {
  static const CodePageBytes table;
  // No character takes more bytes in the code page than in UTF-8, so there is room for all.
  const std::size_t before = bytes.size();
  bytes.resize(before + utf8.size());
  char* out = bytes.data() + before;
  for (std::size_t at = 0; at < utf8.size();) {
    if (static_cast<unsigned char>(utf8[at]) < 0x80) {
      *out++ = utf8[at++];
    } else {
      out = table.write(out, nextCharacter(utf8, at));
    }
  }
  bytes.resize(static_cast<std::size_t>(out - bytes.data()));
}

std::string storedText(std::string_view text) {
  std::string stored;
  stored.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '<' && startsWithLineBreakTag(text.substr(i))) {
      stored += "<br>";
      i += 3;
    } else if (c == '<') {
      stored += "&lt;";
    } else if (c == '>') {
      stored += "&gt;";
    } else if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      stored += "<br>";
      ++i;
    } else if (c != '\0') {
      stored.push_back(c);
    }
  }
  return stored;
}

std::string attributeText(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    if (c == '"') {
      shown += "&quot;";
    } else if (c == '<') {
      shown += "&lt;";
    } else if (c == '>') {
      shown += "&gt;";
    } else {
      shown.push_back(c);
    }
  }
  return shown;
}

bool sameName(std::string_view left, std::string_view right) {
  return left.size() == right.size() &&
         std::equal(left.begin(), left.end(), right.begin(),
                    [](char a, char b) { return lower(a) == lower(b); });
}

std::string lowered(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), lower);
  return result;
}

long long wholeNumber(std::string_view text) {
  if (text.empty() || text.size() > 18) return -1;
  long long value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return -1;
    value = value * 10 + (c - '0');
  }
  return value;
}

}  // namespace qinghe::portal_server
