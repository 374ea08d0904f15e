#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

#include "PortalGoodsFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PortalGoodsList : public PortalGoodsFixture {
 protected:
  static QByteArray countTarget(const QString& size) {
    return targetOf(
        "_vti_detail_page.asp",
        {{u"STABLE"_s, u"XIMU"_s}, {u"STOTHER"_s, u"QIYE_ID=25"_s}, {u"STPAGESIZE"_s, size}});
  }
  static QByteArray pageTarget(const QString& page, const QString& size) {
    return targetOf("_vti_detail_onepage.asp", {{u"STABLE"_s, u"XIMU"_s},
                                                {u"STRDATA"_s, u"id,ximu,diji,noth,"_s},
                                                {u"STOTHER"_s, u"QIYE_ID=25"_s},
                                                {u"STPAGE"_s, page},
                                                {u"STPAGESIZE"_s, size},
                                                {u"STORDER"_s, u"NOTH,ID"_s}});
  }
  static QByteArray onePage(int number) {
    return page({{QString::number(number), u"书%1"_s.arg(number), u"0"_s, u"True"_s}});
  }
  QPushButton& nextPage() { return *screen().Command5; }
  void pressNextPage() { QTest::mouseClick(&nextPage(), Qt::LeftButton); }
};

TEST_F(PortalGoodsList, LoadAsksForThePageCountAndTheFirstPage) {
  state.gPageSize = 12;
  portal.answerWith({page({{u"1"_s}}), page(twoGoods())});
  screen();
  EXPECT_EQ(portal.requestTargets(),
            QList<QByteArray>({countTarget(u"12"_s), pageTarget(u"1"_s, u"12"_s)}));
  EXPECT_EQ(list().itemAt(0)->tag(), u"1"_s);
  EXPECT_FALSE(nextPage().isVisible()) << "there is one page";
}

TEST_F(PortalGoodsList, HasItsLabelsAndTheSearchBoxThatNothingReads) {
  open(twoGoods());
  const QStringList labels = {u"行    业"_s, u"编    号"_s, u"名    称"_s, u"价    格"_s,
                              u"折    扣"_s, u"个 /  包"_s, u"类    别"_s, u"品    牌"_s};
  for (int index = 0; index < labels.size(); ++index) {
    auto* label = screen().findChild<QLabel*>(u"LabelXM(%1)"_s.arg(index));
    ASSERT_NE(label, nullptr) << index;
    EXPECT_EQ(label->text(), labels[index]);
  }
  EXPECT_EQ(screen().findChild<QLabel*>(u"LabelXM(8)"_s), nullptr);
  const auto* search = screen().findChild<QLineEdit*>(u"txtSelect.editor"_s);
  ASSERT_NE(search, nullptr);
  EXPECT_EQ(search->placeholderText(), u"查找"_s);
  EXPECT_TRUE(screen().txtFields(0)->isReadOnly());
  EXPECT_EQ(screen().txtFields(11), nullptr);
}

TEST_F(PortalGoodsList, EachControlLiesOnItsTab) {
  open(twoGoods());
  const auto tabOf = [this](QWidget* control) {
    for (int tab = 0; tab < 4; ++tab) {
      if (screen().SSTab1->widget(tab)->isAncestorOf(control)) return tab;
    }
    return -1;
  };
  for (const int index : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
    EXPECT_EQ(tabOf(screen().txtFields(index)), 0) << index;
  }
  for (const QString& name : {u"Command1"_s, u"Command2"_s, u"Command3"_s}) {
    EXPECT_EQ(tabOf(command(name)), 0);
  }
  EXPECT_EQ(tabOf(screen().txtFields(8)), 1);
  EXPECT_EQ(tabOf(screen().findChild<QWidget*>(u"WebBrowserPICT"_s)), 2);
  EXPECT_EQ(tabOf(screen().txtFields(10)), 3);
}

TEST_F(PortalGoodsList, TheArrowButtonsHaveAnArrowAndANameForScreenReaders) {
  open(twoGoods());
  const QList<QStringList> names = {{u"Command1"_s, u"选择类别"_s}, {u"Command2"_s, u"选择品牌"_s}};
  for (const QStringList& name : names) {
    EXPECT_FALSE(command(name[0])->icon().isNull());
    EXPECT_EQ(command(name[0])->text(), QString());
    EXPECT_EQ(command(name[0])->accessibleName(), name[1]);
  }
  EXPECT_EQ(command(u"Command3"_s)->text(), u"其它"_s);
  EXPECT_FALSE(nextPage().icon().isNull());
  EXPECT_EQ(nextPage().accessibleName(), u"下一页"_s);
}

