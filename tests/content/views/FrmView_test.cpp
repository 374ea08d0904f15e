#include "content/views/FrmView.h"

#include <gtest/gtest.h>

#include <QCursor>

#include "ViewFixture.h"
#include "values/code_page.h"

using namespace qinghe;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QList<QStringList> twoColumns = {{u"品名"_s, u"2400"_s}, {u"价格"_s, u"1200"_s}};

class FrmViewTest : public ViewFixture<FrmView> {
 protected:
  /// The portal lists one service for the foreign page, the page itself being `bytes`.
  void service(const QString& marker, const QString& tables, const QString& columns) {
    services_ = {{u"7"_s, u" 纸价 "_s, address(), marker, tables, columns}};
    portal.answerWith({page(services_), page(twoColumns)});
  }
  QString address() const { return u"http://"_s + foreign.host() + u"/price?d=今天"_s; }
  void shows(const QString& html) { foreign.answerWith({toCodePage(html)}); }

  ScriptedServer foreign;
  QList<QStringList> services_;
};

TEST_F(FrmViewTest, HasItsControlsAndFiveColumnsOfWhichTheFirstFillsTheList) {
  service(u"x"_s, u"0"_s, u"2"_s);
  EXPECT_EQ(screen().windowTitle(), u"即时信息"_s);
  EXPECT_EQ(screen().objectName(), u"FrmView"_s);
  for (const QString& name :
       {u"ListView1"_s, u"ListView2"_s, u"Splitter"_s, u"Toolbar1"_s, u"StatusBar1"_s}) {
    EXPECT_NE(screen().findChild<QWidget*>(name), nullptr) << name.toStdString();
  }
  ASSERT_EQ(services().model()->columnCount(), 5);
  for (int column = 0; column < 5; ++column) {
    EXPECT_EQ(services().model()->headerData(column, Qt::Horizontal).toString(), u"名称"_s);
  }
  EXPECT_EQ(services().columnWidth(0), services().width() - 4);
  EXPECT_EQ(screen().Toolbar1->button(u"Exit"_s)->text(), u"退出"_s);
}

TEST_F(FrmViewTest, LoadAsksForTheServicesInUseByteByByte) {
  service(u"x"_s, u"0"_s, u"2"_s);
  screen();
  ASSERT_EQ(portal.requests().size(), 1);
  EXPECT_TRUE(portal.requests()[0].startsWith(
      "GET /_vti_login/_vti_detail_field_s.asp?STABLE=%46%55%57%55&STRDATA="
      "%69%64%2C%66%75%77%75%2C%77%61%7A%68%2C%67%75%6A%69%2C%77%65%7A%68%2C%7A%69%64%75%2C"
      "&STOTHER=%6E%6F%74%68%3D%74%72%75%65 HTTP/1.1\r\n"))
      << portal.requests()[0].toStdString();
}

TEST_F(FrmViewTest, ServicesAreListedTrimmedUnderTheirIds) {
  service(u"  今日  "_s, u" 1 "_s, u" 2 "_s);
  ASSERT_EQ(services().itemCount(), 1);
  const ListItem* item = services().itemAt(0);
  EXPECT_EQ(item->key(), u"7 ID"_s);
  EXPECT_EQ(item->text(), u"纸价"_s);
  EXPECT_EQ(item->subItem(1), address());
  EXPECT_EQ(item->subItem(2), u"今日"_s);
  EXPECT_EQ(item->subItem(3), u"1"_s);
  EXPECT_EQ(item->subItem(4), u"2"_s);
  EXPECT_EQ(data().itemCount(), 0);
  EXPECT_EQ(portal.requests().size(), 1) << "nothing is fetched before a click";
}

TEST_F(FrmViewTest, AClickAsksForTheColumnsThenThePageAndShowsItsTable) {
  service(u"今日"_s, u"1"_s, u"2"_s);
  shows(
      u"<table>menu</table>今日<table>\n<tr><td>铜版纸</td><td>6150</td></tr>"
      "<tr><td>胶版纸</td><td> 5900 </td></tr></table><tr><td>behind</td></tr>"_s);
  clickService(0);
  ASSERT_EQ(portal.requests().size(), 2);
  EXPECT_EQ(targets()[1], rowsTarget(u"ZIDU"_s, u"bimi,chdu,"_s, u"FUWU_ID=7"_s));
  ASSERT_EQ(foreign.requests().size(), 1);
  EXPECT_TRUE(foreign.requests()[0].startsWith("GET /price?d=\xBD\xF1\xCC\xEC HTTP/1.1\r\n"));
  EXPECT_EQ(headers(), QStringList({u"品名"_s, u"价格"_s}));
  EXPECT_EQ(data().header()->length(), data().viewport()->width());
  data().setSpreadsColumns(false);
  EXPECT_EQ(data().columnWidth(0), 160);
  EXPECT_EQ(data().columnWidth(1), 80);
  ASSERT_EQ(data().itemCount(), 2);
  EXPECT_EQ(dataRow(0), QStringList({u"铜版纸"_s, u"6150"_s}));
  EXPECT_EQ(dataRow(1), QStringList({u"胶版纸"_s, u"5900"_s}));
  EXPECT_EQ(data().itemAt(0)->key(), QString());
  EXPECT_EQ(services().selectedItem(), services().itemAt(0));
}

