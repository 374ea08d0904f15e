#include "content/trees/TreeEditor.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "TreeFixture.h"
#include "content/trees/frmDOCU_WEB.h"
#include "content/trees/frmXIWE_WEB.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct Twin {
  const char* name;
  TreeScreen& (*open)();
  bool (*isOpen)();
  QString caption;
  QString table;
  QString rootText;
  QString newItem;
  QString filter;
  QString bytesOfFilter;
};

void PrintTo(const Twin& twin, std::ostream* out) {
  *out << twin.name;
}

const Twin twins[] = {
    {"News", []() -> TreeScreen& { return defaultInstance<frmXIWE_WEB>(); },
     [] { return isLoaded<frmXIWE_WEB>(); }, u"新闻登记"_s, u"xiwe"_s, u"新闻"_s, u"新添新闻"_s,
     u" and (qiye_id=0 or qiye_id=25)"_s, u"%20%61%6E%64%20%28"_s},
    {"Documents", []() -> TreeScreen& { return defaultInstance<frmDOCU_WEB>(); },
     [] { return isLoaded<frmDOCU_WEB>(); }, u"文件登记"_s, u"docu"_s, u"文档"_s, u"新添文件"_s,
     u" and(qiye_id=0 or qiye_id=25)"_s, u"%20%61%6E%64%28"_s},
};

/// Below the root: an item of all (1, published) and two of the company (4 published, 8 not).
class TreeEditors : public TreeFixture, public testing::WithParamInterface<Twin> {
 protected:
  TreeEditors() {
    beCompany(1, 2);
    answer({page({{u"1"_s, u"平台公告"_s, u"True"_s, u"0"_s},
                  {u"4"_s, u"书店动态"_s, u"True"_s, u"25"_s},
                  {u"8"_s, u"冬季书市"_s, u"False"_s, u"25"_s}})});
  }

  TreeScreen& open() override { return GetParam().open(); }

  TreeNode* ofAll() { return root()->childNode(0); }
  TreeNode* own() { return root()->childNode(1); }
  QString ownKind() const { return GetParam().table; }

  /// An item of the company, without children, shown.
  void openItem() {
    screen();
    answer({page({}), page({{u"正文第一行<br>第二行"_s}})});
    click(own());
  }

  QString itemsTarget(const QString& parent) const {
    return rowsTarget({{u"STABLE"_s, GetParam().table},
                       {u"STRDATA"_s, u"id,docu_no,noth,qiye_id,"_s},
                       {u"STOTHER"_s, u"P_ID="_s + parent + GetParam().filter},
                       {u"STORDER"_s, u"ID"_s}});
  }
  QString itemTarget(const QString& id) const {
    return rowsTarget({{u"STABLE"_s, GetParam().table},
                       {u"STRDATA"_s, u"docu,"_s},
                       {u"STOTHER"_s, u"ID="_s + id},
                       {u"STORDER"_s, u"ID"_s}});
  }
  QString headTarget(const QString& id, const QString& parent, const QString& title,
                     const QString& live) const {
    return addTarget({{u"stable"_s, GetParam().table},
                      {u"stother"_s, u"id="_s + id},
                      {u"QIYE_ID"_s, u"25"_s},
                      {u"QIYE"_s, u"青禾书店"_s},
                      {u"P_ID"_s, parent},
                      {u"DOCU_NO"_s, title},
                      {u"NOTH"_s, live}});
  }
  QString body(const QString& id, const QString& docu) const {
    return query(
               {{u"stable"_s, GetParam().table}, {u"stother"_s, u"id="_s + id}, {u"DOCU"_s, docu}})
        .mid(1);
  }
  /// The last request, once it has come, must be the post of a body.
  void expectPosted(int count, const QString& expectedBody) {
    ASSERT_TRUE(portal.waitForRequests(count));
    EXPECT_EQ(portal.requests().size(), count);
    EXPECT_TRUE(
        portal.requests().last().startsWith("POST /_vti_product/_vti_add.asp HTTP/1.1\r\n"));
    EXPECT_TRUE(
        portal.requests().last().contains("Content-Type: application/x-www-form-urlencoded\r\n"));
    EXPECT_EQ(QString::fromLatin1(portal.body(count - 1)), expectedBody);
  }
};