TEST_F(PortalGoodsList, TheFieldsAreWalkedAsTheyStand) {
  open(twoGoods());
  QStringList walked;
  QWidget* at = screen().txtFields(1)->editor();
  at->setFocus();
  for (int step = 0; step < 10; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    walked.append(QApplication::focusWidget()->objectName().remove(u".editor"_s));
    if (step == 0) {
      screen().txtFields(3)->setText(u"1"_s);  // or the price would not be left
      screen().txtFields(5)->setText(u"1"_s);
    }
  }
  EXPECT_EQ(walked.mid(0, 9), QStringList({u"txtFields(2)"_s, u"txtFields(3)"_s, u"txtFields(4)"_s,
                                           u"txtFields(5)"_s, u"txtFields(6)"_s, u"Command1"_s,
                                           u"txtFields(7)"_s, u"Command2"_s, u"txtFields(9)"_s}));
}

TEST_F(PortalGoodsList, EachPageIsAppendedUntilOneClickMoreTakesTheButtonAway) {
  portal.answerWith({page({{u"3"_s}}), onePage(1), onePage(2), onePage(3)});
  EXPECT_TRUE(nextPage().isVisible());
  EXPECT_EQ(nextPage().text(), u"33%"_s);
  pressNextPage();
  EXPECT_EQ(nextPage().text(), u"66%"_s);
  pressNextPage();
  EXPECT_EQ(nextPage().text(), u"100%"_s);
  EXPECT_TRUE(nextPage().isVisible());
  ASSERT_EQ(list().itemCount(), 3);
  for (int row = 0; row < 3; ++row) EXPECT_EQ(list().itemAt(row)->tag(), QString::number(row + 1));
  pressNextPage();
  EXPECT_FALSE(nextPage().isVisible());
  EXPECT_EQ(portal.requestTargets(),
            QList<QByteArray>({countTarget(u"10"_s), pageTarget(u"1"_s, u"10"_s),
                               pageTarget(u"2"_s, u"10"_s), pageTarget(u"3"_s, u"10"_s)}));
}

TEST_F(PortalGoodsList, TheColumnsStayInSightWhenAPageBringsTheScrollBar) {
  QList<QStringList> many;
  for (int row = 1; row <= 60; ++row)
    many.append({QString::number(row), u"书"_s, u"0"_s, u"True"_s});
  portal.answerWith({page({{u"2"_s}}), onePage(1), page(many)});
  screen();
  ASSERT_TRUE(QTest::qWaitFor([&] { return list().columnWidth(0) > 0 && list().isVisible(); }));
  EXPECT_FALSE(list().verticalScrollBar()->isVisible());
  pressNextPage();
  EXPECT_TRUE(QTest::qWaitFor([&] { return list().verticalScrollBar()->isVisible(); }));
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return list().columnWidth(0) == list().viewport()->width() - 660 / 15;
  })) << list().columnWidth(0)
      << " of " << list().viewport()->width();
}

TEST_F(PortalGoodsList, ThePercentageIsWhole) {
  portal.answerWith({page({{u"100"_s}}), onePage(1)});
  screen();
  for (int turned = 1; turned < 29; ++turned) pressNextPage();
  EXPECT_EQ(nextPage().text(), u"29%"_s) << "29 of 100, never 28";
}

TEST_F(PortalGoodsList, ThePageLengthIsThatOfTheLoad) {
  portal.answerWith({page({{u"2"_s}}), onePage(1), onePage(2)});
  screen();
  state.gPageSize = 99;
  pressNextPage();
  EXPECT_EQ(target(2), pageTarget(u"2"_s, u"10"_s));
}

TEST_F(PortalGoodsList, OfflineTheNextPageIsNotAskedFor) {
  portal.answerWith({page({{u"2"_s}}), onePage(1), onePage(2)});
  screen();
  goOffline();
  pressNextPage();
  EXPECT_EQ(nextPage().text(), u"50%"_s);
  EXPECT_EQ(list().itemCount(), 1);
  EXPECT_EQ(portal.requests().size(), 2);
}

TEST_F(PortalGoodsList, NoPagesOrANonsenseCountHideTheButton) {
  for (const QByteArray& count : {page({{u"0"_s}}), page({{u"-3"_s}}), page({{u"viele"_s}}),
                                  page({{u"99999999999"_s}}), QByteArray("<html></html>")}) {
    portal.answerWith({count, page(twoGoods())});
    EXPECT_FALSE(nextPage().isVisible());
    EXPECT_EQ(list().itemCount(), 2) << "the first page is asked for all the same";
    ASSERT_TRUE(screen().unload());
  }
}

TEST_F(PortalGoodsList, ALostPageLeavesTheRowsThatAreThere) {
  portal.answerWith({page({{u"3"_s}}), onePage(1), "<html></html>", onePage(3)});
  screen();
  pressNextPage();
  EXPECT_EQ(list().itemCount(), 1);
  EXPECT_EQ(nextPage().text(), u"66%"_s);
  pressNextPage();
  EXPECT_EQ(list().itemCount(), 2);
  EXPECT_EQ(list().itemAt(1)->tag(), u"3"_s);
}

