#include <gtest/gtest.h>

#include "PortalGoodsFixture.h"
#include "catalogue/pickers/frmGetCYXX.h"
#include "catalogue/pickers/frmGetLEBI.h"
#include "catalogue/pickers/frmGetMUMU.h"
#include "catalogue/pickers/frmGetSHXI.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PortalGoodsPick : public PortalGoodsFixture {
 protected:
  PortalGoodsPick() { state.gViewPict = 0; }

  /// The category tree gives these two, and the second press finds a leaf.
  void giveCategories() {
    portal.answerWith({page({{u"11"_s, u"文学"_s}, {u"12"_s, u"教材"_s}}), page({})});
  }
  static void acceptNode(frmGetLEBI& picker, int child) {
    TreeNode* node = picker.TreeView1->root(0)->childNode(child);
    QTest::mouseClick(picker.TreeView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                      picker.TreeView1->labelRect(node).center());
    QTest::mouseClick(picker.commandC, Qt::LeftButton);
  }
  void givePage(const QList<QStringList>& rows) {
    portal.answerWith({page({{u"1"_s}}), page(rows)});
  }
  bool isMarked() {
    const qsizetype before = boxes->asked.size();
    boxes->expect(Answer::Cancel);
    const bool asked = !screen().unload();
    EXPECT_EQ(boxes->asked.size(), before + 1);
    return asked;
  }
};

TEST_F(PortalGoodsPick, ACategoryGoesIntoTagWithItsSuffixAndIntoText) {
  openOnFirst();
  giveCategories();
  inPicker<frmGetLEBI>([](frmGetLEBI& picker) { acceptNode(picker, 0); });
  pressCommand(u"Command1"_s);
  EXPECT_EQ(screen().txtFields(6)->Tag, u"11 XID"_s);
  EXPECT_EQ(field(6), u"文学"_s);
  EXPECT_TRUE(isMarked());

  portal.clear();
  portalGives(u"71"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0),
            targetOf("_vti_add.asp", saved({{u"LEBI_ID"_s, u"11"_s}, {u"LEBI"_s, u"文学"_s}})));
}

TEST_F(PortalGoodsPick, TheTrayWaitsWhileAPickerStandsAndTheLinkIsLookedAtBehindIt) {
  openOnFirst();
  giveCategories();
  std::optional<Tray::State> meanwhile;
  inPicker<frmGetLEBI>([&](frmGetLEBI& picker) {
    meanwhile = state.tray.state();
    QTest::mouseClick(picker.commandT, Qt::LeftButton);
  });
  pressCommand(u"Command1"_s);
  EXPECT_EQ(meanwhile, Tray::State::Waiting);
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
}

TEST_F(PortalGoodsPick, ACancelledPickerChangesNothing) {
  openOnFirst();
  giveCategories();
  inPicker<frmGetLEBI>(
      [](frmGetLEBI& picker) { QTest::mouseClick(picker.commandT, Qt::LeftButton); });
  pressCommand(u"Command1"_s);
  inPicker<frmGetLEBI>([](frmGetLEBI& picker) { picker.window()->close(); });
  pressCommand(u"Command1"_s);
  EXPECT_EQ(screen().txtFields(6)->Tag, u"12"_s);
  EXPECT_EQ(field(6), u"教材"_s);

  givePage({{u"8"_s, u"人民文学"_s}});
  inPicker<frmGetCYXX>(
      [](frmGetCYXX& picker) { QTest::mouseClick(picker.commandT, Qt::LeftButton); });
  pressCommand(u"Command2"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"5"_s);
  EXPECT_EQ(field(7), u"青禾出版社"_s);
  EXPECT_TRUE(screen().unload()) << "nothing to save";
}

TEST_F(PortalGoodsPick, AProducerGoesIntoTheBrand) {
  openOnFirst();
  givePage({{u"8"_s, u"人民文学"_s}, {u"9"_s, u"中华书局"_s}});
  inPicker<frmGetCYXX>([](frmGetCYXX& picker) { acceptRow(picker, 0); });
  pressCommand(u"Command2"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"8 ID"_s);
  EXPECT_EQ(field(7), u"人民文学"_s);
  EXPECT_FALSE(isLoaded<frmGetMUMU>());
}

TEST_F(PortalGoodsPick, TheIndustryOfBrandsPicksABrandInstead) {
  state.gHayeId = 4;
  openOnFirst();
  givePage({{u"8"_s, u"青松牌"_s}, {u"9"_s, u"白鹤牌"_s}});
  inPicker<frmGetMUMU>([](frmGetMUMU& picker) { acceptRow(picker, 1); });
  pressCommand(u"Command2"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"9 ID"_s);
  EXPECT_EQ(field(7), u"白鹤牌"_s);
  EXPECT_FALSE(isLoaded<frmGetCYXX>());
}