INSTANTIATE_TEST_SUITE_P(Both, TreeEditors, testing::ValuesIn(twins),
                         [](const auto& twin) { return std::string(twin.param.name); });

TEST_P(TreeEditors, LoadShowsTheItemsOfAllAndTheCompanys) {
  EXPECT_EQ(screen().windowTitle(), GetParam().caption);
  EXPECT_EQ(targets(), QStringList(itemsTarget(u"0"_s)));
  EXPECT_TRUE(targets().first().contains(GetParam().bytesOfFilter));
  ASSERT_EQ(tree().rootCount(), 1);
  EXPECT_EQ(root()->Key, u"0 ID"_s);
  EXPECT_EQ(root()->text(), GetParam().rootText);
  EXPECT_EQ(root()->Tag, u"bume"_s);
  EXPECT_TRUE(root()->isExpanded());
  EXPECT_EQ(below(root()), QStringList({u"1 ID|平台公告|glob"_s, u"4 ID|书店动态|"_s + ownKind(),
                                        u"8 ID|冬季书市|"_s + ownKind()}));
  EXPECT_TRUE(ofAll()->isChecked());
  EXPECT_TRUE(own()->isChecked());
  EXPECT_FALSE(root()->childNode(2)->isChecked());
  EXPECT_FALSE(own()->icon(0).isNull());
  EXPECT_EQ(tree().selectedNode(), nullptr);
  EXPECT_EQ(allowed(), QStringList(u"Add"_s));
}

TEST_P(TreeEditors, OnlyTheWordTrueTicksAnItem) {
  answer({page({{u"1"_s, u"a"_s, u"true"_s, u"25"_s}, {u"2"_s, u"b"_s, u"1"_s, u"25"_s}})});
  EXPECT_FALSE(root()->childNode(0)->isChecked());
  EXPECT_FALSE(root()->childNode(1)->isChecked());
}

TEST_P(TreeEditors, ASilentPortalLeavesTheRootAlone) {
  answer({noTable()});
  EXPECT_EQ(below(root()), QStringList());
  EXPECT_EQ(status(), QString());
}

TEST_P(TreeEditors, AddAtLoadHasNoNodeSelectedAndDoesNothing) {
  press(u"Add"_s);
  EXPECT_EQ(below(root()).size(), 3);
  EXPECT_EQ(text(), QString());
  EXPECT_EQ(allowed(), QStringList(u"Add"_s));
}

TEST_P(TreeEditors, AnItemLoadsItsChildrenAndItsText) {
  screen();
  answer({page({{u"5"_s, u"二楼阅览区开放"_s, u"True"_s, u"25"_s},
                {u"6"_s, u"系统维护"_s, u"False"_s, u"0"_s}}),
          page({{u"第一行<br>第二行"_s}})});
  click(own());
  EXPECT_EQ(targets()[1], itemsTarget(u"4"_s));
  EXPECT_EQ(targets()[2], itemTarget(u"4"_s));
  EXPECT_EQ(below(own()),
            QStringList({u"5 ID|二楼阅览区开放|"_s + ownKind(), u"6 ID|系统维护|glob"_s}));
  EXPECT_TRUE(own()->childNode(0)->isChecked());
  EXPECT_TRUE(own()->isExpanded());
  EXPECT_EQ(text(), u"第一行\r\n第二行"_s);
  EXPECT_EQ(allowed(), QStringList({u"Add"_s, u"Update"_s}));

  answer({page({{u"新的正文"_s}})});
  click(own());
  ASSERT_EQ(portal.requests().size(), 4) << "its children are there";
  EXPECT_EQ(targets()[3], itemTarget(u"4"_s));
  EXPECT_EQ(text(), u"新的正文"_s);
}

TEST_P(TreeEditors, AnItemOfAllGetsChildrenButIsNotChanged) {
  screen();
  answer({page({}), page({{u"通知"_s}})});
  click(ofAll());
  EXPECT_EQ(allowed(), QStringList(u"Add"_s));
  EXPECT_EQ(text(), u"通知"_s);
}

