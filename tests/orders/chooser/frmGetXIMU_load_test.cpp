#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTimer>

#include "ChooserFixture.h"
#include "portal/RequestBuilder.h"
#include "shell/modal.h"
#include "support/cpu_time.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

using GoodsChooser = ChooserFixture;

TEST_F(GoodsChooser, LoadAsksTheCountFirstAndThenTheFirstPage) {
  offerOnePage();
  screen();
  EXPECT_EQ(targets(), (QStringList{countTarget(), pageTarget(1)}));
}

TEST_F(GoodsChooser, TheRequestsGoOutByteByByte) {
  offerOnePage();
  state.gPartnerId = 7;
  screen();
  EXPECT_EQ(portal.requestTargets(),
            (QList<QByteArray>{
                "/_vti_product/_vti_detail_page.asp?STABLE=%58%49%4D%55"
                "&STOTHER=%6E%6F%74%68%3D%74%72%75%65%20%61%6E%64%20%71%69%79%65%5F%69%64%3D%37"
                "&STPAGESIZE=%32",
                "/_vti_product/_vti_detail_onepage.asp?STABLE=%58%49%4D%55"
                "&STRDATA=%69%64%2C%78%69%6D%75%2C%6C%65%62%69%2C%6A%69%67%65%78%2C%7A%68%6B%6F%2C"
                "%67%65%73%68%2C%78%69%6D%75%5F%62%68%2C%78%69%6D%75%5F%6E%6F%2C"
                "&STOTHER=%6E%6F%74%68%3D%74%72%75%65%20%61%6E%64%20%71%69%79%65%5F%69%64%3D%37"
                "&STPAGE=%31&STPAGESIZE=%32&STORDER=%4E%4F%54%48%2C%49%44"}));
}

TEST_F(GoodsChooser, HasItsCaptionColumnsAndButtons) {
  offerOnePage();
  EXPECT_EQ(screen().windowTitle(), u"选择商品"_s);
  const QList<std::pair<QString, int>> columns = {
      {u"书名"_s, 3600}, {u"类别"_s, 1400}, {u"数量"_s, 1000},
      {u"价格"_s, 1000}, {u"折扣"_s, 1000}, {u"折扣说明"_s, 2000},
      {u"个数"_s, 0},    {u"编号"_s, 1500}, {u"书号"_s, 1500}};
  ASSERT_EQ(list().model()->columnCount(), columns.size());
  EXPECT_EQ(list().header()->length(), list().viewport()->width());
  list().setSpreadsColumns(false);
  for (int column = 0; column < columns.size(); ++column) {
    EXPECT_EQ(list().model()->headerData(column, Qt::Horizontal).toString(), columns[column].first);
    EXPECT_EQ(list().columnWidth(column), columns[column].second / 15) << column;
  }
  EXPECT_TRUE(list().hasCheckBoxes());
  EXPECT_EQ(screen().command1->text(), u"搜索(&S)"_s);
  EXPECT_FALSE(screen().CheckOK->isVisible());
  for (const auto& name :
       {u"ListView1"_s, u"Text1"_s, u"command1"_s, u"Command2"_s, u"commandC"_s, u"commandT"_s,
        u"CheckOK"_s, u"Toolbar1"_s, u"TxtInputSL"_s, u"TxtInputJG"_s, u"TxtInputZK"_s}) {
    EXPECT_NE(screen().findChild<QWidget*>(name), nullptr) << name.toStdString();
  }
}

TEST_F(GoodsChooser, ARowHoldsTheGoodsWithQuantityNothingAndFactorOne) {
  offerOnePage();
  ASSERT_EQ(list().itemCount(), 3);
  EXPECT_EQ(row(0).key(), u"7 ID"_s);
  EXPECT_EQ(row(0).icon(), u"Ximu"_s);
  EXPECT_EQ(row(0).tag(), u"1"_s);
  EXPECT_FALSE(row(0).isChecked());
  EXPECT_EQ(cells(row(0)), (QStringList{u"大学语文"_s, u"文学"_s, u"0"_s, u"12.5"_s, u"1"_s,
                                        u"满百册八折"_s, u"12"_s, u"B7"_s, u"978-7-7"_s}));
}

TEST_F(GoodsChooser, ASupplierWithoutGoodsGivesAnEmptyListAndNoButtonForMore) {
  portal.answerWith({count(u"0"_s), page({})});
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_FALSE(screen().Command2->isVisible());
  EXPECT_EQ(boxes->texts(), QStringList{});
}

TEST_F(GoodsChooser, OnePageNeedsNoButtonForMore) {
  offerOnePage();
  EXPECT_FALSE(screen().Command2->isVisible());
}

