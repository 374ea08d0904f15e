#include "catalogue/pickers/PagedPicker.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QScrollBar>

#include "catalogue/pickers/frmGetCYXX.h"
#include "catalogue/pickers/frmGetMUMU.h"
#include "portal/url_encode.h"
#include "support/PickerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct Brands {
  using Screen = frmGetMUMU;
  static QString form() { return u"frmGetMUMU"_s; }
  static QString caption() { return u"选择品牌"_s; }
  static TextBox* id(const Screen& screen) { return screen.TextMumu_id; }
  static TextBox* name(const Screen& screen) { return screen.TextMumu; }
  static QString boxName() { return u"TextMumu"_s; }
  static QString folder() { return u"/_vti_product/"_s; }
  static QString table() { return u"MUMU"_s; }
  static QString fields() { return u"id,ximu,"_s; }
  static QString condition() { return u"NOTH=TRUE"_s; }
};

struct Producers {
  using Screen = frmGetCYXX;
  static QString form() { return u"frmGetCYXX"_s; }
  static QString caption() { return u"选择生产商"_s; }
  static TextBox* id(const Screen& screen) { return screen.TextCyxx_id; }
  static TextBox* name(const Screen& screen) { return screen.TextCyxx; }
  static QString boxName() { return u"TextCyxx"_s; }
  static QString folder() { return u"/_vti_login/"_s; }
  static QString table() { return u"CYXX"_s; }
  static QString fields() { return u"id,qiye,"_s; }
  static QString condition() { return u"HAYE_ID=3"_s; }
};

const QList<QStringList> firstPage = {
    {u"11"_s, u"青禾"_s}, {u"12"_s, u"砚田"_s}, {u"13"_s, u"Qing"_s}};
const QList<QStringList> secondPage = {{u"21"_s, u"四时茶"_s}, {u"22"_s, u"墨香"_s}};
const QByteArray nothing = "<html></html>";

template <class Kind>
class PagedPickers : public PickerFixture {
 protected:
  using Screen = typename Kind::Screen;

  PagedPickers() {
    beCompany(1, 0);
    state.gPageSize = 3;
    portal.answerWith({page({{u"3"_s}}), page(firstPage), page(secondPage), page({})});
  }

  Screen& picker() { return defaultInstance<Screen>(); }
  Choice use(const std::function<void(Screen&)>& steps) {
    return this->template pick<Screen>(steps);
  }

  static void search(Screen& screen, const QString& text) {
    screen.Text1->setText(text);
    press(screen.command1);
  }

  static QString countTarget() {
    return Kind::folder() + u"_vti_detail_page.asp?STABLE="_s + UrlEncodeField(Kind::table()) +
           u"&STPAGESIZE="_s + UrlEncodeField(u"3"_s) + u"&STOTHER="_s +
           UrlEncodeField(Kind::condition());
  }
  static QString pageTarget(int number) {
    return Kind::folder() + u"_vti_detail_onepage.asp?STABLE="_s + UrlEncodeField(Kind::table()) +
           u"&STRDATA="_s + UrlEncodeField(Kind::fields()) + u"&STPAGE="_s +
           UrlEncodeField(QString::number(number)) + u"&STPAGESIZE="_s + UrlEncodeField(u"3"_s) +
           u"&STOTHER="_s + UrlEncodeField(Kind::condition());
  }
};

using Kinds = testing::Types<Brands, Producers>;
TYPED_TEST_SUITE(PagedPickers, Kinds);

TYPED_TEST(PagedPickers, LoadAsksForThePageCountAndThenForTheFirstPage) {
  auto& screen = this->picker();
  EXPECT_EQ(this->targets(), QStringList({this->countTarget(), this->pageTarget(1)}));
  ASSERT_EQ(screen.ListView1->itemCount(), 3);
  const ListItem* row = screen.ListView1->itemAt(1);
  EXPECT_EQ(row->key(), u"12 ID"_s);
  EXPECT_EQ(row->text(), u"砚田"_s);
  EXPECT_EQ(row->icon(), u"Shxi"_s);
  EXPECT_EQ(row->tag(), u"1"_s);
}

