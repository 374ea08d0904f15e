// The screens of published content against a running portal with its demo trade.

#include <gtest/gtest.h>

#include <QTest>

#include "TreeFixture.h"
#include "catalogue/FrmQUST_WEB.h"
#include "content/trees/frmDOCU_WEB.h"
#include "content/trees/frmPUBL_WEB.h"
#include "content/trees/frmXIWE_WEB.h"
#include "portal/RequestBuilder.h"
#include "shell/PortalMethod.h"
#include "support/PortalProcess.h"
#include "values/numbers.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// As enterprise 1 of the demo trade, in a submit mode.
class OnPortal : public TreeFixture, public testing::WithParamInterface<qint16> {
 protected:
  OnPortal() {
    state.gWebServer = u"HTTP://"_s + running.host() + u"/"_s;
    state.gUnicode = GetParam();
    beCompany(1, 2);
    state.gQiyeId = 1;
    const QString url = RequestBuilder(state.gWebServer, paths::login)
                            .encoded(u"USER_NO"_s, u"1001"_s)
                            .encoded(u"USER_PASS"_s, u"123456"_s)
                            .encoded(u"SOFT_VER"_s, u"1.0"_s)
                            .url();
    bool loggedIn = false;
    EXPECT_TRUE(readPortal(url, EmptyAnswer::IsFailure, [&loggedIn](GetHtml& html) {
      loggedIn = html.GetRowItem().toInt() > 0;
      return true;
    }));
    EXPECT_TRUE(loggedIn);
  }

  TreeScreen& open() override { return screen_ ? *screen_ : defaultInstance<frmPUBL_WEB>(); }
  template <class Screen>
  void use() {
    screen_ = &defaultInstance<Screen>();
  }
  /// Leaves the screen and opens it again.
  template <class Screen>
  void reopen() {
    leave();
    use<Screen>();
  }

  TreeNode* at(const QStringList& path) {
    TreeNode* node = root();
    for (const QString& step : path) {
      if (node != nullptr) node = childOf(node, step);
    }
    return node;
  }
  /// Clicks down to a node, each step loading what is below it.
  void clickTo(const QStringList& path) {
    for (qsizetype length = 1; length <= path.size(); ++length) {
      TreeNode* node = at(path.first(length));
      ASSERT_NE(node, nullptr) << path.at(length - 1).toStdString();
      click(node);
    }
  }
  static double idOf(const TreeNode* node) { return Val(node->Key); }
  void waitForPost() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return !state.inetQuotes.StillExecuting(); }, 60'000));
  }

  /// One cell as the portal tells it.
  QString cell(const QString& table, double id, const QString& column) {
    const QString url = RequestBuilder(state.gWebServer, paths::productRows)
                            .encoded(u"STABLE"_s, table)
                            .encoded(u"STRDATA"_s, column + u","_s)
                            .encoded(u"STOTHER"_s, u"id=%1"_s.arg(id))
                            .url();
    QString value = u"no row"_s;
    readPortal(url, EmptyAnswer::IsFailure, [&value](GetHtml& html) {
      value = html.GetRowItem();
      return true;
    });
    return value;
  }

  template <class Screen>
  void keepsATreeOfTexts(const QString& table, const QString& parent, const QString& child,
                         const QString& childText, const QString& ofAll) {
    use<Screen>();
    clickTo({parent, child});
    EXPECT_EQ(text(), childText);
    click(at({parent}));
    press(u"Add"_s);
    typeLabel(u"R&D <第七辑>"_s);
    clickCheckBox(tree().selectedNode());
    const QString body = u"第一行 a<b & \"c\"\r\n\r\n第三行 100%"_s;
    screen().txtFields(0)->setText(body);
    press(u"Update"_s);
    EXPECT_EQ(status(), u"保存成功！！！"_s);
    const double id = idOf(tree().selectedNode());
    ASSERT_GT(id, 0);
    waitForPost();

    reopen<Screen>();
    click(at({parent}));
    TreeNode* kept = at({parent, u"R&D"_s});
    ASSERT_NE(kept, nullptr) << "what stands between angle brackets is lost on the way back";
    EXPECT_EQ(kept->Key, u"%1 ID"_s.arg(id));
    EXPECT_TRUE(kept->isChecked());
    click(kept);
    EXPECT_EQ(text(), u"第一行 a"_s);

    typeLabel(u"第七辑"_s);
    screen().txtFields(0)->setText(u"已经出版。\r\n欢迎订货。"_s);
    press(u"Update"_s);
    EXPECT_EQ(status(), u"保存成功！！！"_s);
    waitForPost();
    click(kept);
    EXPECT_EQ(text(), u"已经出版。\r\n欢迎订货。"_s);
    EXPECT_EQ(cell(table, id, u"docu_no"_s), u"第七辑"_s);

    // What belongs to all cannot be changed even when its mark is.
    click(at({ofAll}));
    EXPECT_EQ(allowed(), QStringList(u"Add"_s));
  }

  PortalProcess running;

 private:
  TreeScreen* screen_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Modes, OnPortal, testing::Values(qint16{1}, qint16{2}),
                         [](const auto& mode) { return mode.param == 1 ? "Mixed" : "Get"; });