TEST_P(TreeEditors, TheRootAllowsNothingAndAsksForATextThatNobodyHas) {
  openItem();
  const QString before = text();
  answer({page({})});
  click(root());
  EXPECT_EQ(allowed(), QStringList());
  EXPECT_EQ(portal.requests().size(), 4) << "it has children";
  EXPECT_EQ(targets().last(), itemTarget(u"0"_s));
  EXPECT_EQ(text(), before);
}

TEST_P(TreeEditors, ARootWithoutChildrenAsksForThemAgain) {
  answer({noTable(), page({{u"4"_s, u"书店动态"_s, u"True"_s, u"25"_s}}), page({})});
  click(root());
  EXPECT_EQ(targets()[1], itemsTarget(u"0"_s));
  EXPECT_EQ(below(root()), QStringList(u"4 ID|书店动态|"_s + ownKind()));
}

TEST_P(TreeEditors, OnlyTheHighestLevelAdds) {
  for (const qint16 level : {qint16{-1}, qint16{0}, qint16{1}}) {
    state.gUserLevel = level;
    answer({page({{u"4"_s, u"书店动态"_s, u"True"_s, u"25"_s}}), page({})});
    EXPECT_EQ(allowed(), QStringList()) << level;
    click(root()->childNode(0));
    EXPECT_EQ(allowed(), QStringList(u"Update"_s)) << level;
    leave();
  }
}

TEST_P(TreeEditors, EmptyAnswersLeaveTreeAndTextAsTheyWere) {
  openItem();
  const QString before = text();
  answer({noTable()});
  click(root()->childNode(2));
  EXPECT_EQ(below(root()->childNode(2)), QStringList());
  EXPECT_EQ(text(), before);
  EXPECT_EQ(status(), QString());
}

TEST_P(TreeEditors, OfflineAClickAndATickDoNothingButMark) {
  openItem();
  goOffline();
  state.gAccessType = 0;
  const QString before = text();
  click(root());
  EXPECT_EQ(allowed(), QStringList({u"Add"_s, u"Update"_s}));
  EXPECT_EQ(text(), before);
  click(own());
  clickCheckBox(ofAll());
  EXPECT_FALSE(ofAll()->isChecked()) << "the mark itself is the tree's";
  EXPECT_EQ(tree().selectedNode(), own());
  EXPECT_EQ(portal.requests().size(), 3);
}

TEST_P(TreeEditors, UpdateOnTheRootFailsWithoutARequest) {
  openItem();
  goOffline();
  state.gAccessType = 0;
  click(root());
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), 3);
}

TEST_P(TreeEditors, ATickSelectsItsNodeAndSetsTheFlagsWithoutLoading) {
  openItem();
  const QString before = text();
  const auto sent = portal.requests().size();
  clickCheckBox(ofAll());
  EXPECT_EQ(tree().selectedNode(), ofAll());
  EXPECT_EQ(allowed(), QStringList(u"Add"_s));
  clickCheckBox(root());
  EXPECT_EQ(tree().selectedNode(), root());
  EXPECT_EQ(allowed(), QStringList());
  clickCheckBox(own());
  EXPECT_EQ(allowed(), QStringList({u"Add"_s, u"Update"_s}));
  EXPECT_EQ(text(), before);
  EXPECT_EQ(portal.requests().size(), sent) << "the mark goes out with the save";
}

TEST_P(TreeEditors, UpdateSendsTheHeadAndThenTheBody) {
  openItem();
  clickCheckBox(own());
  typeLabel(u"改名 & <新>"_s);
  screen().txtFields(0)->setText(u"第一行\r\n<b>& 第二行"_s);
  answer({page({{u"4"_s}}), {}});
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_EQ(targets()[3], headTarget(u"4"_s, u"0"_s, u"改名 & <新>"_s, u"False"_s));
  expectPosted(5, body(u"4"_s, u"第一行\r\n<b>& 第二行"_s));
  EXPECT_EQ(own()->Key, u"4 ID"_s);
  EXPECT_EQ(own()->text(), u"改名 & <新>"_s);
}