TYPED_TEST(PagedPickers, HasItsNamesAndCaptions) {
  auto& screen = this->picker();
  EXPECT_EQ(screen.objectName(), TypeParam::form());
  EXPECT_EQ(screen.windowTitle(), TypeParam::caption());
  EXPECT_EQ(screen.ListView1->model()->headerData(0, Qt::Horizontal).toString(), u"名称"_s);
  EXPECT_EQ(screen.command1->text().remove(u"(&S)"_s), u"搜索"_s);
  EXPECT_EQ(TypeParam::id(screen)->objectName(), TypeParam::boxName() + u"_id"_s);
  EXPECT_EQ(TypeParam::name(screen)->objectName(), TypeParam::boxName());
  for (const char* name : {"ListView1", "Text1", "command1", "Command2", "commandC", "commandT"}) {
    EXPECT_NE(screen.template findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
  }
}

TYPED_TEST(PagedPickers,
           TheBoxesOfTheChoiceAreNeverSeenAndTheColumnIsAsWideAsTheListLessFourPixels) {
  this->use([](auto& screen) {
    EXPECT_FALSE(TypeParam::id(screen)->isVisible());
    EXPECT_FALSE(TypeParam::name(screen)->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return screen.ListView1->columnWidth(0) == screen.ListView1->viewport()->width() - 4;
    }));
  });
}

TYPED_TEST(PagedPickers, TheColumnStaysInSightWhenAPageBringsTheScrollBar) {
  QList<QStringList> many;
  for (int row = 30; row < 90; ++row) many.append({QString::number(row), u"青"_s});
  this->portal.answerWith({this->page({{u"2"_s}}), this->page(firstPage), this->page(many)});
  this->use([](auto& screen) {
    const auto* list = screen.ListView1;
    EXPECT_FALSE(list->verticalScrollBar()->isVisible());
    PickerFixture::press(screen.Command2);
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return list->verticalScrollBar()->isVisible() &&
             list->columnWidth(0) == list->viewport()->width() - 4;
    })) << list->columnWidth(0)
        << " of " << list->viewport()->width();
  });
}

TYPED_TEST(PagedPickers, AcceptingAtOnceGivesTheLastRowOfTheFirstPage) {
  const Choice choice = this->use([](auto& screen) { PickerFixture::press(screen.commandC); });
  EXPECT_EQ(choice.id, u"13 ID"_s);
  EXPECT_EQ(choice.name, u"Qing"_s);
  auto& screen = this->picker();
  EXPECT_EQ(TypeParam::id(screen)->text(), u"13 ID"_s);
  EXPECT_EQ(TypeParam::name(screen)->text(), u"Qing"_s);
  EXPECT_FALSE(screen.isVisible()) << "hidden, and still loaded";
}

TYPED_TEST(PagedPickers, ThePressedRowIsTheChoiceWithAnyButton) {
  for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    const int row = button == Qt::RightButton ? 0 : 1;
    const Choice choice = this->use([&](auto& screen) {
      PickerFixture::pressRow(screen.ListView1, row, button);
      PickerFixture::press(screen.commandC);
    });
    EXPECT_EQ(choice.id, row == 0 ? u"11 ID"_s : u"12 ID"_s);
  }
}

TYPED_TEST(PagedPickers, ARowReachedByKeysIsTheChoiceAndEnterAccepts) {
  const Choice choice = this->use([](auto& screen) {
    screen.ListView1->setFocus();
    QTest::keyClick(screen.ListView1, Qt::Key_Down);
    QTest::keyClick(screen.ListView1, Qt::Key_Return);
  });
  EXPECT_EQ(choice.id, u"12 ID"_s);
}