TEST_P(OnPortal, ForumsAreReadMadeAndRenamedAndLeafPostsDeleted) {
  use<frmPUBL_WEB>();
  EXPECT_EQ(below(root()), QStringList({u"1 FID|综合讨论|glob"_s, u"2 FID|行业消息|glob"_s,
                                        u"3 FID|青禾读书会|forum"_s, u"4 FID|馆配交流|forum"_s}));
  const QString question = u"书标贴在书脊下方三厘米处可以吗？"_s;
  const QString reply = u"可以，请在订单里注明。"_s;
  clickTo({u"馆配交流"_s, question});
  EXPECT_EQ(text(), u"黄惊蛰\r\n2026-8-20 10:02:00\r\n1\r\n"_s + question);
  press(u"Delete"_s);
  EXPECT_EQ(status(), u"删除成功！！！"_s);
  EXPECT_NE(at({u"馆配交流"_s, question}), nullptr) << "the portal keeps what has replies";

  click(at({u"馆配交流"_s, question, reply}));
  press(u"Delete"_s);
  EXPECT_EQ(at({u"馆配交流"_s, question, reply}), nullptr);
  EXPECT_EQ(cell(u"publish"_s, 8, u"content"_s), u"no row"_s);
  click(at({u"馆配交流"_s, question}));
  EXPECT_TRUE(text().contains(u"\r\n0\r\n"_s)) << "one reply less";

  click(root());
  press(u"Add"_s);
  typeLabel(u"新书预告"_s);
  TreeNode* added = tree().selectedNode();
  clickCheckBox(added);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  const double id = idOf(added);
  EXPECT_EQ(added->Key, u"%1 ID"_s.arg(id));
  EXPECT_EQ(cell(u"forum"_s, id, u"noth"_s), u"True"_s);
  EXPECT_EQ(cell(u"forum"_s, id, u"border_name"_s), u"青禾书店"_s);
  typeLabel(u"新书快讯"_s);
  press(u"Update"_s);

  click(at({u"综合讨论"_s}));
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s) << "a forum of all is nobody's";
  reopen<frmPUBL_WEB>();
  EXPECT_TRUE(below(root()).contains(u"%1 FID|新书快讯|forum"_s.arg(id)));
}

TEST_P(OnPortal, NewsAreKeptInATree) {
  keepsATreeOfTexts<frmXIWE_WEB>(u"xiwe"_s, u"书店新闻"_s, u"青禾文库第六辑出版"_s,
                                 u"第六辑六种已经到店。\r\n欢迎各书店订货。"_s, u"平台公告"_s);
}

TEST_P(OnPortal, DocumentsAreKeptInATree) {
  keepsATreeOfTexts<frmDOCU_WEB>(u"docu"_s, u"青禾书店文件"_s, u"馆配合同样本"_s,
                                 u"甲方：\r\n乙方：\r\n双方约定如下……"_s, u"交易规则"_s);
}

TEST_P(OnPortal, SurveysAreListedThoseOffFirstChangedAndAdded) {
  auto& surveys = defaultInstance<FrmQUST_WEB>();
  auto& list = *surveys.ListView1;
  ASSERT_EQ(list.itemCount(), 3);
  EXPECT_FALSE(list.itemAt(0)->isChecked());
  EXPECT_TRUE(list.itemAt(1)->isChecked());
  EXPECT_LT(Val(list.itemAt(1)->key()), Val(list.itemAt(2)->key()));
  EXPECT_EQ(surveys.txtFields(2)->text(), list.itemAt(0)->text());

  const auto press = [&](const QString& key) {
    QTest::mouseClick(surveys.Toolbar1->widgetForAction(surveys.Toolbar1->button(key)),
                      Qt::LeftButton);
  };
  surveys.txtFields(3)->setText(u"谢谢。\r\n结果下月公布。"_s);
  press(u"Update"_s);
  EXPECT_EQ(surveys.StatusBar1->text(), u"保存成功！！！"_s);
  const double id = Val(list.itemAt(0)->key());
  EXPECT_EQ(cell(u"QUST"_s, id, u"answ"_s), u"谢谢。\r\n结果下月公布。"_s);

  press(u"Add"_s);
  surveys.txtFields(2)->setText(u"您读电子书吗？"_s);
  press(u"Update"_s);
  EXPECT_EQ(surveys.StatusBar1->text(), u"保存成功！！！"_s);
  EXPECT_TRUE(surveys.unload());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  auto& again = *defaultInstance<FrmQUST_WEB>().ListView1;
  ASSERT_EQ(again.itemCount(), 4);
  EXPECT_EQ(again.itemAt(3)->text(), u"您读电子书吗？"_s);
  EXPECT_TRUE(again.itemAt(3)->isChecked());
}

}  // namespace
