#include "reports/engine/PdfTextDevice.h"

#include <QRawFont>
#include <QRegularExpression>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr ushort kFirstRadical = 0x2E80;
constexpr ushort kLastRadical = 0x2FDF;
constexpr ushort kFirstIdeograph = 0x4E00;
constexpr ushort kLastIdeograph = 0x9FFF;

quint32 glyphOf(const QRawFont& font, ushort code) {
  const auto glyphs = font.glyphIndexesForString(QString(QChar(code)));
  return glyphs.isEmpty() ? 0 : glyphs.first();
}

QList<ushort> codesIn(const QByteArray& line) {
  static const QRegularExpression code(u"<([0-9A-Fa-f]{4})>"_s);
  QList<ushort> codes;
  auto matches = code.globalMatch(QString::fromLatin1(line));
  while (matches.hasNext()) codes << matches.next().captured(1).toUShort(nullptr, 16);
  return codes;
}

QByteArray written(ushort code) {
  return '<' + QByteArray::number(code, 16).toUpper().rightJustified(4, '0') + '>';
}

/// "<first> <last> [<code> ...]" or "<first> <last> <code of first>", with the codes replaced.
QByteArray correctedRange(const QByteArray& line, const QHash<ushort, ushort>& replaced) {
  QList<ushort> codes = codesIn(line);
  if (codes.size() < 3) return line;
  const ushort first = codes.takeFirst();
  const ushort last = codes.takeFirst();
  if (!line.contains('[')) {
    bool shared = false;
    const ushort start = codes.first();
    codes.clear();
    for (int glyph = first; glyph <= last; ++glyph) {
      codes << static_cast<ushort>(start + glyph - first);
      shared = shared || replaced.contains(codes.last());
    }
    if (!shared) return line;
  }
  QByteArray out = written(first) + written(last) + '[';
  for (const ushort code : codes) out += written(replaced.value(code, code));
  return out + ']';
}

}  // namespace

PdfTextDevice::PdfTextDevice(QIODevice& target, const QFont& font)
    : target_(target), codes_(sharedCodes(font)) {
  open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

QHash<ushort, ushort> PdfTextDevice::sharedCodes(const QFont& font) {
  const QRawFont raw = QRawFont::fromFont(font);
  QHash<quint32, ushort> radicals;
  for (ushort code = kFirstRadical; code <= kLastRadical; ++code) {
    if (const quint32 glyph = glyphOf(raw, code)) radicals.insert(glyph, code);
  }
  QHash<ushort, ushort> codes;
  if (glyphOf(raw, '\t') == glyphOf(raw, ' ')) codes.insert('\t', ' ');
  if (radicals.isEmpty()) return codes;
  for (ushort code = kFirstIdeograph; code <= kLastIdeograph; ++code) {
    const auto radical = radicals.constFind(glyphOf(raw, code));
    if (radical != radicals.cend() && !codes.contains(*radical)) codes.insert(*radical, code);
  }
  return codes;
}

QByteArray PdfTextDevice::corrected(const QByteArray& map, const QHash<ushort, ushort>& codes) {
  QByteArray out;
  bool inRanges = false;
  for (const QByteArray& line : map.split('\n')) {
    if (line.endsWith("endbfrange")) inRanges = false;
    out += (inRanges ? correctedRange(line, codes) : line) + '\n';
    if (line.endsWith("beginbfrange")) inRanges = true;
  }
  out.chop(1);
  // Ranges are written more tightly than before; blanks at the end fill what that leaves.
  if (out.size() > map.size()) return map;
  return out.leftJustified(map.size(), ' ');
}

qint64 PdfTextDevice::readData(char*, qint64) {
  return -1;
}

qint64 PdfTextDevice::writeData(const char* data, qint64 size) {
  const auto block = QByteArray::fromRawData(data, static_cast<qsizetype>(size));
  const bool isMap = block.startsWith("/CIDInit") && block.contains("begincmap");
  const qint64 sent = isMap && !codes_.isEmpty() ? target_.write(corrected(block, codes_))
                                                 : target_.write(data, size);
  if (sent != size) setErrorString(target_.errorString());
  return sent;
}

}  // namespace qinghe