TYPED_TEST(PagedPickers, TheSpaceKeyTakesTheFirstRow) {
  const Choice choice = this->use([](auto& screen) {
    QTest::keyClick(screen.ListView1, Qt::Key_Space);
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"11 ID"_s);
}

TYPED_TEST(PagedPickers, WhatIsOnlySelectedIsNotTheChoice) {
  const Choice choice = this->use([](auto& screen) {
    screen.ListView1->setSelectedItem(screen.ListView1->itemAt(1));
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"13 ID"_s);
}

TYPED_TEST(PagedPickers, ThePageButtonBeginsAsAnArrowWithAName) {
  const auto& button = *this->picker().Command2;
  EXPECT_FALSE(button.icon().isNull());
  EXPECT_EQ(button.text(), QString());
  EXPECT_EQ(button.accessibleName(), u"下一页"_s);
}

TYPED_TEST(PagedPickers, ThePageButtonAppendsPageByPageShowsThePercentageAndHidesBehindTheLast) {
  this->use([&](auto& screen) {
    PickerFixture::press(screen.Command2);
    EXPECT_EQ(screen.Command2->text(), u"66%"_s);
    EXPECT_TRUE(screen.Command2->icon().isNull());
    ASSERT_EQ(screen.ListView1->itemCount(), 5);
    EXPECT_EQ(screen.ListView1->itemAt(4)->key(), u"22 ID"_s);
    EXPECT_EQ(screen.ListView1->itemAt(4)->tag(), u"2"_s);
    EXPECT_EQ(screen.ListView1->itemAt(0)->tag(), u"1"_s);
    PickerFixture::press(screen.Command2);
    EXPECT_EQ(screen.Command2->text(), u"100%"_s);
    PickerFixture::press(screen.Command2);
    EXPECT_FALSE(screen.Command2->isVisible());
  });
  EXPECT_EQ(this->targets(), QStringList({this->countTarget(), this->pageTarget(1),
                                          this->pageTarget(2), this->pageTarget(3)}));
}

TYPED_TEST(PagedPickers, TheLastRowOfAFurtherPageIsRemembered) {
  const Choice choice = this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 0);
    PickerFixture::press(screen.Command2);
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"22 ID"_s);
}

TYPED_TEST(PagedPickers, WithOnePageOrNoneTheFirstPressHidesThePageButton) {
  for (const QByteArray& count : {this->page({{u"1"_s}}), this->page({{u"0"_s}}), nothing,
                                  this->page({{u"x"_s}}), this->page({{u"99999999999"_s}})}) {
    unload<typename TypeParam::Screen>();
    this->portal.clear();
    this->portal.answerWith({count, this->page(firstPage)});
    this->use([](auto& screen) {
      EXPECT_TRUE(screen.Command2->isVisible());
      PickerFixture::press(screen.Command2);
      EXPECT_FALSE(screen.Command2->isVisible());
      EXPECT_EQ(screen.Command2->text(), QString());
    });
    EXPECT_EQ(this->portal.requests().size(), 2);
  }
}

TYPED_TEST(PagedPickers, SearchGoesOnBehindTheSelectedRowAndWrapsRound) {
  this->use([](auto& screen) {
    PickerFixture::press(screen.Command2);
    auto* list = screen.ListView1;
    list->setSelectedItem(list->itemAt(1));
    TestFixture::search(screen, u"墨"_s);
    EXPECT_EQ(list->selectedItem(), list->itemAt(4));
    TestFixture::search(screen, u"青"_s);
    EXPECT_EQ(list->selectedItem(), list->itemAt(0)) << "from the last row on it wraps";
    EXPECT_TRUE(list->hasFocus());
  });
  EXPECT_TRUE(this->boxes->asked.isEmpty());
}

TYPED_TEST(PagedPickers, ASearchThatFitsOnlyTheSelectedRowFindsItAgain) {
  const Choice choice = this->use([](auto& screen) {
    screen.ListView1->setSelectedItem(screen.ListView1->itemAt(1));
    TestFixture::search(screen, u"砚"_s);
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(1));
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"12 ID"_s) << "what the search finds is remembered";
}

TYPED_TEST(PagedPickers, SearchTakesTheTextWithoutBlanksAroundItAndWithItsCase) {
  this->use([](auto& screen) {
    TestFixture::search(screen, u"  Qin "_s);
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(2));
  });
  this->boxes->expect(Answer::Ok);
  this->use([](auto& screen) { TestFixture::search(screen, u"qing"_s); });
  EXPECT_EQ(this->boxes->texts(), QStringList{u"没有匹配的条目"_s});
}

TYPED_TEST(PagedPickers, AnEmptySearchDoesNothing) {
  this->use([](auto& screen) {
    TestFixture::search(screen, QString());
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(0));
    EXPECT_FALSE(screen.ListView1->hasFocus());
  });
}