TEST_F(GoodsChooser, EachClickAppendsAPageAndOneBehindTheLastHidesTheButton) {
  portal.answerWith({count(u"3"_s), page({goods(u"1"_s, u"一"_s), goods(u"2"_s, u"二"_s)}),
                     page({goods(u"3"_s, u"三"_s), goods(u"4"_s, u"四"_s)}),
                     page({goods(u"5"_s, u"五"_s)})});
  auto* more = screen().Command2;
  EXPECT_TRUE(more->isVisible());
  EXPECT_EQ(more->text(), u"33%"_s);
  EXPECT_FALSE(more->icon().isNull());
  EXPECT_EQ(more->toolTip(), u"下一页"_s) << "what the number is about";
  EXPECT_EQ(more->accessibleName(), u"下一页"_s);
  enter(0, ChosenQuantity, u"6"_s);

  click(more);
  EXPECT_EQ(more->text(), u"66%"_s);
  EXPECT_EQ(names(), (QStringList{u"一"_s, u"二"_s, u"三"_s, u"四"_s}));
  EXPECT_EQ(row(0).subItem(ChosenQuantity), u"6"_s) << "what was typed stays";
  EXPECT_EQ(row(2).tag(), u"2"_s);

  click(more);
  EXPECT_EQ(more->text(), u"100%"_s);
  EXPECT_EQ(list().itemCount(), 5);
  EXPECT_TRUE(more->isVisible()) << "the last page leaves it for one more click";

  click(more);
  EXPECT_FALSE(more->isVisible());
  EXPECT_EQ(targets(), (QStringList{countTarget(), pageTarget(1), pageTarget(2), pageTarget(3)}));
}

TEST_F(GoodsChooser, WithoutALinkNoFurtherPageIsAskedFor) {
  portal.answerWith({count(u"3"_s), page({goods(u"1"_s, u"一"_s)})});
  screen();
  goOffline();
  click(screen().Command2);
  EXPECT_EQ(screen().Command2->text(), u"33%"_s);
  EXPECT_EQ(portal.requests().size(), 2);
}

TEST_F(GoodsChooser, TheLastRowOfACountGivesIt) {
  portal.answerWith({page({{u"5"_s}, {u"2"_s}}), page({goods(u"1"_s, u"一"_s)})});
  EXPECT_EQ(screen().Command2->text(), u"50%"_s);
}

