#include <gtest/gtest.h>

#include "catalogue/pickers/frmGetCYXX.h"
#include "catalogue/pickers/frmGetLEBI.h"
#include "catalogue/pickers/frmGetMUMU.h"
#include "catalogue/pickers/frmGetSHXI.h"
#include "support/PickerFixture.h"
#include "support/PortalProcess.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// The pickers of a bookshop at a running portal, in one submit mode.
class RealPickers : public PickerFixture, public testing::WithParamInterface<qint16> {
 protected:
  RealPickers() {
    beCompany(1, 0);
    state.gWebServer = u"HTTP://"_s + running.host() + u"/"_s;
    state.gUnicode = GetParam();
  }

  PortalProcess running;
};

TEST_P(RealPickers, ProducersOfTheIndustryComeInTwoPages) {
  const Choice choice = pick<frmGetCYXX>([](frmGetCYXX& picker) {
    EXPECT_EQ(picker.ListView1->itemCount(), 10);
    press(picker.Command2);
    EXPECT_EQ(picker.Command2->text(), u"100%"_s);
    EXPECT_EQ(picker.ListView1->itemCount(), 14);
    picker.Text1->setText(u"古籍"_s);
    press(picker.command1);
    press(picker.commandC);
  });
  EXPECT_EQ(choice.id, u"11 ID"_s);
  EXPECT_EQ(choice.name, u"松间古籍出版社"_s);
}

TEST_P(RealPickers, BrandsAreThoseOfAllCompaniesThatAreLive) {
  auto& picker = defaultInstance<frmGetMUMU>();
  QStringList brands;
  for (int row = 0; row < picker.ListView1->itemCount(); ++row) {
    brands.append(picker.ListView1->itemAt(row)->text());
  }
  EXPECT_TRUE(brands.contains(u"青禾文库"_s) && brands.contains(u"四时"_s));
  EXPECT_FALSE(brands.contains(u"青禾少年"_s)) << "not live";
}

TEST_P(RealPickers, CategoriesGrowToTheirSecondLevel) {
  const Choice choice = pick<frmGetLEBI>([](frmGetLEBI& picker) {
    auto* tree = picker.TreeView1;
    const auto pressNode = [tree](TreeNode* node) {
      QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                        tree->visualItemRect(node).topLeft() + QPoint(25, 5));
    };
    TreeNode* literature = tree->root(0)->childNode(0);
    pressNode(literature);
    ASSERT_EQ(literature->childCount(), 4);
    pressNode(literature->childNode(1));
    press(picker.commandC);
  });
  EXPECT_EQ(choice.id, u"15 XID"_s);
  EXPECT_EQ(choice.name, u"散文"_s);
}

TEST_P(RealPickers, AttributesAreThoseOfTheKind) {
  const QList<QStringList> kinds = {{u"作者"_s, u"版次"_s, u"页数"_s, u"装帧"_s, u"开本"_s},
                                    {u"服务范围"_s, u"服务时间"_s},
                                    {u"创立年份"_s, u"产地"_s}};
  for (qint16 kind = 0; kind < 3; ++kind) {
    state.gShxiKind = kind;
    auto& grid = defaultInstance<frmGetSHXI>();
    QStringList names;
    for (int row = 0; row < grid.ListView1->itemCount(); ++row) {
      names.append(grid.ListView1->itemAt(row)->text());
    }
    EXPECT_EQ(names, kinds[kind]);
    grid.unload();
  }
}

INSTANTIATE_TEST_SUITE_P(MixedAndDirect, RealPickers, testing::Values(qint16{1}, qint16{2}));

}  // namespace
