#include <gtest/gtest.h>

#include "portal/GetHtml.h"

using namespace Qt::StringLiterals;
using namespace qinghe;

namespace {

class ResponseReader : public testing::Test {
 protected:
  PortalState state;
  Inet inet;
  GetHtml html{state, inet};

  QString cell(const QString& answer) {
    state.gResponse = answer;
    return html.GetRowItem();
  }
};

QString blanks(qsizetype count) {
  return QString(count, u' ');
}

TEST_F(ResponseReader, ReadsRowsAndCellsInOrder) {
  state.gResponse = html.ParseResponse(
      u"<html><table border=1 start_pos><tr><td>7</td><td>《大学语文》</td></tr>"
      "<tr><td>9</td><td>《高等数学》</td></tr></table> 页脚</html>"_s);
  QStringList cells;
  for (;;) {
    state.gResponse = html.GetRow(state.gResponse);
    if (state.gResponse.isEmpty()) break;
    for (int column = 0; column < 2; ++column) cells << html.GetRowItem();
  }
  EXPECT_EQ(cells, (QStringList{u"7"_s, u"《大学语文》"_s, u"9"_s, u"《高等数学》"_s}));
}

struct CutRow {
  const char* name;
  QString page;
  QString table;
};
void PrintTo(const CutRow& row, std::ostream* out) {
  *out << row.name;
}
class ParseResponseTable : public testing::TestWithParam<CutRow> {};

TEST_P(ParseResponseTable, CutsTheTableOut) {
  PortalState state;
  Inet inet;
  EXPECT_EQ(GetHtml(state, inet).ParseResponse(GetParam().page), GetParam().table);
}

const CutRow cutRows[] = {
    {"EmptyPage", u""_s, u""_s},
    {"NoMarkerNoTable", u"<html>404</html>"_s, u""_s},
    {"NoMarker", u"<table><tr><td>1</td></tr></table>"_s, u""_s},
    {"MarkerInCapitals", u"<table START_POS><tr><td>1</td></table>"_s, u""_s},
    {"MarkerInsideTheTag", u"x<table start_pos><tr></table>y"_s, u"start_pos><tr></table>"_s},
    {"ClosingTagInCapitals", u"start_pos<tr></TABLE>y"_s, u"start_pos<tr></TABLE>"_s},
    {"ClosingTagBeforeTheMarkerDoesNotCount", u"</table>start_pos </taBLe></table>"_s,
     u"start_pos </taBLe>"_s},
    {"FirstOfTwoMarkers", u"start_pos1start_pos2</table>"_s, u"start_pos1start_pos2</table>"_s},
};
INSTANTIATE_TEST_SUITE_P(ResponseReader, ParseResponseTable, testing::ValuesIn(cutRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ResponseReader, AMarkedAnswerWithoutClosingTagFails) {
  EXPECT_THROW(html.ParseResponse(u"page start_pos<tr><td>1</td></tr>"_s), InvalidCall);
}

TEST_F(ResponseReader, ATableLongerThanSixteenBitsIsCutOutWhole) {
  const auto page = u"start_pos"_s + QString(200'000, u'x') + u"</table>"_s;
  EXPECT_EQ(html.ParseResponse(page + u"tail"_s), page);
}

TEST_F(ResponseReader, AnAnswerWithoutMarkerYieldsNoRowsAndNoError) {
  state.gResponse = html.ParseResponse(u"<tr><td>1</td></tr></table>"_s);
  state.gResponse = html.GetRow(state.gResponse);
  EXPECT_TRUE(state.gResponse.isEmpty());
}

struct ForeignRow {
  const char* name;
  QString page;
  QString marker;
  qint16 tables;
  QString table;
};
void PrintTo(const ForeignRow& row, std::ostream* out) {
  *out << row.name;
}
class ParseResponse2Table : public testing::TestWithParam<ForeignRow> {};

TEST_P(ParseResponse2Table, CutsTheCountedTableOut) {
  PortalState state;
  Inet inet;
  const auto& row = GetParam();
  EXPECT_EQ(GetHtml(state, inet).ParseResponse2(row.page, row.marker, row.tables), row.table);
}

const ForeignRow foreignRows[] = {
    {"EmptyPage", u""_s, u"M"_s, 1, u""_s},
    {"EmptyPageAndMarker", u""_s, u""_s, 1, u""_s},
    {"NoMarker", u"<table a><tr></table>"_s, u"M"_s, 1, u""_s},
    {"MarkerInAnotherCase", u"m<table a><tr></table>"_s, u"M"_s, 1, u""_s},
    {"FirstTable", u"M<table a><tr></table>x"_s, u"M"_s, 1, u"><tr></table>"_s},
    {"TagInCapitals", u"M<TABLE a><tr></Table>x"_s, u"M"_s, 1, u"><tr></Table>"_s},
    {"EightIsPassedOverWhateverTheTag", u"M<table><tr></table>"_s, u"M"_s, 1, u"tr></table>"_s},
    {"TableBeforeTheMarkerDoesNotCount", u"<table a>M<table b><tr></table>"_s, u"M"_s, 1,
     u"><tr></table>"_s},
    {"SecondTable", u"M<table 1><table 2>two</table>"_s, u"M"_s, 2, u">two</table>"_s},
    {"NoTableCountedKeepsTheMarker", u"xM<tr></table>y"_s, u"M"_s, 0, u"M<tr></table>"_s},
    {"NegativeCountCountsNone", u"xM<tr></table>y"_s, u"M"_s, -3, u"M<tr></table>"_s},
    {"AMissingTableGoesOnAtTheEighthCharacter", u"1234567890M</table>y"_s, u"M"_s, 1,
     u"890M</table>"_s},
    {"TheSecondMissingGoesBackToTheEighth", u"M23456789<table x>a</table>"_s, u"M"_s, 2,
     u"89<table x>a</table>"_s},
};
INSTANTIATE_TEST_SUITE_P(ResponseReader, ParseResponse2Table, testing::ValuesIn(foreignRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ResponseReader, AForeignPageWithoutClosingTagFails) {
  EXPECT_THROW(html.ParseResponse2(u"some page M<table 1>"_s, u"M"_s, 1), InvalidCall);
  EXPECT_THROW(html.ParseResponse2(u"M<table"_s, u"M"_s, 1), InvalidCall);
}

TEST_F(ResponseReader, GetRowStaysOnARowOfWhichNothingWasRead) {
  const auto row = html.GetRow(QString(u"xx<tr><td>1</td><tr><td>2</td>"_s));
  EXPECT_EQ(row.text(), u"<tr><td>1</td><tr><td>2</td>"_s);
  EXPECT_EQ(html.GetRow(row).text(), row.text());
}

TEST_F(ResponseReader, TagsOfRowsAndCellsInCapitalsAreNone) {
  EXPECT_TRUE(html.GetRow(QString(u"<TR><tR><Tr>"_s)).isEmpty());
  EXPECT_THROW(cell(u"<TD>1</td><Td>1</td>"_s), InvalidCall);
  EXPECT_EQ(cell(u"<td>1</TD>"_s), u"1"_s);
  EXPECT_EQ(cell(u"<td>2</tD>"_s), u"2"_s);
}

struct CellRow {
  const char* name;
  QString answer;
  QString cell;
  QString left;
};
void PrintTo(const CellRow& row, std::ostream* out) {
  *out << row.name;
}
class CellTable : public testing::TestWithParam<CellRow> {};

TEST_P(CellTable, ReadsTheCellAndStaysAtItsClosingTag) {
  PortalState state;
  Inet inet;
  state.gResponse = GetParam().answer;
  EXPECT_EQ(GetHtml(state, inet).GetRowItem(), GetParam().cell);
  EXPECT_EQ(state.gResponse.text(), GetParam().left);
}

const CellRow cellRows[] = {
    {"Empty", u"<td></td>"_s, u""_s, u"</td>"_s},
    {"BlanksAround", u"<td>  abc  </td>x"_s, u"abc"_s, u"</td>x"_s},
    {"OnlyBlanks", u"<td>   </td>"_s, u""_s, u"</td>"_s},
    {"BlankInside", u"<td>a b</td>"_s, u"a b"_s, u"</td>"_s},
    {"LineBreakInside", u"<td>a\r\nb</td>"_s, u"a\r\nb"_s, u"</td>"_s},
    {"LineBreakAroundIsKept", u"<td> \r\na\t </td>"_s, u"\r\na\t"_s, u"</td>"_s},
    {"OtherSpacesAreKept", u"<td>\u3000a\u00A0</td>"_s, u"\u3000a\u00A0"_s, u"</td>"_s},
    {"Attributes", u"<td width=\"3\" nowrap>a</td>"_s, u"a"_s, u"</td>"_s},
    {"Link", u"<td><a href=\"x\">text</a></td>"_s, u"text"_s, u"</td>"_s},
    {"TagsInside", u"<td>a<b>b</b>c<i>d</i></td>"_s, u"abcd"_s, u"</td>"_s},
    {"EntitiesAreKept", u"<td>&nbsp;&amp;</td>"_s, u"&nbsp;&amp;"_s, u"</td>"_s},
    {"GreaterThanLosesTheRest", u"<td>a>b</td>"_s, u"a"_s, u"</td>"_s},
    {"GreaterThanIsMadeGoodByLessThan", u"<td>a>b<c</td>"_s, u"ac"_s, u"</td>"_s},
    {"LessThanLosesTheRest", u"<td>a<b</td>"_s, u"a"_s, u"</td>"_s},
    {"TagNeverClosed", u"<td abc</td>"_s, u""_s, u"</td>"_s},
    {"TextBeforeIsPassedOver", u"</td><tr>x<td>1</td>"_s, u"1"_s, u"</td>"_s},
    {"AnyTagThatBeginsAlikeOpens", u"<tdx>1</tdy>"_s, u"1"_s, u"</tdy>"_s},
    {"ClosingInsideTheOpeningTag", u"<td a='</td>'>1</td>"_s, u""_s, u"</td>'>1</td>"_s},
    {"Chinese", u"<td> 《大学语文》 </td>"_s, u"《大学语文》"_s, u"</td>"_s},
};
INSTANTIATE_TEST_SUITE_P(ResponseReader, CellTable, testing::ValuesIn(cellRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ResponseReader, ACellThatIsNotThereFails) {
  EXPECT_THROW(cell(u""_s), InvalidCall);
  EXPECT_THROW(cell(u"<tr></tr></table>"_s), InvalidCall);
  EXPECT_THROW(cell(u"<td>never closed"_s), InvalidCall);
  EXPECT_THROW(cell(u"<td"_s), InvalidCall);
  EXPECT_THROW(cell(u"<t"_s), InvalidCall);
  EXPECT_THROW(cell(u"<td></t"_s), InvalidCall);
}

TEST_F(ResponseReader, AFailureLeavesTheCursorWhereItWas) {
  EXPECT_THROW(cell(u"x<td>1"_s), InvalidCall);
  EXPECT_EQ(state.gResponse.text(), u"x<td>1"_s);
}

TEST_F(ResponseReader, ARowWithFewCellsTakesTheRestFromTheNextRow) {
  state.gResponse = QString(u"<tr><td>1</td></tr><tr><td>2</td></tr>"_s);
  EXPECT_EQ(html.GetRowItem(), u"1"_s);
  EXPECT_EQ(html.GetRowItem(), u"2"_s);
  EXPECT_THROW(html.GetRowItem(), InvalidCall);
}

TEST_F(ResponseReader, ReadingFewerCellsThanARowHasSkipsTheRest) {
  state.gResponse = QString(u"<tr><td>1</td><td>x</td></tr><tr><td>2</td><td>y</td></tr>"_s);
  state.gResponse = html.GetRow(state.gResponse);
  EXPECT_EQ(html.GetRowItem(), u"1"_s);
  state.gResponse = html.GetRow(state.gResponse);
  EXPECT_EQ(html.GetRowItem(), u"2"_s);
  EXPECT_TRUE(html.GetRow(state.gResponse).isEmpty());
}

TEST_F(ResponseReader, ARowMayBeginAtTheLastSixteenBitPositionAndNotBehindIt) {
  EXPECT_EQ(html.GetRow(blanks(32766) + u"<tr>"_s).text(), u"<tr>"_s);
  EXPECT_THROW(html.GetRow(blanks(32767) + u"<tr>"_s), Overflow);
  EXPECT_TRUE(html.GetRow(blanks(32767) + u"<TR>"_s).isEmpty());
}

TEST_F(ResponseReader, ACellMayEndAtTheLastSixteenBitPositionAndNotBehindIt) {
  const QString text(32762, u'a');
  EXPECT_EQ(cell(u"<td>"_s + text + u"</td>"_s), text);
  EXPECT_THROW(cell(u"<td>"_s + text + u"a</td>"_s), Overflow);
  EXPECT_THROW(cell(blanks(32767) + u"<td>1</td>"_s), Overflow);
  EXPECT_THROW(cell(blanks(32760) + u"<td>1234</td>"_s), Overflow);
}

TEST_F(ResponseReader, AFarCellWithoutEndFailsByItsMissingEnd) {
  EXPECT_THROW(cell(u"<td>"_s + QString(40000, u'a')), InvalidCall);
  EXPECT_THROW(cell(blanks(32767) + u"<td>never closed"_s), Overflow);
}

TEST_F(ResponseReader, LimitsCountFromTheCursorAndNotFromTheAnswersStart) {
  QString answer;
  for (int row = 0; row < 5; ++row)
    answer += u"<tr><td>"_s + QString(30000, QChar(u'a' + row)) + u"</td></tr>"_s;
  state.gResponse = answer;
  for (int row = 0; row < 5; ++row) {
    state.gResponse = html.GetRow(state.gResponse);
    EXPECT_EQ(html.GetRowItem(), QString(30000, QChar(u'a' + row)));
  }
}

TEST_F(ResponseReader, GetArrayNumbersColumnsAndRowsFromOne) {
  state.gResponse = QString(u"<tr><td>1</td><td>a</td><td>-</td><tr><td>2</td><td>b</td>"_s);
  const auto cells = html.GetARRAY(2);
  ASSERT_EQ(cells.size(), 3u);
  EXPECT_EQ(cells[0], (std::vector<QString>{u""_s, u""_s, u""_s}));
  EXPECT_EQ(cells[1], (std::vector<QString>{u""_s, u"1"_s, u"2"_s}));
  EXPECT_EQ(cells[2], (std::vector<QString>{u""_s, u"a"_s, u"b"_s}));
  EXPECT_TRUE(state.gResponse.isEmpty());
}

TEST_F(ResponseReader, GetArrayOfAnEmptyAnswerHasOnlyTheEmptyRow) {
  const auto cells = html.GetARRAY(3);
  ASSERT_EQ(cells.size(), 4u);
  for (const auto& column : cells) EXPECT_EQ(column, std::vector<QString>(1));
}

TEST_F(ResponseReader, GetArrayFailsOnAShortLastRowAndOnRowsOfNoColumns) {
  state.gResponse = QString(u"<tr><td>1</td><td>a</td><tr><td>2</td>"_s);
  EXPECT_THROW(html.GetARRAY(2), InvalidCall);
  state.gResponse = QString(u"<tr><td>1</td>"_s);
  EXPECT_THROW(html.GetARRAY(0), Overflow);
  EXPECT_THROW(html.GetARRAY(-1), InvalidCall);
}

TEST(ResponseCursor, CountsFromTheFrontAndStopsAtTheEnd) {
  const ResponseCursor cursor(u"abcdef"_s);
  EXPECT_EQ(cursor.from(2).text(), u"cdef"_s);
  EXPECT_EQ(cursor.from(2).from(3).text(), u"f"_s);
  EXPECT_TRUE(cursor.from(6).isEmpty());
  EXPECT_TRUE(cursor.from(600).isEmpty());
  EXPECT_EQ(cursor.from(600).length(), 0);
  EXPECT_EQ(cursor.from(-1).length(), 6);
  EXPECT_TRUE(ResponseCursor().from(1).isEmpty());
}

}  // namespace
