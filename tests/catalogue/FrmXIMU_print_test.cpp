#include <gtest/gtest.h>

#include "GoodsFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class FrmXIMUPrint : public GoodsFixture {
 protected:
  static QWidget* report() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == u"rptXIMU" && window->isVisible()) return window;
    }
    return nullptr;
  }
  ~FrmXIMUPrint() override { delete report(); }

  /// The report's rows, exported through its own action.
  QString csv() {
    const QString path = settingsFolder.filePath(u"list.csv"_s);
    boxes->expectFile(path);
    report()->findChild<QAction*>(u"CSV"_s)->trigger();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }
};

TEST_F(FrmXIMUPrint, OpensTheGoodsListOfTheCompanyWithoutBlocking) {
  addGoods(3, 0, u"别家的书"_s, true, 2);
  press(u"Print"_s);
  ASSERT_NE(report(), nullptr);
  EXPECT_TRUE(report()->windowTitle().startsWith(u"商品目录单"_s));
  EXPECT_FALSE(report()->isModal());
  const QString rows = csv();
  EXPECT_TRUE(rows.contains(u"大学语文"_s));
  EXPECT_TRUE(rows.contains(u"高等数学"_s));
  EXPECT_TRUE(rows.contains(u"25.50"_s));
  EXPECT_FALSE(rows.contains(u"别家的书"_s));
  EXPECT_EQ(status(), QString()) << "nothing was edited, so nothing is saved";
}

TEST_F(FrmXIMUPrint, SavesUnsavedEditsLocallyFirstAndShowsThem) {
  type(2, u"刚改的名字"_s);
  press(u"Print"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
  ASSERT_NE(report(), nullptr);
  EXPECT_TRUE(csv().contains(u"刚改的名字"_s));
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(boxes->asked.isEmpty()) << "nothing is left unsaved";
}

TEST_F(FrmXIMUPrint, TheReportStaysWhenTheScreenGoes) {
  press(u"Print"_s);
  EXPECT_TRUE(screen().unload());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  ASSERT_NE(report(), nullptr);
  EXPECT_TRUE(csv().contains(u"大学语文"_s));
}

TEST_F(FrmXIMUPrint, AFailedSaveIsToldAndTheListPrintsTheOldRow) {
  type(2, u"改不了"_s);
  store.exec(u"CREATE TRIGGER refuse BEFORE UPDATE ON XIMU BEGIN SELECT RAISE(ABORT,'no'); END"_s);
  press(u"Print"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  ASSERT_NE(report(), nullptr);
  EXPECT_TRUE(csv().contains(u"大学语文"_s));
}

}  // namespace