TYPED_TEST(PagedPickers, WhatStandsOnAPageNotYetLoadedIsNotFoundAndTheRememberedRowIsSelected) {
  this->boxes->expect(Answer::Ok);
  const Choice choice = this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 1);
    screen.ListView1->setSelectedItem(screen.ListView1->itemAt(0));
    TestFixture::search(screen, u"墨香"_s);
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(1));
    EXPECT_TRUE(screen.ListView1->hasFocus());
    EXPECT_EQ(screen.ListView1->itemCount(), 3);
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(this->boxes->texts(), QStringList{u"没有匹配的条目"_s});
  EXPECT_EQ(this->boxes->asked[0].buttons, Buttons::Ok);
  EXPECT_EQ(choice.id, u"12 ID"_s);
}

TYPED_TEST(PagedPickers, EnterSearchesWhileTheTextIsTyped) {
  this->use([](auto& screen) {
    screen.Text1->editor()->setFocus();
    QTest::keyClicks(screen.Text1->editor(), u"Qi"_s);
    QTest::keyClick(screen.Text1->editor(), Qt::Key_Return);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(2));
  });
}

TYPED_TEST(PagedPickers, AnEmptyListHasNothingToAcceptOrToFind) {
  this->portal.answerWith({this->page({{u"0"_s}}), this->page({})});
  this->boxes->expect(Answer::Ok);
  const Choice choice = this->use([](auto& screen) {
    PickerFixture::press(screen.commandC);
    EXPECT_TRUE(screen.isVisible()) << "accept does nothing";
    TestFixture::search(screen, u"青"_s);
    EXPECT_TRUE(screen.isVisible());
  });
  EXPECT_EQ(this->boxes->texts(), QStringList{u"没有匹配的条目"_s});
  EXPECT_EQ(choice.id, QString());
}

TYPED_TEST(PagedPickers, AfterAPressOnEmptySpaceThereIsNothingToAcceptUntilARowIsPressed) {
  const Choice choice = this->use([](auto& screen) {
    PickerFixture::pressEmptySpace(screen.ListView1);
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(0)) << "still selected";
    PickerFixture::press(screen.commandC);
    EXPECT_TRUE(screen.isVisible());
    PickerFixture::pressRow(screen.ListView1, 0);
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"11 ID"_s);
}

TYPED_TEST(PagedPickers, AfterAPressOnEmptySpaceAFailedSearchLeavesEverythingAsItIs) {
  this->boxes->expect(Answer::Ok);
  this->use([](auto& screen) {
    PickerFixture::pressEmptySpace(screen.ListView1);
    TestFixture::search(screen, u"没有这个"_s);
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(0));
    EXPECT_FALSE(screen.ListView1->hasFocus());
    PickerFixture::press(screen.commandC);
    EXPECT_TRUE(screen.isVisible());
  });
}

TYPED_TEST(PagedPickers, CancelGivesNothingAndKeepsTheList) {
  this->use([](auto& screen) { PickerFixture::press(screen.commandC); });
  const Choice choice = this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 0);
    PickerFixture::press(screen.commandT);
  });
  EXPECT_EQ(choice.id, QString());
  EXPECT_EQ(choice.name, QString());
  EXPECT_EQ(this->picker().ListView1->itemCount(), 3);
}

TYPED_TEST(PagedPickers, EscAndTheCloseBoxCancelAndUnload) {
  for (const bool byKey : {true, false}) {
    this->portal.answerWith({this->page({{u"1"_s}}), this->page(firstPage)});
    const Choice choice = this->use([&](auto& screen) {
      PickerFixture::pressRow(screen.ListView1, 0);
      if (byKey) {
        QTest::keyClick(&screen, Qt::Key_Escape);
      } else {
        screen.close();
      }
    });
    EXPECT_EQ(choice.id, QString());
    EXPECT_FALSE(isLoaded<typename TypeParam::Screen>());
  }
}

