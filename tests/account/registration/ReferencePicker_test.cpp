#include "account/registration/ReferencePicker.h"

#include <gtest/gtest.h>

#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetHAYE.h"
#include "account/registration/frmGetSHEN.h"
#include "support/PickerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString rows = u"/_vti_login/_vti_detail_field_s.asp?STABLE="_s;

struct Provinces {
  using Screen = frmGetSHEN;
  static QString form() { return u"frmGetSHEN"_s; }
  static QString caption() { return u"选择省份"_s; }
  static TextBox* id(const Screen& screen) { return screen.TextShen_id; }
  static TextBox* name(const Screen& screen) { return screen.TextShen; }
  static QString boxName() { return u"TextShen"_s; }
  static QString target() { return rows + u"%53%48%45%4E&STRDATA=%69%64%2C%73%68%65%6E%2C"_s; }
};

struct Cities {
  using Screen = frmGetAREA;
  static QString form() { return u"frmGetAREA"_s; }
  static QString caption() { return u"选择地区"_s; }
  static TextBox* id(const Screen& screen) { return screen.TextArea_id; }
  static TextBox* name(const Screen& screen) { return screen.TextArea; }
  static QString boxName() { return u"TextArea"_s; }
  static QString target() {
    return rows +
           u"%41%52%45%41&STRDATA=%69%64%2C%61%72%65%61%2C"
           "&STOTHER=%53%48%45%4E%5F%49%44%3D%31%30"_s;
  }
};

struct Industries {
  using Screen = frmGetHAYE;
  static QString form() { return u"frmGetHAYE"_s; }
  static QString caption() { return u"选择行业"_s; }
  static TextBox* id(const Screen& screen) { return screen.TextHaye_id; }
  static TextBox* name(const Screen& screen) { return screen.TextHaye; }
  static QString boxName() { return u"TextHaye"_s; }
  static QString target() { return rows + u"%48%41%59%45&STRDATA=%69%64%2C%68%61%79%65%2C"_s; }
};

const QList<QStringList> three = {{u"9"_s, u"上海"_s}, {u"10"_s, u"江苏"_s}, {u"11"_s, u"浙江"_s}};

template <class Kind>
class ReferencePickers : public PickerFixture {
 protected:
  using Screen = typename Kind::Screen;

  ReferencePickers() {
    state.gShenId = 10;
    portal.answerWith({page(three)});
  }

  Screen& picker() { return defaultInstance<Screen>(); }
  Choice use(const std::function<void(Screen&)>& steps) {
    return this->template pick<Screen>(steps);
  }
};

using Kinds = testing::Types<Provinces, Cities, Industries>;
TYPED_TEST_SUITE(ReferencePickers, Kinds);

TYPED_TEST(ReferencePickers, LoadListsTheTableByteByByte) {
  auto& screen = this->picker();
  EXPECT_EQ(this->targets(), QStringList{TypeParam::target()});
  ASSERT_EQ(screen.ListView1->itemCount(), 3);
  EXPECT_EQ(screen.ListView1->itemAt(1)->key(), u"10 ID"_s);
  EXPECT_EQ(screen.ListView1->itemAt(1)->text(), u"江苏"_s);
  EXPECT_EQ(screen.ListView1->itemAt(1)->icon(), u"Shxi"_s);
}

TYPED_TEST(ReferencePickers, HasItsNamesAndCaptions) {
  auto& screen = this->picker();
  EXPECT_EQ(screen.objectName(), TypeParam::form());
  EXPECT_EQ(screen.windowTitle(), TypeParam::caption());
  EXPECT_EQ(screen.ListView1->model()->headerData(0, Qt::Horizontal).toString(), u"名称"_s);
  EXPECT_EQ(TypeParam::id(screen)->objectName(), TypeParam::boxName() + u"_id"_s);
  EXPECT_EQ(TypeParam::name(screen)->objectName(), TypeParam::boxName());
  this->use([](auto& shown) {
    EXPECT_FALSE(TypeParam::id(shown)->isVisible());
    EXPECT_FALSE(TypeParam::name(shown)->isVisible());
    EXPECT_TRUE(shown.commandC->isVisible());
    EXPECT_TRUE(shown.commandT->isVisible());
  });
}