TEST_F(FrmViewTest, EachClickFetchesThePageOfThatMoment) {
  service(u"今日"_s, u"0"_s, u"1"_s);
  foreign.answerWith({toCodePage(u"今日<tr><td>6150</td></tr></table>"_s),
                      toCodePage(u"今日<tr><td>6200</td></tr></table>"_s)});
  clickService(0);
  EXPECT_EQ(dataRow(0), QStringList{u"6150"_s});
  clickService(0);
  ASSERT_EQ(data().itemCount(), 1);
  EXPECT_EQ(dataRow(0), QStringList{u"6200"_s});
  EXPECT_EQ(headers().size(), 2) << "the columns are made anew";
}

struct PageCase {
  std::string name;
  QString page;
  QString tables;
  QString columns;
  QList<QStringList> rows;
};

class FrmViewPages : public FrmViewTest, public testing::WithParamInterface<PageCase> {};

TEST_P(FrmViewPages, GiveTheseRows) {
  const PageCase& given = GetParam();
  service(u"MARK"_s, given.tables, given.columns);
  shows(given.page);
  clickService(0);
  EXPECT_EQ(headers().size(), 2);
  QList<QStringList> rows;
  for (int row = 0; row < data().itemCount(); ++row) rows.append(dataRow(row));
  EXPECT_EQ(rows, given.rows);
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// A row of cells, as a page writes it.
QString tr(const QStringList& cells) {
  return u"<tr><td>"_s + cells.join(u"</td><td>"_s) + u"</td></tr>"_s;
}

const QString ab = tr({u"a"_s, u"b"_s});

INSTANTIATE_TEST_SUITE_P(
    Table, FrmViewPages,
    testing::Values(
        PageCase{"WithoutTheMarkerNone", ab + u"</table>"_s, u"0"_s, u"2"_s, {}},
        PageCase{
            "TheMarkerIsFoundWithItsCaseOnly", u"mark"_s + ab + u"</table>"_s, u"0"_s, u"2"_s, {}},
        PageCase{"AnEmptyPageNone", {}, u"0"_s, u"2"_s, {}},
        PageCase{"WithoutTheEndOfATableNone", u"MARK"_s + ab, u"0"_s, u"2"_s, {}},
        PageCase{"TheEndOfATableInCapitalsCounts",
                 u"MARK"_s + ab + u"</TABLE>"_s + ab,
                 u"0"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}}},
        PageCase{"SoManyTablesArePassed",
                 u"MARK<table>"_s + tr({u"1"_s, u"2"_s}) + u"</table><TABLE border=0>"_s + ab +
                     u"</table>"_s,
                 u"2"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}}},
        PageCase{"WithZeroTablesTheMarkerItselfStandsInFront",
                 u"MARK"_s + ab + u"</table><table>"_s,
                 u"0"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}}},
        PageCase{"ATableThatIsNotThereCountsAsFoundInFrontOfThePage",
                 u"<tr>....MARK<td>a</td><td>b</td></tr></table>"_s,
                 u"1"_s,
                 u"2"_s,
                 {}},
        PageCase{"SoTheReadingGoesOnAtTheEighthCharacter",
                 u"1234567"_s + tr({u"c"_s, u"d"_s}) + u"MARK"_s + ab + u"</table>"_s,
                 u"1"_s,
                 u"2"_s,
                 {{u"c"_s, u"d"_s}, {u"a"_s, u"b"_s}}},
        PageCase{"ATableThatIsNotThereMaySendTheNextToTheFirst",
                 u"12345678<table>\n"_s + tr({u"c"_s, u"d"_s}) + u"</table>MARK</table>"_s,
                 u"2"_s,
                 u"2"_s,
                 {{u"c"_s, u"d"_s}}},
        PageCase{"OneCharacterBehindThePlainTagIsSkippedWhateverItIs",
                 u"MARK<table>"_s + ab + tr({u"c"_s, u"d"_s}) + u"</table>"_s,
                 u"1"_s,
                 u"2"_s,
                 {{u"c"_s, u"d"_s}}},
        PageCase{"SoALineEndThereCostsNothing",
                 u"MARK<table>\n"_s + ab + tr({u"c"_s, u"d"_s}) + u"</table>"_s,
                 u"1"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}, {u"c"_s, u"d"_s}}},
        PageCase{"ARowThatBeginsWithinTheEightIsLost",
                 u"MARK<table"_s + u"x"_s + tr({u"1"_s, u"2"_s}) + ab + u"</table>"_s,
                 u"1"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}}},
        PageCase{"MissingCellsComeFromTheNextRow",
                 u"MARK"_s + tr({u"a"_s}) + tr({u"b"_s}) + tr({u"c"_s, u"d"_s}) + u"</table>"_s,
                 u"0"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}, {u"c"_s, u"d"_s}}},
        PageCase{"ALastRowThatFailsGivesNoRowsAtAll",
                 u"MARK"_s + ab + tr({u"c"_s}) + u"</table>"_s,
                 u"0"_s,
                 u"2"_s,
                 {}},
        PageCase{"MoreCellsThanAskedForAreSkipped",
                 u"MARK"_s + tr({u"a"_s, u"b"_s, u"x"_s}) + ab + u"</table>"_s,
                 u"0"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}, {u"a"_s, u"b"_s}}},
        PageCase{"CellsBeyondTheHeadersAreKept",
                 u"MARK"_s + tr({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}) + u"</table>"_s,
                 u"0"_s,
                 u"5"_s,
                 {{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}}},
        PageCase{"OneColumnGivesTheTextAlone",
                 u"MARK"_s + ab + u"</table>"_s,
                 u"0"_s,
                 u"1"_s,
                 {{u"a"_s}}},
        PageCase{
            "LinksAndFontsGiveTheirText",
            u"MARK<tr><td align=left><a href='x'>a</a></td><td><font>b</font> c</TD></table>"_s,
            u"0"_s,
            u"2"_s,
            {{u"a"_s, u"b c"_s}}},
        PageCase{"RowsInCapitalsAreNone",
                 u"MARK<TR><TD>a</TD><TD>b</TD></TR></table>"_s,
                 u"0"_s,
                 u"2"_s,
                 {}},
        PageCase{"LineBreaksInACellStay",
                 u"MARK<tr><td>a<br>c</td><td>b</td></table>"_s,
                 u"0"_s,
                 u"2"_s,
                 {{u"a\r\nc"_s, u"b"_s}}},
        PageCase{"NoColumnsNone", u"MARK"_s + ab + u"</table>"_s, u"0"_s, u"0"_s, {}},
        PageCase{"AColumnCountBelowZeroNone", u"MARK"_s + ab + u"</table>"_s, u"0"_s, u"-2"_s, {}},
        PageCase{
            "AColumnCountThatIsNoNumberNone", u"MARK"_s + ab + u"</table>"_s, u"0"_s, u"二"_s, {}},
        PageCase{"ATableCountBeyondSixteenBitsNone",
                 u"MARK"_s + ab + u"</table>"_s,
                 u"40000"_s,
                 u"2"_s,
                 {}},
        PageCase{"ATableCountThatIsEmptyNone", u"MARK"_s + ab + u"</table>"_s, {}, u"2"_s, {}},
        PageCase{"ATableCountBelowZeroPassesNone",
                 u"MARK"_s + ab + u"</table>"_s,
                 u"-1"_s,
                 u"2"_s,
                 {{u"a"_s, u"b"_s}}},
        PageCase{"ACellBeyondTheReadersReachGivesNoRows",
                 u"MARK"_s + ab + tr({QString(33000, u'x'), u"y"_s}) + u"</table>"_s,
                 u"0"_s,
                 u"2"_s,
                 {}}),
    [](const auto& parameters) { return parameters.param.name; });

