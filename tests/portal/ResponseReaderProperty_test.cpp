#include <gtest/gtest.h>

#include <random>

#include "portal/GetHtml.h"
#include "values/numbers.h"

using namespace Qt::StringLiterals;
using namespace qinghe;

namespace {

/// The reader as it is told: 1-based positions in 16 bits, and a cursor that is replaced by a
/// copied tail of itself.
class NaiveReader {
 public:
  QString text;

  void getRow() { text = position(u"<tr"_s, 1, Qt::CaseSensitive) ? mid(found_) : QString(); }

  QString getRowItem() {
    const qint16 start = position(u"<td"_s, 1, Qt::CaseSensitive);
    if (start == 0) throw InvalidCall(u"start"_s);
    const qint16 stop = position(u"</td"_s, start, Qt::CaseInsensitive);
    int depth = 1;
    QString cell;
    for (int at = start + 1; at <= stop; ++at) {
      const QChar c = text.at(at - 1);
      if (c == u'<')
        ++depth;
      else if (c == u'>')
        --depth;
      else if (depth == 0)
        cell += c;
    }
    while (cell.startsWith(u' ')) cell.remove(0, 1);
    while (cell.endsWith(u' ')) cell.chop(1);
    text = mid(stop);
    return cell;
  }

 private:
  qint16 position(const QString& needle, qint16 from, Qt::CaseSensitivity sensitivity) {
    found_ = toInt16(static_cast<double>(text.indexOf(needle, from - 1, sensitivity) + 1));
    return found_;
  }
  QString mid(qint16 from) const {
    if (from == 0) throw InvalidCall(u"mid"_s);
    return QString(text.constData() + from - 1, text.size() - from + 1);
  }
  qint16 found_ = 0;
};

/// What a run of reading gave: cells, and how it ended.
template <class Row, class Cell>
QStringList trace(const Row& nextRow, const Cell& nextCell, int cellsPerRow) {
  QStringList seen;
  try {
    for (int rows = 0; rows < 400; ++rows) {
      const auto left = nextRow();
      seen << u"row, left "_s + QString::number(left);
      if (left == 0) return seen;
      for (int cell = 0; cell < cellsPerRow; ++cell) seen << nextCell();
    }
    seen << u"cut off"_s;
  } catch (const Overflow&) {
    seen << u"overflow"_s;
  } catch (const InvalidCall&) {
    seen << u"invalid call"_s;
  }
  return seen;
}

QStringList traceNaive(const QString& answer, int cellsPerRow) {
  NaiveReader reader;
  reader.text = answer;
  return trace(
      [&] {
        reader.getRow();
        return reader.text.size();
      },
      [&] {
        const auto cell = reader.getRowItem();
        return cell + u" | left "_s + QString::number(reader.text.size());
      },
      cellsPerRow);
}

QStringList traceReader(const QString& answer, int cellsPerRow) {
  PortalState state;
  Inet inet;
  GetHtml html(state, inet);
  state.gResponse = answer;
  return trace(
      [&] {
        state.gResponse = html.GetRow(state.gResponse);
        return state.gResponse.length();
      },
      [&] {
        const auto cell = html.GetRowItem();
        return cell + u" | left "_s + QString::number(state.gResponse.length());
      },
      cellsPerRow);
}

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

  QString answer() {
    QString text = u"start_pos>"_s;
    for (int row = below(6); row > 0; --row) {
      text += u"<tr>"_s;
      for (int cell = below(5); cell > 0; --cell) text += u"<td>"_s + content() + u"</td>"_s;
      text += below(3) ? u"</tr>"_s : u"\r\n"_s;
    }
    return text + u"</table>"_s;
  }

  void mutate(QString& text) {
    static const QStringList pieces = {u"<"_s,
                                       u">"_s,
                                       u"<tr"_s,
                                       u"<TR"_s,
                                       u"<td"_s,
                                       u"<Td>"_s,
                                       u"</td"_s,
                                       u"</TD>"_s,
                                       u"</table>"_s,
                                       u"<td>"_s,
                                       u"  "_s,
                                       u"</"_s,
                                       u"书"_s,
                                       u"<t"_s,
                                       QString(9000, u'x'),
                                       QString(32760, u' ')};
    const int at = below(static_cast<int>(text.size()) + 1);
    switch (below(3)) {
      case 0:
        text.remove(at, below(8));
        break;
      case 1:
        text.insert(at, pieces.at(below(static_cast<int>(pieces.size()))));
        break;
      default:
        text.truncate(at);
    }
  }

 private:
  QString content() {
    switch (below(7)) {
      case 0:
        return {};
      case 1:
        return u"  《大学语文》 "_s;
      case 2:
        return u"<a href=x>link</a> & <font>more</font>"_s;
      case 3:
        return u"a>b"_s;
      case 4:
        return u"a<b"_s;
      case 5:
        return QString(below(2) ? 20000 : 32763, u'l');
      default:
        return QString::number(below(1000));
    }
  }
  std::mt19937 random_;
};

TEST(ResponseReaderProperty, ReadsGeneratedAndMutatedAnswersAsTheNaiveReaderDoes) {
  Generator generator(20240309);
  int failures = 0;
  for (int round = 0; round < 4000 && failures < 3; ++round) {
    auto answer = generator.answer();
    for (int mutations = generator.below(6); mutations > 0; --mutations) generator.mutate(answer);
    const int cells = 1 + generator.below(4);
    const auto expected = traceNaive(answer, cells);
    if (traceReader(answer, cells) == expected) continue;
    ++failures;
    ADD_FAILURE() << "round " << round << ", " << cells << " cells a row:\n"
                  << answer.left(2000).toStdString();
  }
}

}  // namespace