TYPED_TEST(PagedPickers, ReopenedItShowsTheOldRowsTheOldPageAndTheOldChoice) {
  this->use([](auto& screen) {
    PickerFixture::press(screen.Command2);
    PickerFixture::pressRow(screen.ListView1, 0);
    PickerFixture::press(screen.commandC);
  });
  this->state.gPageSize = 7;
  const auto requests = this->portal.requests().size();
  const Choice choice = this->use([](auto& screen) {
    EXPECT_EQ(screen.ListView1->itemCount(), 5);
    EXPECT_EQ(screen.Command2->text(), u"66%"_s);
    EXPECT_EQ(TypeParam::id(screen)->text(), u"11 ID"_s);
    EXPECT_EQ(screen.ListView1->selectedItem(), screen.ListView1->itemAt(0));
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(this->portal.requests().size(), requests);
  EXPECT_EQ(choice.id, u"11 ID"_s) << "still remembered";
}

TYPED_TEST(PagedPickers, TheTrayWaitsWhileItIsShownAndTheConnectionIsLookedAtOnlyBehindIt) {
  this->goOffline();
  this->use([&](auto& screen) {
    EXPECT_EQ(this->state.tray.state(), Tray::State::Waiting);
    PickerFixture::press(screen.Command2);
    EXPECT_EQ(this->links->enumerations, 0) << "the picker itself asks the portal unchecked";
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(this->links->enumerations, 1);
  EXPECT_EQ(this->state.tray.state(), Tray::State::Offline);
}

TYPED_TEST(PagedPickers, APortalFailureLeavesTheListShortWithoutAWord) {
  this->state.inetQuotes.timeLimit = std::chrono::milliseconds(300);
  const QByteArray cut = "start_pos<tr><td>11</td><td>青禾</td></tr><tr><td>12</td>";
  const std::vector<ScriptedServer::Reply> faults = {
      {.hang = true},
      {.reset = true},
      {.bytes = "\x00\xff garbage", .keepAlive = false},
      {.bytes = ScriptedServer::ok("<html>500</html>")},
      {.bytes = ScriptedServer::ok(cut)}};
  for (const auto& fault : faults) {
    unload<typename TypeParam::Screen>();
    this->portal.setHandler([fault](const QByteArray&) { return fault; });
    auto& screen = this->picker();
    EXPECT_EQ(screen.ListView1->itemCount(), 0);
  }
  EXPECT_TRUE(this->boxes->asked.isEmpty());
}

class PagedPickerBytes : public PickerFixture {};

TEST_F(PagedPickerBytes, OfTheBrandsRequests) {
  defaultInstance<frmGetMUMU>();
  EXPECT_EQ(targets(),
            QStringList({u"/_vti_product/_vti_detail_page.asp?STABLE=%4D%55%4D%55&STPAGESIZE=%31%30"
                         "&STOTHER=%4E%4F%54%48%3D%54%52%55%45"_s,
                         u"/_vti_product/_vti_detail_onepage.asp?STABLE=%4D%55%4D%55"
                         "&STRDATA=%69%64%2C%78%69%6D%75%2C&STPAGE=%31&STPAGESIZE=%31%30"
                         "&STOTHER=%4E%4F%54%48%3D%54%52%55%45"_s}));
}

TEST_F(PagedPickerBytes, OfTheProducersRequests) {
  beCompany(1, 0);
  defaultInstance<frmGetCYXX>();
  EXPECT_EQ(targets(),
            QStringList({u"/_vti_login/_vti_detail_page.asp?STABLE=%43%59%58%58&STPAGESIZE=%31%30"
                         "&STOTHER=%48%41%59%45%5F%49%44%3D%33"_s,
                         u"/_vti_login/_vti_detail_onepage.asp?STABLE=%43%59%58%58"
                         "&STRDATA=%69%64%2C%71%69%79%65%2C&STPAGE=%31&STPAGESIZE=%31%30"
                         "&STOTHER=%48%41%59%45%5F%49%44%3D%33"_s}));
}

TEST_F(PagedPickerBytes, InMixedModeGoThroughTheRelay) {
  state.gUnicode = 1;
  defaultInstance<frmGetMUMU>();
  ASSERT_EQ(targets().size(), 2);
  for (const QString& target : targets()) {
    EXPECT_TRUE(target.startsWith(u"/_vti_comm/review.asp?review=%48%54%54%50"_s));
  }
}

}  // namespace
