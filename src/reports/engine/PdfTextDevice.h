#pragma once

#include <QFont>
#include <QHash>
#include <QIODevice>

namespace qinghe {

/// Passes a PDF on to another device and corrects on the way which characters its glyphs stand for.
///
/// Fonts draw some characters with one glyph: the blank and the tab, an ideograph and the radical
/// of its shape. Qt notes the lowest code for such a glyph, so that a reader of the file would
/// search and copy radicals where ideographs were written. The maps are rewritten in the same
/// length, hence nothing else in the file moves.
class PdfTextDevice : public QIODevice {
  Q_OBJECT

 public:
  /// The target must be open for writing and outlive it; `font` tells which characters share
  /// glyphs.
  PdfTextDevice(QIODevice& target, const QFont& font);

  bool isSequential() const override { return true; }

  /// A glyph map with the codes replaced; the map as it is when the result would not fit its
  /// length.
  static QByteArray corrected(const QByteArray& map, const QHash<ushort, ushort>& codes);
  /// The codes to replace, with what stands for them.
  static QHash<ushort, ushort> sharedCodes(const QFont& font);

 protected:
  qint64 readData(char* data, qint64 size) override;
  qint64 writeData(const char* data, qint64 size) override;

 private:
  QIODevice& target_;
  QHash<ushort, ushort> codes_;
};

}  // namespace qinghe