TEST_F(PortalGoodsList, ARecordIsReadWithTheIdsBehindItsNames) {
  open(twoGoods());
  portal.answerWith({page({record(u"40000"_s)})});
  clickRow(1);
  EXPECT_EQ(target(0), targetOf("_vti_detail_field_s.asp",
                                {{u"STABLE"_s, u"XIMU"_s},
                                 {u"STRDATA"_s,
                                  u"id,ximu_no,ximu,jigex,zhko,gesh,lebi_id,lebi,chye_id,chye,"
                                  "jish,shxi,liuy,"_s},
                                 {u"STOTHER"_s, u"id=40000"_s}}));
  const QStringList shown = {
      u"图书"_s, u"N1"_s,         u"大学语文"_s,         u"25.50"_s, u"八折"_s, u"010"_s,
      u"教材"_s, u"青禾出版社"_s, u"第一行\r\n第二行"_s, u"平装,"_s, u"欢迎"_s};
  for (int index = 0; index < shown.size(); ++index) EXPECT_EQ(field(index), shown[index]) << index;
  EXPECT_EQ(screen().txtFields(6)->Tag, u"12"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"5"_s);
}

TEST_F(PortalGoodsList, OfflineAtLoadTheListIsEmptyAndNothingCanBePickedOrPressed) {
  goOffline();
  portal.setHandler([](const QByteArray&) {
    ScriptedServer::Reply reply;
    reply.reset = true;
    return reply;
  });
  EXPECT_EQ(list().itemCount(), 0);
  for (const QString& name : {u"Command1"_s, u"Command2"_s, u"Command3"_s}) {
    EXPECT_FALSE(command(name)->isEnabled()) << name.toStdString();
  }
  press(u"Add"_s);
  press(u"Exit"_s);
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_TRUE(isLoaded<FrmXIMU_WEB>());
}

TEST_F(PortalGoodsList, TheListsAreAskedForWithoutLookingAtTheLink) {
  goOffline();
  open(twoGoods());
  EXPECT_EQ(list().itemCount(), 2);
}

TEST_F(PortalGoodsList, ACompanyWithoutIndustryCannotPick) {
  state.gHayeId = 0;
  open(twoGoods());
  EXPECT_FALSE(command(u"Command1"_s)->isEnabled());
  EXPECT_TRUE(state.tray.state() == Tray::State::Connected) << "the link is looked at first";
}

TEST_F(PortalGoodsList, AddClearsTheFieldsAndKeepsTheIds) {
  openOnFirst();
  press(u"Add"_s);
  const QStringList shown = {u"图书"_s, u"NO"_s,   u"新添商品"_s, u"0"_s,    u"说明"_s, u"1"_s,
                             QString(), QString(), QString(),     QString(), QString()};
  for (int index = 0; index < shown.size(); ++index) EXPECT_EQ(field(index), shown[index]) << index;
  EXPECT_EQ(screen().txtFields(6)->Tag, u"12"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"5"_s);
}

struct Refused {
  int index;
  QString text;
};
void PrintTo(const Refused& row, std::ostream* out) {
  *out << row.index << " \"" << row.text.toStdString() << "\"";
}
class PortalGoodsNumbers : public PortalGoodsList, public testing::WithParamInterface<Refused> {};

TEST_P(PortalGoodsNumbers, PriceAndPackMustBeNumbersToBeLeft) {
  openOnFirst();
  ASSERT_TRUE(QTest::qWaitFor([&] { return screen().window()->isActiveWindow(); }));
  type(GetParam().index, GetParam().text);
  boxes->expect(Answer::Ok);
  screen().txtFields(1)->editor()->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(boxes->texts(), QStringList{u"必须是数值,请重新输入"_s});
  EXPECT_TRUE(screen().txtFields(GetParam().index)->editor()->hasFocus());
  EXPECT_EQ(field(GetParam().index), GetParam().text);
  boxes->expect(Answer::Ok);
  turnTo(1);
  EXPECT_EQ(screen().SSTab1->tab(), 0) << "nor for another tab";
  type(GetParam().index, u"-1.5"_s);
  turnTo(1);
  EXPECT_EQ(screen().SSTab1->tab(), 1);
}

INSTANTIATE_TEST_SUITE_P(Fields, PortalGoodsNumbers,
                         testing::Values(Refused{3, u"abc"_s}, Refused{3, u""_s},
                                         Refused{5, u"1箱"_s}));

TEST_F(PortalGoodsList, ADiscountMayBeAnyWord) {
  openOnFirst();
  type(4, u"随便"_s);
  screen().txtFields(1)->editor()->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

}  // namespace