TYPED_TEST(ReferencePickers, AClickChoosesTheRow) {
  const Choice choice = this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 2);
    EXPECT_EQ(TypeParam::id(screen)->text(), u"11 ID"_s);
    PickerFixture::press(screen.commandC);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(choice.id, u"11 ID"_s);
  EXPECT_EQ(choice.name, u"浙江"_s);
}

TYPED_TEST(ReferencePickers, ARowReachedByKeysIsChosenAndEnterAccepts) {
  const Choice choice = this->use([](auto& screen) {
    screen.ListView1->setFocus();
    QTest::keyClick(screen.ListView1, Qt::Key_Down);
    QTest::keyClick(screen.ListView1, Qt::Key_Return);
  });
  EXPECT_EQ(choice.id, u"10 ID"_s);
}

TYPED_TEST(ReferencePickers, TheSpaceKeyChoosesTheFirstRowWhichMayBeTheOnlyOne) {
  this->portal.answerWith({this->page({three[0]})});
  const Choice choice = this->use([](auto& screen) {
    QTest::keyClick(screen.ListView1, Qt::Key_Space);
    QTest::keyClick(screen.ListView1, Qt::Key_Return);
  });
  EXPECT_EQ(choice.id, u"9 ID"_s);
}

TYPED_TEST(ReferencePickers, AcceptBeforeAnyClickGivesNothing) {
  const Choice choice = this->use([](auto& screen) { PickerFixture::press(screen.commandC); });
  EXPECT_EQ(choice.id, QString());
  EXPECT_TRUE(isLoaded<typename TypeParam::Screen>());
}

TYPED_TEST(ReferencePickers, AClickOnEmptySpaceKeepsTheChoice) {
  const Choice choice = this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 0);
    PickerFixture::pressEmptySpace(screen.ListView1);
    PickerFixture::press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"9 ID"_s);
}

TYPED_TEST(ReferencePickers, CancelAndEscGiveNothing) {
  Choice choice = this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 0);
    PickerFixture::press(screen.commandT);
  });
  EXPECT_EQ(choice.id + choice.name, QString());
  EXPECT_TRUE(isLoaded<typename TypeParam::Screen>());
  choice = this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 0);
    QTest::keyClick(&screen, Qt::Key_Escape);
  });
  EXPECT_EQ(choice.id + choice.name, QString());
  EXPECT_FALSE(isLoaded<typename TypeParam::Screen>());
}

TYPED_TEST(ReferencePickers, ReopenedItKeepsRowsAndChoice) {
  this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 0);
    PickerFixture::press(screen.commandC);
  });
  this->state.gShenId = 99;
  const Choice choice = this->use([](auto& screen) { PickerFixture::press(screen.commandC); });
  EXPECT_EQ(choice.id, u"9 ID"_s);
  EXPECT_EQ(this->portal.requests().size(), 1) << "the cities stay those of the first province";
}

TYPED_TEST(ReferencePickers, OnlyAProvinceSetsTheProvinceWhoseCitiesAreListed) {
  this->use([](auto& screen) {
    PickerFixture::pressRow(screen.ListView1, 2);
    PickerFixture::press(screen.commandT);
  });
  const bool province = std::is_same_v<TypeParam, Provinces>;
  EXPECT_EQ(this->state.gShenId, province ? 11 : 10) << "at the click, though it was cancelled";
}

TYPED_TEST(ReferencePickers, APortalFailureLeavesTheListEmptyWithoutAWord) {
  this->portal.answerWith({"<html></html>"});
  EXPECT_EQ(this->picker().ListView1->itemCount(), 0);
  const Choice choice = this->use([](auto& screen) { PickerFixture::press(screen.commandC); });
  EXPECT_EQ(choice.id, QString());
  EXPECT_TRUE(this->boxes->asked.isEmpty());
}

}  // namespace
