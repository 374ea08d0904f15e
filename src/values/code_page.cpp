#include "values/code_page.h"

#include <QList>
#include <QStringDecoder>
#include <array>
#include <vector>

namespace qinghe {

namespace {

constexpr int firstLead = 0x81;
constexpr int lastLead = 0xFE;
constexpr int firstTrail = 0x40;
constexpr int lastTrail = 0xFE;
constexpr int trails = lastTrail - firstTrail + 1;
constexpr char16_t unknown = QChar::ReplacementCharacter;

// Both directions of the code page, taken once from Qt's converter: it substitutes in its own way
// what does not fit, and single characters through it would be slow.
class CodePage {
 public:
  static const CodePage& get() {
    static const CodePage page;
    return page;
  }

  char16_t character(uchar lead, uchar trail) const {
    if (lead < firstLead || lead > lastLead || trail < firstTrail || trail > lastTrail) {
      return unknown;
    }
    return decoded_[static_cast<size_t>((lead - firstLead) * trails + trail - firstTrail)];
  }

  /// Both bytes of a character, the lead one high; below 0x100 one byte; 0 for none.
  quint16 bytes(char16_t character) const { return encoded_[character]; }

 private:
  CodePage() : decoded_(static_cast<size_t>((lastLead - firstLead + 1) * trails), unknown) {
    for (quint16 byte = 0; byte < 0x80; ++byte) encoded_[byte] = byte;
    readTwoByteCharacters();
  }

  void readTwoByteCharacters() {
    QByteArray all;
    all.reserve(static_cast<qsizetype>(decoded_.size()) * 3);
    for (int lead = firstLead; lead <= lastLead; ++lead) {
      for (int trail = firstTrail; trail <= lastTrail; ++trail) {
        all.append(static_cast<char>(lead)).append(static_cast<char>(trail)).append('\n');
      }
    }
    QStringDecoder decoder("GBK");
    const QString text = decoder(all);
    size_t index = 0;
    for (const QStringView part : QStringView(text).split(u'\n')) {
      if (index >= decoded_.size()) break;
      if (part.size() == 1 && part[0] != QChar(unknown)) accept(index, part[0].unicode());
      ++index;
    }
  }

  void accept(size_t index, char16_t character) {
    decoded_[index] = character;
    if (encoded_[character] != 0 || character < 0x80) return;
    const auto lead = static_cast<int>(index) / trails + firstLead;
    const auto trail = static_cast<int>(index) % trails + firstTrail;
    encoded_[character] = static_cast<quint16>(lead << 8 | trail);
  }

  std::vector<char16_t> decoded_;
  std::array<quint16, 0x10000> encoded_{};
};

}  // namespace

QByteArray toCodePage(QStringView text) {
  const CodePage& page = CodePage::get();
  QByteArray result(text.size() * 2, Qt::Uninitialized);
  char* out = result.data();
  for (qsizetype at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at].unicode();
    const quint16 bytes = page.bytes(unit);
    if (bytes > 0xFF) {
      *out++ = static_cast<char>(bytes >> 8);
      *out++ = static_cast<char>(bytes & 0xFF);
    } else if (bytes != 0 || unit == 0) {
      *out++ = static_cast<char>(bytes);
    } else {
      *out++ = '?';
      const bool pair =
          QChar::isHighSurrogate(unit) && at + 1 < text.size() && text[at + 1].isLowSurrogate();
      if (pair) ++at;
    }
  }
  result.truncate(out - result.constData());
  return result;
}

QString fromCodePage(QByteArrayView bytes) {
  const CodePage& page = CodePage::get();
  QString result(bytes.size(), Qt::Uninitialized);
  QChar* out = result.data();
  for (qsizetype at = 0; at < bytes.size(); ++at) {
    const auto byte = static_cast<uchar>(bytes[at]);
    if (byte < 0x80) {
      *out++ = QLatin1Char(static_cast<char>(byte));
      continue;
    }
    char16_t character = unknown;
    if (at + 1 < bytes.size()) {
      character = page.character(byte, static_cast<uchar>(bytes[at + 1]));
      if (character != unknown) ++at;
    }
    *out++ = QChar(character);
  }
  result.truncate(out - result.constData());
  return result;
}

}  // namespace qinghe
