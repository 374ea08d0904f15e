#include "portal/url_encode.h"

#include <array>
#include <cstring>

#include "values/code_page.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

/// "%" and the byte in hexadecimal without a leading zero, as the portal expects it ("%9", not
/// "%09"), filled up to four characters so that it is written in one go.
using Escape = std::array<char16_t, 4>;

constexpr std::array<Escape, 256> escapes = [] {
  constexpr char16_t digits[] = u"0123456789ABCDEF";
  std::array<Escape, 256> all{};
  for (unsigned byte = 0; byte < 256; ++byte) {
    if (byte < 16)
      all[byte] = {u'%', digits[byte], u'\0', u'\0'};
    else
      all[byte] = {u'%', digits[byte / 16], digits[byte % 16], u'\0'};
  }
  return all;
}();

template <class Unit>
QString encode(const Unit* units, qsizetype count) {
  QString encoded(count * 3 + 1, Qt::Uninitialized);  // the last escape is written four wide
  auto* out = encoded.data();
  for (const auto* const end = units + count; units != end; ++units) {
    const auto byte = static_cast<unsigned char>(*units);
    std::memcpy(static_cast<void*>(out), escapes[byte].data(), sizeof(Escape));
    out += byte < 16 ? 2 : 3;
  }
  encoded.truncate(out - encoded.constData());
  return encoded;
}

struct Content {
  bool hasMarks = false;
  bool isAscii = true;
};

Content contentOf(QStringView value) {
  Content content;
  char16_t seen = 0;
  for (const QChar c : value) {
    seen = seen | c.unicode();
    content.hasMarks |= c == u'<' || c == u'>' || c == u'\r';
  }
  content.isAscii = seen < 0x80;
  return content;
}

/// ASCII is itself in the code page, so that a plain value needs no conversion.
QString encode(const QString& value, Content content) {
  if (value.isEmpty()) return {};
  if (content.isAscii) return encode(value.utf16(), value.size());
  const auto bytes = toCodePage(value);
  return encode(bytes.constData(), bytes.size());
}

}  // namespace

QString UrlEncodeField(QString& value) {
  const auto content = contentOf(value);
  if (content.hasMarks) {
    value.replace(u'<', "&lt;"_L1);
    value.replace(u'>', "&gt;"_L1);
    value.replace("\r\n"_L1, "<br>"_L1);
  }
  return encode(value, content);
}

QString UrlEncodeField(QString&& value) {
  return UrlEncodeField(value);
}

QString UrlEncodeField(const QString& value) {
  const auto content = contentOf(value);
  return content.hasMarks ? UrlEncodeField(QString(value)) : encode(value, content);
}

}  // namespace qinghe
