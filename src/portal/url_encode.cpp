#include "portal/url_encode.h"

#include <array>

#include "values/code_page.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

struct Escape {
  std::array<QChar, 3> characters;
  qsizetype length;
};

/// "%" and the byte in hexadecimal, without a leading zero: the portal expects "%9", not "%09".
constexpr std::array<Escape, 256> escapes = [] {
  constexpr char16_t digits[] = u"0123456789ABCDEF";
  std::array<Escape, 256> all{};
  for (unsigned byte = 0; byte < 256; ++byte) {
    auto& escape = all[byte];
    escape.length = byte < 16 ? 2 : 3;
    escape.characters = {u'%', QChar(digits[byte < 16 ? byte : byte / 16]),
                         QChar(digits[byte % 16])};
  }
  return all;
}();

}  // namespace

QString UrlEncodeField(QString& value) {
  value.replace(u'<', "&lt;"_L1);
  value.replace(u'>', "&gt;"_L1);
  value.replace("\r\n"_L1, "<br>"_L1);

  const auto bytes = toCodePage(value);
  QString encoded(bytes.size() * 3, Qt::Uninitialized);
  auto* out = encoded.data();
  for (const char byte : bytes) {
    const auto& escape = escapes[static_cast<unsigned char>(byte)];
    std::copy(escape.characters.begin(), escape.characters.end(), out);
    out += escape.length;
  }
  encoded.truncate(out - encoded.constData());
  return encoded;
}

QString UrlEncodeField(QString&& value) {
  return UrlEncodeField(value);
}

}  // namespace qinghe