TEST_P(TreeEditors, SaveAsItGoesOverTheWire) {
  openItem();
  screen().txtFields(0)->setText(u"一\r\n<"_s);
  answer({page({{u"4"_s}}), {}});
  press(u"Update"_s);
  const QString table = GetParam().table == u"xiwe" ? u"%78%69%77%65"_s : u"%64%6F%63%75"_s;
  EXPECT_EQ(targets()[3], u"/_vti_product/_vti_add.asp?stable="_s + table +
                              u"&stother=%69%64%3D%34&QIYE_ID=%32%35"
                              "&QIYE=%C7%E0%BA%CC%CA%E9%B5%EA&P_ID=%30"
                              "&DOCU_NO=%CA%E9%B5%EA%B6%AF%CC%AC&NOTH=%54%72%75%65"_s);
  expectPosted(
      5, u"stable="_s + table + u"&stother=%69%64%3D%34&DOCU=%D2%BB%3C%62%72%3E%26%6C%74%3B"_s);
}

TEST_P(TreeEditors, AFailedHeadLeavesTheBodyUnsent) {
  openItem();
  for (const QByteArray& reply : {noTable(), page({{u"0"_s}}), page({{u"拒绝"_s}}), QByteArray()}) {
    screen().StatusBar1->setText({});
    answer({reply});
    const auto sent = portal.requests().size();
    press(u"Update"_s);
    EXPECT_EQ(status(), u"保存失败！！！"_s);
    EXPECT_EQ(portal.requests().size(), sent + 1);
    EXPECT_EQ(own()->Key, u"4 ID"_s);
    EXPECT_FALSE(state.inetQuotes.StillExecuting());
  }
}

TEST_P(TreeEditors, ABodyThatCannotBeStartedFailsTheSave) {
  openItem();
  TreeView* inMainThread = &tree();
  portal.setHandler([this, inMainThread](const QByteArray&) {
    // Once the head is taken, nobody is there for the body.
    QMetaObject::invokeMethod(
        inMainThread, [this] { state.gWebServer = u"nowhere://x/"_s; },
        Qt::BlockingQueuedConnection);
    return ScriptedServer::Reply{.bytes = ScriptedServer::ok(page({{u"44"_s}}))};
  });
  press(u"Update"_s);
  EXPECT_EQ(own()->Key, u"44 ID"_s) << "the head went through";
  EXPECT_EQ(status(), u"保存失败！！！"_s);
}

TEST_P(TreeEditors, EveryRowOfTheHeadsAnswerNamesTheItemAndTheLastOneStays) {
  openItem();
  answer({page({{u"12"_s}, {u"13"_s}}), {}});
  press(u"Update"_s);
  EXPECT_EQ(own()->Key, u"13 ID"_s);
  expectPosted(5, body(u"13"_s, text()));
}

TEST_P(TreeEditors, AHeadAnswerWithoutRowsNamesNothingAndSaves) {
  openItem();
  answer({page({}), {}});
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_EQ(own()->Key, u"4 ID"_s);
  expectPosted(5, body(u"4"_s, text()));
}

