#include "portal/GetHtml.h"

#include <QCoreApplication>
#include <algorithm>
#include <limits>

#include "portal/RequestBuilder.h"
#include "portal/url_encode.h"
#include "values/code_page.h"
#include "values/numbers.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr qsizetype closingTagLength = 8;  // of "</table>"
constexpr auto pumpInterval = std::chrono::milliseconds(10);

[[noreturn]] void throwOverflow(qsizetype index) {
  throw Overflow(u"answer position %1"_s.arg(index + 1));
}

/// A 1-based position as the reader keeps it: in 16 bits.
inline qsizetype checkedPosition(qsizetype index) {
  if (index >= std::numeric_limits<qint16>::max()) throwOverflow(index);
  return index;
}

/// Whether `lower` stands at `at`, ASCII letters compared without case.
template <size_t N>
bool standsAt(const char16_t* at, const char16_t* end, const char16_t (&lower)[N]) {
  constexpr auto length = static_cast<qsizetype>(N - 1);
  if (end - at < length) return false;
  for (qsizetype i = 0; i < length; ++i) {
    const char16_t c = at[i] >= u'A' && at[i] <= u'Z' ? char16_t(at[i] + 32) : at[i];
    if (c != lower[i]) return false;
  }
  return true;
}

/// The index of the first "<" + `first` + `second`, exactly so written; -1 without one.
qsizetype findOpening(QStringView text, char16_t first, char16_t second) {
  const auto* const begin = text.utf16();
  for (qsizetype i = 0, last = text.size() - 3; i <= last; ++i) {
    if (begin[i] == u'<' && begin[i + 1] == first && begin[i + 2] == second) return i;
  }
  return -1;
}

/// The index of the first `lower` from `from` on, ASCII letters compared without case; -1 without
/// one. Some times quicker than Qt's search without case, which folds every letter of the page.
template <size_t N>
qsizetype findTag(QStringView text, qsizetype from, const char16_t (&lower)[N]) {
  const auto* const begin = text.utf16();
  const auto* const end = begin + text.size();
  for (const auto* at = begin + std::min(from, text.size()); at != end; ++at) {
    if (*at == lower[0] && standsAt(at, end, lower)) return at - begin;
  }
  return -1;
}

/// Undoes the three marks in one pass, as none of the replacements can make or break another mark.
/// One pass, because replacing in place is quadratic on a page that consists of them.
QString undoMarks(const QString& page) {
  QString text(page.size(), Qt::Uninitialized);
  auto* out = text.data();
  const auto* const end = QStringView(page).utf16() + page.size();
  for (const auto* in = QStringView(page).utf16(); in != end;) {
    if (*in == u'<' && standsAt(in, end, u"<br>")) {
      *out++ = u'\r';
      *out++ = u'\n';
      in += 4;
    } else if (*in == u'&' && standsAt(in, end, u"&lt;")) {
      *out++ = u'<';
      in += 4;
    } else if (*in == u'&' && standsAt(in, end, u"&gt;")) {
      *out++ = u'>';
      in += 4;
    } else {
      *out++ = QChar(*in++);
    }
  }
  text.truncate(out - text.constData());
  return text;
}

}  // namespace

QString GetHtml::openUrl(const QString& url, PageText text) {
  if (inet_.StillExecuting()) return {};
  return inet_.OpenURL(url, text);
}

QString GetHtml::GetUrl(qint16 mode, const QString& url, PageText text) {
  switch (mode) {
    case 1:
      return undoMarks(openUrl(
          RequestBuilder(state_.gWebServer, paths::review).encoded(u"review"_s, url).url(), text));
    case 2:
      return undoMarks(openUrl(url, text));
    default:
      return {};
  }
}

QString GetHtml::PostUrl(const QString& url, const QString& body) {
  const auto headers = u"Content-Type: application/x-www-form-urlencoded\r\n"_s;
  while (inet_.StillExecuting()) {
    QCoreApplication::processEvents();
    inet_.waitUntilFree(pumpInterval);
  }
  inet_.Execute(url, u"POST"_s, body, headers);
  return {};
}

