#include "portal/page_charset.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QStringDecoder>
#include <optional>

#include "values/code_page.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

// A page says what it is written in near its beginning or nowhere.
constexpr qsizetype declarationLimit = 8192;

/// The charset names of the code page and of its smaller predecessor.
bool isCodePage(const QByteArray& name) {
  for (const char* own : {"gbk", "gb2312", "x-gbk", "cp936", "ms936", "gb_2312-80", "csgb2312"}) {
    if (name == own) return true;
  }
  return false;
}

QByteArray firstMatch(const QRegularExpression& pattern, QByteArrayView text) {
  const auto match = pattern.match(QString::fromLatin1(text));
  return match.captured(1).toLatin1().toLower();
}

QByteArray headerCharset(QByteArrayView contentType) {
  static const QRegularExpression pattern(uR"(;\s*charset\s*=\s*["']?\s*([\w.:-]+))"_s,
                                          QRegularExpression::CaseInsensitiveOption);
  return firstMatch(pattern, contentType);
}

QByteArray ownCharset(QByteArrayView page) {
  static const QRegularExpression pattern(
      uR"((?:<meta\s[^>]*?\bcharset|^\s*<\?xml\s[^>]*?\bencoding)\s*=\s*["']?\s*([\w.:-]+))"_s,
      QRegularExpression::CaseInsensitiveOption);
  const auto name = firstMatch(pattern, page.first(qMin(page.size(), declarationLimit)));
  // Whoever could read the declaration did not read it in units of two bytes.
  return name.startsWith("utf-16") ? QByteArray("utf-8") : name;
}

std::optional<QString> decodedAs(const QByteArray& name, QByteArrayView page) {
  if (name.isEmpty()) return {};
  if (isCodePage(name)) return fromCodePage(page);
  QStringDecoder decoder(name.constData());
  if (!decoder.isValid()) return {};
  return QString(decoder(page));
}

}  // namespace

QString declaredText(QByteArrayView page, QByteArrayView contentType) {
  if (const auto marked = QStringConverter::encodingForData(page)) {
    QStringDecoder decoder(*marked);
    return decoder(page);
  }
  if (auto text = decodedAs(headerCharset(contentType), page)) return *std::move(text);
  if (auto text = decodedAs(ownCharset(page), page)) return *std::move(text);
  return fromCodePage(page);
}

}  // namespace qinghe