TEST_P(TreeEditors, AddMakesAnItemBelowTheSelectedOneThatIsSavedUnderIt) {
  openItem();
  press(u"Add"_s);
  TreeNode* added = own()->childNode(0);
  ASSERT_NE(added, nullptr);
  EXPECT_EQ(below(own()), QStringList(u"|"_s + GetParam().newItem + u"|"_s + ownKind()));
  EXPECT_EQ(tree().selectedNode(), added);
  EXPECT_FALSE(added->isChecked());
  EXPECT_TRUE(own()->isExpanded());
  EXPECT_EQ(text(), GetParam().newItem);
  EXPECT_EQ(allowed(), QStringList({u"Add"_s, u"Update"_s}));
  EXPECT_EQ(portal.requests().size(), 3);

  typeLabel(u"新书到店"_s);
  screen().txtFields(0)->setText(u"三种。"_s);
  answer({page({{u"51"_s}}), {}});
  press(u"Update"_s);
  EXPECT_EQ(targets()[3], headTarget(u"0"_s, u"4"_s, u"新书到店"_s, u"False"_s));
  expectPosted(5, body(u"51"_s, u"三种。"_s));
  EXPECT_EQ(added->Key, u"51 ID"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
}

TEST_P(TreeEditors, AnItemJustAddedTakesItsNameFromTheKeyboardAtOnce) {
  openItem();
  press(u"Add"_s);
  auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->selectedText(), GetParam().newItem);
  QTest::keyClicks(editor, u"R7"_s);
  QTest::keyClick(editor, Qt::Key_Return);
  TreeNode* added = own()->childNode(0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return added->text() == u"R7"_s; }));
  EXPECT_EQ(portal.requests().size(), 3) << "naming asks for nothing";
  press(u"Add"_s);
  editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, u"R8"_s);
  answer({page({{u"53"_s}}), {}});
  press(u"Update"_s);
  EXPECT_EQ(targets()[3], headTarget(u"0"_s, u"0"_s, u"R8"_s, u"False"_s))
      << "what is still being typed counts";
}

TEST_P(TreeEditors, BelowAnItemOfAllTheCompanyAddsItsOwn) {
  screen();
  answer({page({}), page({{u"通知"_s}})});
  click(ofAll());
  press(u"Add"_s);
  EXPECT_EQ(below(ofAll()), QStringList(u"|"_s + GetParam().newItem + u"|"_s + ownKind()));
  answer({page({{u"52"_s}}), {}});
  press(u"Update"_s);
  EXPECT_EQ(targets()[3], headTarget(u"0"_s, u"1"_s, GetParam().newItem, u"False"_s));
}

TEST_P(TreeEditors, AnItemJustAddedLoadsTheChildrenOfZeroAndIsAParentZero) {
  openItem();
  press(u"Add"_s);
  TreeNode* added = own()->childNode(0);
  answer({page({{u"1"_s, u"平台公告"_s, u"True"_s, u"0"_s}}), page({})});
  click(added);
  EXPECT_EQ(targets()[3], itemsTarget(u"0"_s));
  EXPECT_EQ(targets()[4], itemTarget(u"0"_s));
  EXPECT_EQ(below(added), QStringList(u"1 ID|平台公告|glob"_s)) << "equal keys are allowed";
  press(u"Add"_s);
  answer({page({{u"60"_s}}), {}});
  press(u"Update"_s);
  EXPECT_EQ(targets()[5], headTarget(u"0"_s, u"0"_s, GetParam().newItem, u"False"_s));
}

TEST_P(TreeEditors, LabelsOfAllNodesAreEditedAndStayLocal) {
  openItem();
  const auto sent = portal.requests().size();
  for (TreeNode* node : {root(), ofAll(), own()}) {
    tree().setSelectedNode(node);
    typeLabel(u"改名"_s);
    tree().finishLabelEdit();
    EXPECT_EQ(node->text(), u"改名"_s);
  }
  EXPECT_EQ(portal.requests().size(), sent);
}

TEST_P(TreeEditors, InTheModeThatFetchesNothingASaveFails) {
  openItem();
  state.gUnicode = 0;
  const auto sent = portal.requests().size();
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), sent);
}

TEST_P(TreeEditors, ExitLeavesAlsoWithoutALink) {
  openItem();
  goOffline();
  state.gAccessType = 0;
  links->asked.clear();
  press(u"Exit"_s);
  EXPECT_FALSE(GetParam().isOpen());
  EXPECT_EQ(links->asked, QStringList()) << "the toolbar asks for no link";
}

TEST_P(TreeEditors, ChangesAreDroppedWithoutAQuestion) {
  openItem();
  screen().txtFields(0)->setText(u"未保存"_s);
  answer({page({}), page({{u"另一条"_s}})});
  click(root()->childNode(2));
  EXPECT_EQ(text(), u"另一条"_s);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(boxes->asked.size(), 0);
}

}  // namespace
