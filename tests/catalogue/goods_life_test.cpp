// The life of catalogue records between companies, at a running portal.

#include <gtest/gtest.h>

#include "Sitting.h"
#include "catalogue/FrmFUWU.h"
#include "catalogue/FrmFUWU_WEB.h"
#include "catalogue/FrmMUMU_WEB.h"
#include "catalogue/FrmXIMU.h"
#include "catalogue/FrmXIMU_WEB.h"
#include "catalogue/pickers/frmGetLEBI.h"
#include "catalogue/pickers/frmGetMUMU.h"
#include "orders/search/FrmSelect.h"
#include "values/numbers.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class GoodsLife : public testing::TestWithParam<qint16> {
 protected:
  Sitting sit(Company& company) { return Sitting(portal, company, GetParam()); }

  /// Adds a row to an editor and gives it a name.
  template <class Screen>
  static Screen& addNamed(const QString& name) {
    auto& screen = defaultInstance<Screen>();
    pressKey(screen, u"Add"_s);
    screen.txtFields(2)->setText(name);
    return screen;
  }

  /// What the search of all goods finds under a name: for each row its number, price and company.
  static QList<QStringList> found(const QString& name) {
    auto& search = defaultInstance<FrmSelect>();
    search.SSTab1->setTab(1);
    search.TxtField1(0)->setText(name);
    QTest::mouseClick(search.Command1, Qt::LeftButton);
    QList<QStringList> rows;
    for (int row = 0; row < search.ListView1->itemCount(); ++row) {
      const ListItem* item = search.ListView1->itemAt(row);
      rows.append({item->text(), item->subItem(1), item->subItem(2), item->subItem(4)});
    }
    return rows;
  }

  static void pickFirstCategory(FrmXIMU_WEB& goods) {
    new WhenShown(
        &app().tray, [](QWidget& widget) { return dynamic_cast<frmGetLEBI*>(&widget) != nullptr; },
        [](QWidget& widget) {
          auto& picker = static_cast<frmGetLEBI&>(widget);
          TreeNode* node = picker.TreeView1->root(0)->childNode(0);
          QTest::mouseClick(picker.TreeView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                            picker.TreeView1->labelRect(node).center());
          picker.commandC->click();
        });
    QTest::mouseClick(goods.command(u"Command1"_s), Qt::LeftButton);
  }
  /// Unticks the shown row of an editor and saves that.
  static void end(RecordEditor& editor, ListItem& row, const QString& save) {
    clickCheckBox(*editor.ListView1, row);
    EXPECT_FALSE(row.isChecked());
    pressKey(editor, save);
  }

  PortalProcess portal;
  Company seller{1, u"1001"_s};
  Company buyer{2, u"1002"_s};
};

TEST_P(GoodsLife, BornLocalAndSentCategorizedFoundByAnotherCompanyAndEndedByItsCheckMark) {
  int portalId = 0;
  {
    auto at = sit(seller);
    ASSERT_EQ(at.state.gQiyeId, 1);
    auto& local = addNamed<FrmXIMU>(u"论语新注"_s);
    // The list was empty, so the new row must be clicked before it can be saved.
    clickRow(*local.ListView1, *local.ListView1->itemAt(0));
    local.txtFields(1)->setText(u"LY-1"_s);
    local.txtFields(3)->setText(u"38.50"_s);
    local.txtFields(8)->setText(u"第一行\r\n第二行"_s);
    local.txtFields(9)->setText(u"精装,"_s);
    pressKey(local, u"Save"_s);
    EXPECT_EQ(local.StatusBar1->text(), u"网络保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    portalId = seller.store.value(u"SELECT R_ID FROM XIMU"_s).toInt();
    ASSERT_GT(portalId, 0);

    auto& web = defaultInstance<FrmXIMU_WEB>();
    ListItem* row = findRow(*web.ListView1, web.Command5, u"论语新注"_s);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->key(), u"%1 ID"_s.arg(portalId));
    EXPECT_TRUE(row->isChecked());
    clickRow(*web.ListView1, *row);
    EXPECT_EQ(web.txtFields(8)->text(), u"第一行\r\n第二行"_s);
    EXPECT_EQ(web.txtFields(9)->text(), u"精装,"_s);
    pickFirstCategory(web);
    const QString category = web.txtFields(6)->text();
    EXPECT_NE(category, QString());
    pressKey(web, u"Update"_s);
    EXPECT_EQ(web.StatusBar1->text(), u"保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    EXPECT_EQ(seller.store.rows(u"SELECT R_ID,XIMU,LEBI,SHXI FROM XIMU"_s),
              QList<QVariantList>({{portalId, u"论语新注"_s, category, u"精装,"_s}}))
        << "the one local row, with the category that only the portal screen picks";
  }
  {
    auto at = sit(buyer);
    EXPECT_EQ(found(u"论语新注"_s),
              QList<QStringList>({{u"LY-1"_s, u"论语新注"_s, u"38.50"_s, u"青禾书店"_s}}));
  }
  {
    auto at = sit(seller);
    auto& local = defaultInstance<FrmXIMU>();
    end(local, *local.ListView1->itemAt(0), u"Save"_s);
    EXPECT_EQ(local.StatusBar1->text(), u"网络保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    EXPECT_EQ(at.onPortal(u"XIMU"_s, {u"ximu"_s, u"noth"_s}, portalId),
              QStringList({u"论语新注"_s, u"False"_s}));
  }
  {
    auto at = sit(buyer);
    EXPECT_TRUE(found(u"论语新注"_s).isEmpty());
  }
}