TEST_F(GoodsChooser, AFailedCountStillLoadsTheFirstPage) {
  portal.answerWith({"<html>gone</html>", page({goods(u"1"_s, u"一"_s)})});
  EXPECT_EQ(list().itemCount(), 1);
  EXPECT_FALSE(screen().Command2->isVisible());
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(GoodsChooser, APageThatBreaksOffKeepsTheRowsThatCameWhole) {
  QByteArray broken = page({goods(u"1"_s, u"一"_s), goods(u"2"_s, u"二"_s)});
  broken.replace("978-7-2</td>", "978-7-2");
  portal.answerWith({count(u"1"_s), broken});
  EXPECT_EQ(names(), (QStringList{u"一"_s}));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(boxes->texts(), QStringList{});
}

TEST_F(GoodsChooser, APortalThatIsGoneGivesAnEmptyListWithoutAWord) {
  portal.setHandler([](const QByteArray&) {
    ScriptedServer::Reply reply;
    reply.reset = true;
    return reply;
  });
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_FALSE(screen().Command2->isVisible());
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(GoodsChooser, ACountBeyondAnyNumberIsNone) {
  portal.answerWith({count(u"99999999999"_s), page({goods(u"1"_s, u"一"_s)})});
  EXPECT_FALSE(screen().Command2->isVisible());
  EXPECT_EQ(list().itemCount(), 1);
}

TEST_F(GoodsChooser, InRelayModeTheWholeAddressIsTheRelaysParameter) {
  state.gUnicode = 1;
  offerOnePage();
  screen();
  const auto relayed = [this](const QString& target) {
    return u"/_vti_comm/review.asp?review="_s +
           UrlEncodeField(u"HTTP://"_s + portal.host() + target);
  };
  EXPECT_EQ(targets(), (QStringList{relayed(countTarget()), relayed(pageTarget(1))}));
  EXPECT_EQ(list().itemCount(), 3);
}

TEST_F(GoodsChooser, InPostModeItAsksTwiceForWhatThePortalRemembers) {
  state.gUnicode = 0;
  // The second answer of each pair counts.
  portal.answerWith({count(u"9"_s), count(u"1"_s), page({goods(u"1"_s, u"一"_s)}),
                     page({goods(u"2"_s, u"二"_s)})});
  EXPECT_EQ(names(), (QStringList{u"二"_s}));
  EXPECT_FALSE(screen().Command2->isVisible());
  const QString close = u"/_vti_comm/close.asp?url_no=login_qy"_s;
  EXPECT_EQ(targets(), (QStringList{close, close, close, close}));
}

TEST_F(GoodsChooser, AnyOtherModeAsksForNothing) {
  state.gUnicode = 3;
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_EQ(portal.requests().size(), 0);
}

TEST_F(GoodsChooser, ItsOwnFetchLeavesTheMarksOfLineBreaksInPlace) {
  auto broken = goods(u"1"_s, u"上册<br>下册"_s);
  broken[4] = u"&lt;八折&gt;"_s;
  portal.answerWith({count(u"1"_s), page({broken})});
  EXPECT_EQ(row(0).text(), u"上册下册"_s) << "a tag like any other";
  EXPECT_EQ(row(0).subItem(ChosenNote), u"&lt;八折&gt;"_s);
}

TEST_F(GoodsChooser, ActivationMarksTheGoodsOfTheOrder) {
  offerOnePage();
  auto& form = defaultInstance<frmGetXIMU>();
  form.mOrderIdList = u",17,7,"_s;
  screen();
  EXPECT_TRUE(row(0).isChecked());
  EXPECT_FALSE(row(1).isChecked());
  EXPECT_TRUE(row(2).isChecked());
}

TEST_F(GoodsChooser, AnIdWithinAnotherIsNoMark) {
  offerOnePage();
  auto& form = defaultInstance<frmGetXIMU>();
  form.mOrderIdList = u",107,99,"_s;
  screen();
  for (int index = 0; index < 3; ++index) EXPECT_FALSE(row(index).isChecked());
}

TEST_F(GoodsChooser, AHundredThousandGoodsAreMarkedAgainstAsManyLines) {
  QByteArray rows("<table start_pos>");
  QString onTheOrder = u","_s;
  for (int id = 1; id <= 100'000; ++id) {
    rows += "<tr><td>" + QByteArray::number(id) +
            "</td><td>n</td><td>l</td><td>1</td><td></td><td>0</td><td>b</td><td>i</td></tr>";
    onTheOrder += QString::number(2 * id) + u',';
  }
  portal.answerWith({count(u"1"_s), rows + "</table>"});
  const double begun = workedMilliseconds();
  auto& form = defaultInstance<frmGetXIMU>();
  ASSERT_EQ(form.ListView1->itemCount(), 100'000);
  const double loaded = workedMilliseconds();
  form.mOrderIdList = onTheOrder;
  screen();
  EXPECT_FALSE(row(0).isChecked());
  EXPECT_TRUE(row(99'999).isChecked());
  // Not the product of both: that would be minutes.
  EXPECT_LT(workedMilliseconds() - loaded, std::max(3 * (loaded - begun), 3000.0));
}

TEST_F(GoodsChooser, ActivationNeverTakesAMarkAway) {
  offerOnePage();
  screen();
  enter(1, ChosenQuantity, u"3"_s);
  ASSERT_TRUE(row(1).isChecked());
  screen().hideForm();
  defaultInstance<frmGetXIMU>().mOrderIdList = u",7,"_s;
  screen();
  EXPECT_TRUE(row(0).isChecked());
  EXPECT_TRUE(row(1).isChecked());
}

TEST_F(GoodsChooser, ThePageSizeIsTheOneOfItsLoad) {
  portal.answerWith(
      {count(u"2"_s), page({goods(u"1"_s, u"一"_s)}), page({goods(u"2"_s, u"二"_s)})});
  screen();
  state.gPageSize = 50;
  click(screen().Command2);
  EXPECT_EQ(targets().last(), pageTarget(2));
}

TEST_F(GoodsChooser, OpenedForAnotherSupplierItStillShowsTheFirstOnesGoods) {
  offerOnePage();
  screen();
  click(screen().commandT);
  state.gPartnerId = 77;
  EXPECT_EQ(names().first(), u"大学语文"_s);
  EXPECT_EQ(portal.requests().size(), 2) << "it is not loaded anew";
}

TEST_F(GoodsChooser, AfterExitTheNextUseLoadsThePartnerOfThatMoment) {
  offerOnePage();
  screen();
  pressExit();
  EXPECT_FALSE(isLoaded<frmGetXIMU>());
  state.gPartnerId = 77;
  portal.answerWith({count(u"1"_s), page({goods(u"5"_s, u"另一家"_s)})});
  EXPECT_EQ(names(), (QStringList{u"另一家"_s}));
  EXPECT_EQ(targets()[2], countTarget(u"2"_s, u"77"_s));
}

TEST_F(GoodsChooser, ExitNeedsALink) {
  offerOnePage();
  screen();
  goOffline();
  pressExit();
  EXPECT_TRUE(isLoaded<frmGetXIMU>());
  EXPECT_TRUE(screen().isVisible());
}

}  // namespace