TEST_F(PortalGoodsPick, ABrandAndAProducerAreSavedInTheSameColumns) {
  for (const bool brand : {true, false}) {
    state.gHayeId = brand ? 4 : 3;
    openOnFirst();
    givePage({{u"8"_s, u"人民文学"_s}});
    if (brand) {
      inPicker<frmGetMUMU>([](frmGetMUMU& picker) { acceptRow(picker, 0); });
    } else {
      inPicker<frmGetCYXX>([](frmGetCYXX& picker) { acceptRow(picker, 0); });
    }
    pressCommand(u"Command2"_s);
    portal.clear();
    portalGives(u"71"_s);
    press(u"Update"_s);
    EXPECT_EQ(target(0), targetOf("_vti_add.asp",
                                  saved({{u"CHYE_ID"_s, u"8"_s}, {u"CHYE"_s, u"人民文学"_s}})));
    EXPECT_EQ(store.rows(u"SELECT CHYE_ID,CHYE FROM XIMU"_s),
              QList<QVariantList>({{8, u"人民文学"_s}}));
    ASSERT_TRUE(settled(3));
    ASSERT_TRUE(screen().unload());
    store.exec(u"DELETE FROM XIMU"_s);
    portal.clear();
  }
}

TEST_F(PortalGoodsPick, TheAttributesAreEditedOnTheFieldsText) {
  openOnFirst();
  portal.answerWith({page({{u"1"_s, u"装帧"_s}, {u"2"_s, u"开本"_s}})});
  QString shown;
  inPicker<frmGetSHXI>([&](frmGetSHXI& picker) {
    shown = picker.ListView1->itemAt(0)->subItem(1);
    QTest::mouseClick(picker.ListView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                      picker.ListView1->cellRect(picker.ListView1->itemAt(1), 1).center());
    qobject_cast<QLineEdit*>(picker.txtSelect->editor())->insert(u"16开"_s);
    QTest::mouseClick(picker.commandC, Qt::LeftButton);
  });
  pressCommand(u"Command3"_s);
  EXPECT_EQ(shown, u"平装"_s);
  EXPECT_EQ(field(9), u"平装,16开,"_s);
}

TEST_F(PortalGoodsPick, CancelledAttributesLeaveTheField) {
  openOnFirst();
  portal.answerWith({page({{u"1"_s, u"装帧"_s}})});
  inPicker<frmGetSHXI>(
      [](frmGetSHXI& picker) { QTest::mouseClick(picker.commandT, Qt::LeftButton); });
  pressCommand(u"Command3"_s);
  EXPECT_EQ(field(9), u"平装,"_s);
}

TEST_F(PortalGoodsPick, OfflineNoPickerOpens) {
  openOnFirst();
  goOffline();
  for (const QString& name : {u"Command1"_s, u"Command2"_s, u"Command3"_s}) pressCommand(name);
  EXPECT_FALSE(isLoaded<frmGetLEBI>());
  EXPECT_FALSE(isLoaded<frmGetCYXX>());
  EXPECT_FALSE(isLoaded<frmGetSHXI>());
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(PortalGoodsPick, ThePickersStayAsTheyWereUntilTheScreenGoes) {
  openOnFirst();
  giveCategories();
  inPicker<frmGetLEBI>([](frmGetLEBI& picker) { acceptNode(picker, 0); });
  pressCommand(u"Command1"_s);
  portal.clear();
  inPicker<frmGetLEBI>(
      [](frmGetLEBI& picker) { QTest::mouseClick(picker.commandC, Qt::LeftButton); });
  pressCommand(u"Command1"_s);
  EXPECT_TRUE(portal.requests().isEmpty()) << "its rows are there, and so is the old choice";
  EXPECT_EQ(field(6), u"文学"_s);

  givePage({{u"8"_s, u"人民文学"_s}});
  inPicker<frmGetCYXX>([](frmGetCYXX& picker) { acceptRow(picker, 0); });
  pressCommand(u"Command2"_s);
  portal.answerWith({page({{u"1"_s, u"装帧"_s}})});
  inPicker<frmGetSHXI>(
      [](frmGetSHXI& picker) { QTest::mouseClick(picker.commandT, Qt::LeftButton); });
  pressCommand(u"Command3"_s);
  EXPECT_TRUE(isLoaded<frmGetLEBI>() && isLoaded<frmGetCYXX>() && isLoaded<frmGetSHXI>());

  boxes->expect(Answer::No);
  EXPECT_TRUE(screen().unload());
  EXPECT_FALSE(isLoaded<frmGetLEBI>());
  EXPECT_FALSE(isLoaded<frmGetCYXX>());
  EXPECT_FALSE(isLoaded<frmGetSHXI>());
}

TEST_F(PortalGoodsPick, TheBrandPickerOutlivesTheScreen) {
  state.gHayeId = 4;
  openOnFirst();
  givePage({{u"8"_s, u"青松牌"_s}});
  inPicker<frmGetMUMU>([](frmGetMUMU& picker) { acceptRow(picker, 0); });
  pressCommand(u"Command2"_s);
  boxes->expect(Answer::No);
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(isLoaded<frmGetMUMU>());
}

TEST_F(PortalGoodsPick, PickersThatOthersOpenedAreNotUnloaded) {
  openOnFirst();
  defaultInstance<frmGetLEBI>();
  defaultInstance<frmGetCYXX>();
  defaultInstance<frmGetSHXI>();
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(isLoaded<frmGetLEBI>() && isLoaded<frmGetCYXX>() && isLoaded<frmGetSHXI>());
}

}  // namespace