TEST_F(FrmViewTest, AServiceWithoutColumnsGivesRowsWithNoHeadersToShowThem) {
  portal.answerWith({page({{u"7"_s, u"纸价"_s, address(), u"今日"_s, u"0"_s, u"2"_s}}), page({})});
  shows(u"今日"_s + ab + ab + u"</table>"_s);
  clickService(0);
  EXPECT_TRUE(headers().isEmpty());
  ASSERT_EQ(data().itemCount(), 2);
  EXPECT_EQ(dataRow(1), QStringList({u"a"_s, u"b"_s}));
  EXPECT_FALSE(data().grab().isNull());
}

TEST_F(FrmViewTest, ColumnWidthsAreTheNumbersInFrontWithinAScreen) {
  portal.answerWith(
      {page({{u"7"_s, u"纸价"_s, address(), u"今日"_s, u"0"_s, u"1"_s}}),
       page({{u"a"_s, u"300twips"_s}, {u"b"_s, u""_s}, {u"c"_s, u"-50"_s}, {u"d"_s, u"1e300"_s}})});
  clickService(0);
  EXPECT_EQ(headers(), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
  data().setSpreadsColumns(false);
  EXPECT_EQ(data().columnWidth(0), 20);
  EXPECT_EQ(data().columnWidth(1), 0);
  EXPECT_EQ(data().columnWidth(2), 0);
  EXPECT_LE(data().columnWidth(3), 4000);
}

TEST_F(FrmViewTest, AClickOnAnotherServiceReplacesColumnsAndRows) {
  portal.answerWith({page({{u"7"_s, u"纸价"_s, address(), u"今日"_s, u"0"_s, u"2"_s},
                           {u"8"_s, u"汇率"_s, address(), u"昨日"_s, u"0"_s, u"1"_s}}),
                     page(twoColumns), page({{u"币种"_s, u"900"_s}})});
  shows(u"今日"_s + ab + u"</table>昨日"_s + tr({u"美元"_s}) + u"</table>"_s);
  clickService(0);
  clickService(1);
  EXPECT_EQ(targets()[2], rowsTarget(u"ZIDU"_s, u"bimi,chdu,"_s, u"FUWU_ID=8"_s));
  EXPECT_EQ(headers(), QStringList{u"币种"_s});
  ASSERT_EQ(data().itemCount(), 1);
  EXPECT_EQ(dataRow(0), QStringList{u"美元"_s});
}

TEST_F(FrmViewTest, InMixedModeThePageComesThroughTheRelay) {
  service(u"今日"_s, u"0"_s, u"2"_s);
  state.gUnicode = 1;
  portal.answerWith(
      {page(services_), page(twoColumns), toCodePage(u"今日"_s + ab + u"</table>"_s)});
  clickService(0);
  ASSERT_EQ(targets().size(), 3);
  EXPECT_EQ(targets()[2], u"/_vti_comm/review.asp?review="_s + UrlEncodeField(address()));
  EXPECT_TRUE(foreign.requests().isEmpty());
  EXPECT_EQ(dataRow(0), QStringList({u"a"_s, u"b"_s}));
}

TEST_F(FrmViewTest, InTheSlowModeNothingIsFetched) {
  state.gUnicode = 0;
  EXPECT_EQ(services().itemCount(), 0);
  EXPECT_EQ(services().model()->columnCount(), 5);
  EXPECT_EQ(portal.connectionCount(), 0);
}

TEST_F(FrmViewTest, APageIsReadInTheCharsetThatItDeclaresAndInTheCodePageWithoutOne) {
  service(u"今日"_s, u"0"_s, u"1"_s);
  const QString table = u"今日"_s + tr({u"铜版纸"_s}) + u"</table>"_s;
  struct Served {
    QByteArray type, page;
  };
  const QList<Served> pages = {{"text/html", "<meta charset=utf-8>" + table.toUtf8()},
                               {"text/html; charset=UTF-8", table.toUtf8()},
                               {"text/html", toCodePage(table)}};
  for (const Served& served : pages) {
    const QByteArray wire = "HTTP/1.1 200 OK\r\nContent-Type: " + served.type +
                            "\r\nContent-Length: " + QByteArray::number(served.page.size()) +
                            "\r\n\r\n" + served.page;
    foreign.setHandler([wire](const QByteArray&) { return ScriptedServer::Reply{.bytes = wire}; });
    clickService(0);
    EXPECT_EQ(dataRow(0), QStringList{u"铜版纸"_s}) << served.page.toStdString();
  }
}

TEST_F(FrmViewTest, AFailedPageLeavesTheColumnsWithoutRowsAndWithoutAMessage) {
  service(u"今日"_s, u"0"_s, u"2"_s);
  const QList<ScriptedServer::Reply> replies = {
      {.reset = true},
      {.hang = true},
      {.bytes = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone"},
      {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\nshort", .keepAlive = false}};
  for (const auto& reply : replies) {
    shows(u"今日"_s + ab + u"</table>"_s);
    clickService(0);
    ASSERT_EQ(data().itemCount(), 1);
    foreign.setHandler([reply](const QByteArray&) { return reply; });
    // Silence alone needs a short limit. The columns must come within it, too, for which a busy
    // machine gets a longer one.
    const auto patience = state.inetQuotes.timeLimit;
    for (auto limit = reply.hang ? 300ms : patience; limit <= patience; limit *= 4) {
      state.inetQuotes.timeLimit = limit;
      clickService(0);
      if (headers().size() == 2) break;
    }
    state.inetQuotes.timeLimit = patience;
    EXPECT_EQ(headers().size(), 2);
    EXPECT_EQ(data().itemCount(), 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_EQ(screen().StatusBar1->text(), QString());
}

TEST_F(FrmViewTest, AnAddressThatIsNoneLeavesTheColumnsWithoutRows) {
  for (const QString& wazh : {u""_s, u"ftp://x/"_s, u"file:///etc/passwd"_s, u"今日"_s}) {
    unload<FrmView>();
    portal.answerWith(
        {page({{u"7"_s, u"纸价"_s, wazh, u"root"_s, u"0"_s, u"1"_s}}), page(twoColumns)});
    clickService(0);
    EXPECT_EQ(headers().size(), 2) << wazh.toStdString();
    EXPECT_EQ(data().itemCount(), 0) << wazh.toStdString();
  }
}

TEST_F(FrmViewTest, WithoutAnAnswerForTheColumnsThePageIsStillRead) {
  portal.answerWith({page({{u"7"_s, u"纸价"_s, address(), u"今日"_s, u"0"_s, u"2"_s}}),
                     "<html>no marker</html>"});
  shows(u"今日"_s + ab + u"</table>"_s);
  clickService(0);
  EXPECT_TRUE(headers().isEmpty());
  EXPECT_EQ(data().itemCount(), 1);
}

TEST_F(FrmViewTest, APortalThatIsDownLeavesAnEmptyScreenThatCanBeLeft) {
  portal.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.reset = true}; });
  EXPECT_EQ(services().itemCount(), 0);
  EXPECT_EQ(services().model()->columnCount(), 5);
  QTest::mouseClick(services().viewport(), Qt::LeftButton);
  EXPECT_EQ(portal.requests().size(), 1);
  QTest::mouseClick(screen().Toolbar1->widgetForAction(screen().Toolbar1->button(u"Exit"_s)),
                    Qt::LeftButton);
  EXPECT_FALSE(isLoaded<FrmView>());
}

TEST_F(FrmViewTest, TheHourglassIsOnDuringEachRequestAndOffBehindIt) {
  service(u"今日"_s, u"0"_s, u"2"_s);
  shows(u"今日"_s + ab + u"</table>"_s);
  QList<bool> busy;
  const auto onBlocking = state.inetQuotes.onBlocking;
  state.inetQuotes.onBlocking = [&](bool blocks) {
    if (blocks) {
      const QCursor* cursor = QApplication::overrideCursor();
      busy.append(cursor != nullptr && cursor->shape() == Qt::WaitCursor);
    }
    if (onBlocking) onBlocking(blocks);
  };
  clickService(0);
  EXPECT_EQ(busy, QList<bool>({true, true, true}));
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FrmViewTest, NoLinkIsAskedFor) {
  service(u"今日"_s, u"0"_s, u"2"_s);
  shows(u"今日"_s + ab + u"</table>"_s);
  goOffline();
  clickService(0);
  EXPECT_EQ(data().itemCount(), 1);
  EXPECT_TRUE(links->asked.isEmpty());
}

TEST_F(FrmViewTest, TheBarKeepsBothPanesAndTheFirstColumnFollowsIt) {
  service(u"x"_s, u"0"_s, u"2"_s);
  dragBarTo(400);
  EXPECT_EQ(services().columnWidth(0), services().width() - 4);
  EXPECT_NEAR(services().width(), 400, 6);
  dragBarTo(3);
  EXPECT_NEAR(services().width(), 42, 4);
}

TEST_F(FrmViewTest, TheArrowKeysReadTheServiceThatTheyReach) {
  portal.answerWith({page({{u"7"_s, u"纸价"_s, address(), u"今日"_s, u"0"_s, u"2"_s},
                           {u"8"_s, u"汇率"_s, address(), u"今日"_s, u"0"_s, u"2"_s}}),
                     page(twoColumns)});
  services().setFocus();
  QTest::keyClick(&services(), Qt::Key_Down);
  EXPECT_EQ(targets().last(), rowsTarget(u"ZIDU"_s, u"bimi,chdu,"_s, u"FUWU_ID=8"_s));
}

}  // namespace
