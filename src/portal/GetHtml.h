#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <vector>

#include "portal/Inet.h"
#include "portal/PortalState.h"

namespace qinghe {

/// The portal's pages: transport in the three submit modes, and the reader of the answer's table.
///
/// Made anew by whoever needs it; all share one transfer control and one cursor, so one answer must
/// be read off before the next request. Nothing here catches an error.
class GetHtml {
 public:
  GetHtml(PortalState& state, Inet& inet) : state_(state), inet_(inet) {}

  /// Empty at once, without traffic, while a transfer is running.
  QString openUrl(const QString& url, PageText text = PageText::CodePage);
  /// The page by submit mode (0 nothing, 1 relay, 2 direct), its "<br>", "&lt;", "&gt;" undone.
  QString GetUrl(qint16 mode, const QString& url, PageText text = PageText::CodePage);
  /// Waits for the control to be free, letting the message loop run, then posts and returns.
  /// Always the empty text; the answer is never read.
  QString PostUrl(const QString& url, const QString& body);
  /// Build a body and send nothing.
  void PutUrl(const QString& body);
  void PostUrl2(const QString& x, const QString& body);
  /// Blanks become "+", every other character one byte; a Chinese character throws `Overflow`.
  static void StringToBytes(QByteArray& bytes, const QString& text);

  /// From the marker "start_pos" to the end of the first "</table>" behind it; empty without the
  /// marker, `InvalidCall` without the closing tag.
  QString ParseResponse(const QString& page) const;
  /// Behind the `tables`-th "<table" after `marker`, to the end of the next "</table>".
  QString ParseResponse2(const QString& page, const QString& marker, qint16 tables) const;
  /// The tail that starts at the next "<tr", or nothing. Does not step over a row.
  ResponseCursor GetRow(const ResponseCursor& text) const;
  /// The next cell of `gResponse`, which moves to that cell's closing tag.
  QString GetRowItem();
  /// All rows of `gResponse`: [column][row], both from 1; column 0 and row 0 stay empty.
  std::vector<std::vector<QString>> GetARRAY(qint16 columns);

 private:
  PortalState& state_;
  Inet& inet_;
};

}  // namespace qinghe