void GetHtml::PutUrl(const QString& body) {
  QByteArray bytes;
  StringToBytes(bytes, body);
}

void GetHtml::PostUrl2(const QString& /*x*/, const QString& body) {
  PutUrl(body);
}

void GetHtml::StringToBytes(QByteArray& bytes, const QString& text) {
  bytes.clear();
  bytes.reserve(text.size());
  for (const QChar character : text) {
    if (character == u' ') {
      bytes.append('+');
      continue;
    }
    const auto code = toCodePage(QStringView(&character, 1));
    if (code.size() != 1) throw Overflow(u"character code of \"%1\""_s.arg(character));
    bytes.append(code);
  }
}

QString GetHtml::ParseResponse(const QString& page) const {
  const auto start = page.indexOf("start_pos"_L1);
  if (start < 0) return {};
  const auto stop = findTag(page, start, u"</table>");
  if (stop < 0) throw InvalidCall(u"answer without \"</table>\""_s);
  return page.sliced(start, stop + closingTagLength - start);
}

QString GetHtml::ParseResponse2(const QString& page, const QString& marker, qint16 tables) const {
  auto position = page.isEmpty() ? -1 : page.indexOf(marker);
  if (position < 0) return {};
  for (qint16 table = 0; table < tables; ++table) {
    // Eight whatever the tag is. A table that is not there counts as found in front of the first
    // character, so the reading goes on at the eighth.
    position = findTag(page, position, u"<table") + 8;
  }
  const auto stop = findTag(page, position, u"</table>");
  if (stop < 0) throw InvalidCall(u"page without \"</table>\""_s);
  return page.sliced(position, stop + closingTagLength - position);
}

ResponseCursor GetHtml::GetRow(const ResponseCursor& text) const {
  const auto row = findOpening(text.view(), u't', u'r');
  if (row < 0) return {};
  return text.from(checkedPosition(row));
}

QString GetHtml::GetRowItem() {
  const auto text = state_.gResponse.view();
  const auto start = findOpening(text, u't', u'd');
  if (start < 0) throw InvalidCall(u"answer without a further \"<td\""_s);
  checkedPosition(start);

  const auto* const begin = text.utf16();
  const auto* const end = begin + text.size();
  const auto* at = begin + start + 1;
  int depth = 1;  // the scan begins inside the opening tag
  QStringView first;
  QString joined;  // used only by a cell whose text tags divide
  for (const auto* run = at;; run = ++at) {
    while (at != end && *at != u'<' && *at != u'>') ++at;
    if (at == end) throw InvalidCall(u"cell without \"</td\""_s);
    if (depth == 0 && at != run) {
      const QStringView piece(run, at - run);
      if (first.isEmpty())
        first = piece;
      else
        (joined.isEmpty() ? joined.append(first) : joined).append(piece);
    }
    if (*at == u'>') {
      --depth;
    } else if (standsAt(at, end, u"</td")) {
      break;
    } else {
      ++depth;
    }
  }
  const auto stop = checkedPosition(at - begin);
  auto item = Trim(joined.isEmpty() ? first : QStringView(joined));
  state_.gResponse.advance(stop);
  return item;
}

std::vector<std::vector<QString>> GetHtml::GetARRAY(qint16 columns) {
  if (columns < 0) throw InvalidCall(u"%1 columns"_s.arg(columns));
  std::vector<std::vector<QString>> cells(static_cast<size_t>(columns) + 1,
                                          std::vector<QString>(1));
  for (;;) {
    state_.gResponse = GetRow(state_.gResponse);
    if (state_.gResponse.isEmpty()) return cells;
    // Without a cell read the cursor would stay on this row for ever.
    if (columns == 0) throw Overflow(u"rows of no columns"_s);
    cells[0].emplace_back();
    for (size_t column = 1; column < cells.size(); ++column) cells[column].push_back(GetRowItem());
  }
}

}  // namespace qinghe