TEST_P(GoodsLife, BornOnThePortalMirroredFoundByAnotherCompanyAndEndedByItsCheckMark) {
  double portalId = 0;
  {
    auto at = sit(seller);
    auto& web = addNamed<FrmXIMU_WEB>(u"孟子新注"_s);
    web.txtFields(1)->setText(u"MZ-1"_s);
    web.txtFields(3)->setText(u"25"_s);
    web.txtFields(8)->setText(u"介绍一"_s);
    web.txtFields(9)->setText(u"平装,"_s);
    web.txtFields(10)->setText(u"留言一"_s);
    pressKey(web, u"Update"_s);
    EXPECT_EQ(web.StatusBar1->text(), u"保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    portalId = seller.store.value(u"SELECT R_ID FROM XIMU"_s).toInt();
    EXPECT_EQ(web.ListView1->selectedItem()->key(), u"%1 ID"_s.arg(portalId));
    EXPECT_EQ(
        seller.store.rows(u"SELECT QIYE_ID,XIMU_NO,XIMU,JIGEX,ZHKO,JISH,SHXI,NOTH FROM XIMU"_s),
        QList<QVariantList>(
            {{1, u"MZ-1"_s, u"孟子新注"_s, u"25"_s, u"说明"_s, u"介绍一"_s, QVariant(), 1}}));
    EXPECT_EQ(at.onPortal(u"XIMU"_s, {u"zhko"_s, u"shxi"_s, u"jish"_s, u"liuy"_s}, portalId),
              QStringList({u"说明"_s, u"平装,"_s, u"介绍一"_s, u"留言一"_s}));
  }
  {
    auto at = sit(buyer);
    EXPECT_EQ(found(u"孟子新注"_s),
              QList<QStringList>({{u"MZ-1"_s, u"孟子新注"_s, u"25"_s, u"青禾书店"_s}}));
  }
  {
    auto at = sit(seller);
    auto& web = defaultInstance<FrmXIMU_WEB>();
    ListItem* row = findRow(*web.ListView1, web.Command5, u"孟子新注"_s);
    ASSERT_NE(row, nullptr);
    clickRow(*web.ListView1, *row);
    end(web, *row, u"Update"_s);
    EXPECT_EQ(web.StatusBar1->text(), u"保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    EXPECT_EQ(seller.store.value(u"SELECT NOTH FROM XIMU"_s).toInt(), 0);
  }
  {
    auto at = sit(buyer);
    EXPECT_TRUE(found(u"孟子新注"_s).isEmpty());
    EXPECT_EQ(at.onPortal(u"XIMU"_s, {u"ximu"_s, u"noth"_s}, portalId),
              QStringList({u"孟子新注"_s, u"False"_s}))
        << "nothing is ever deleted";
  }
}

TEST_P(GoodsLife, AMarkInANameCutsItOnThePortalScreenAndPassesWholeOnTheLocalOne) {
  auto at = sit(seller);
  // Through the relay the request travels encoded, so that a "#" cuts nothing.
  const QList<QStringList> names = {{u"山 海"_s, u"山"_s},
                                    {u"R&D手册"_s, u"R"_s},
                                    {u"C#入门"_s, GetParam() == 1 ? u"C#入门"_s : u"C"_s},
                                    {u"'引号'+\"号\""_s, u"'引号'+\"号\""_s}};
  for (const QStringList& name : names) {
    auto& web = addNamed<FrmXIMU_WEB>(name[0]);
    web.txtFields(4)->setText(u"八折"_s);
    pressKey(web, u"Update"_s);
    EXPECT_EQ(web.StatusBar1->text(), u"保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    const double id = Val(web.ListView1->selectedItem()->key());
    EXPECT_EQ(at.onPortal(u"XIMU"_s, {u"ximu"_s}, id), QStringList{name[1]});
    EXPECT_EQ(web.ListView1->selectedItem()->text(), name[0])
        << "the list and the mirror are whole";
  }
  EXPECT_EQ(seller.store.value(u"SELECT XIMU FROM XIMU"_s).toString(), u"山 海"_s);

  auto& local = defaultInstance<FrmXIMU>();
  for (int row = 0; row < names.size(); ++row) {
    clickRow(*local.ListView1, *local.ListView1->itemAt(row));
    pressKey(local, u"Add"_s);
    local.txtFields(2)->setText(names[row][0]);
    pressKey(local, u"Save"_s);
    EXPECT_EQ(local.StatusBar1->text(), u"网络保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    const int id = seller.store.value(u"SELECT R_ID FROM XIMU ORDER BY id DESC LIMIT 1"_s).toInt();
    EXPECT_EQ(at.onPortal(u"XIMU"_s, {u"ximu"_s}, id), QStringList{names[row][0]});
  }
}

TEST_P(GoodsLife, AServicesNameReachesThePortalWholeFromBothScreens) {
  auto at = sit(seller);
  auto& web = addNamed<FrmFUWU_WEB>(u"送 货&安装"_s);
  pressKey(web, u"Update"_s);
  ASSERT_TRUE(at.isQuiet());
  EXPECT_EQ(at.onPortal(u"FUWU"_s, {u"ximu"_s}, Val(web.ListView1->selectedItem()->key())),
            QStringList{u"送 货&安装"_s});

  auto& local = defaultInstance<FrmFUWU>();
  clickRow(*local.ListView1, *local.ListView1->itemAt(0));
  local.txtFields(2)->setText(u"代 订&代购"_s);
  pressKey(local, u"Save"_s);
  EXPECT_EQ(local.StatusBar1->text(), u"网络保存成功！！！"_s);
  ASSERT_TRUE(at.isQuiet());
  EXPECT_EQ(at.onPortal(u"FUWU"_s, {u"ximu"_s}, Val(web.ListView1->selectedItem()->key())),
            QStringList{u"代 订&代购"_s})
      << "the mirror is the same service";
}

TEST_P(GoodsLife, ALiveBrandIsOfferedToOtherCompaniesAndOneThatIsOffIsNot) {
  Company maker{6, u"1006"_s};
  Company user{7, u"1007"_s};
  const QString name = u"青松 & 白鹤"_s;
  QString key;
  {
    auto at = sit(maker);
    ASSERT_EQ(at.state.gHayeId, 4);
    auto& brands = addNamed<FrmMUMU_WEB>(name);
    pressKey(brands, u"Update"_s);
    EXPECT_EQ(brands.StatusBar1->text(), u"保存成功！！！"_s);
    ASSERT_TRUE(at.isQuiet());
    key = brands.ListView1->selectedItem()->key();
  }
  {
    auto at = sit(user);
    auto& goods = defaultInstance<FrmXIMU_WEB>();
    pressKey(goods, u"Add"_s);
    new WhenShown(
        &at.state.tray,
        [](QWidget& widget) { return dynamic_cast<frmGetMUMU*>(&widget) != nullptr; },
        [&](QWidget& widget) {
          auto& picker = static_cast<frmGetMUMU&>(widget);
          if (ListItem* row = findRow(*picker.ListView1, picker.Command2, name)) {
            clickRow(*picker.ListView1, *row);
          }
          picker.commandC->click();
        });
    QTest::mouseClick(goods.command(u"Command2"_s), Qt::LeftButton);
    EXPECT_EQ(goods.txtFields(7)->text(), name);
    EXPECT_EQ(goods.txtFields(7)->Tag, key);
    at.boxes->expect(Answer::No);
    EXPECT_TRUE(goods.unload());
  }
  {
    auto at = sit(maker);
    auto& brands = defaultInstance<FrmMUMU_WEB>();
    ListItem* row = findRow(*brands.ListView1, brands.Command5, name);
    ASSERT_NE(row, nullptr);
    clickRow(*brands.ListView1, *row);
    end(brands, *row, u"Update"_s);
    ASSERT_TRUE(at.isQuiet());
    ASSERT_TRUE(brands.unload());
    auto& again = defaultInstance<FrmMUMU_WEB>();
    row = findRow(*again.ListView1, again.Command5, name);
    ASSERT_NE(row, nullptr) << "its own screen keeps it";
    EXPECT_FALSE(row->isChecked());
    auto& picker = defaultInstance<frmGetMUMU>();
    picker.showForm();
    EXPECT_EQ(findRow(*picker.ListView1, picker.Command2, name), nullptr);
  }
}

INSTANTIATE_TEST_SUITE_P(SubmitModes, GoodsLife, testing::Values(qint16{1}, qint16{2}));

}  // namespace
