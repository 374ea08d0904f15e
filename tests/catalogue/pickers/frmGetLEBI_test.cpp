#include "catalogue/pickers/frmGetLEBI.h"

#include <gtest/gtest.h>

#include "portal/url_encode.h"
#include "support/PickerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> top = {{u"13"_s, u"文学"_s}, {u"18"_s, u"历史"_s}};
const QList<QStringList> literature = {{u"14"_s, u"小说"_s}, {u"15"_s, u"散文"_s}};

class Categories : public PickerFixture {
 protected:
  Categories() {
    beCompany(1, 0);
    portal.answerWith({page(top), page(literature), page({})});
  }

  static TreeNode* branch(frmGetLEBI& screen, int index) {
    return screen.TreeView1->root(0)->childNode(index);
  }
  static void pressNode(frmGetLEBI& screen, TreeNode* node,
                        Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(screen.TreeView1->viewport(), button, {}, middle(screen, node));
    QTest::mouseRelease(screen.TreeView1->viewport(), button, {}, middle(screen, node));
  }
  static QPoint middle(const frmGetLEBI& screen, TreeNode* node) {
    return screen.TreeView1->visualItemRect(node).topLeft() + QPoint(25, 5);
  }
  static QString childrenTarget(int parent) {
    return u"/_vti_login/_vti_detail_field_s.asp?STABLE="_s + UrlEncodeField(u"LEBI"_s) +
           u"&STRDATA="_s + UrlEncodeField(u"id,lebi,"_s) + u"&STOTHER="_s +
           UrlEncodeField(u"P_ID=%1 AND HAYE_ID=3"_s.arg(parent));
  }
};

TEST_F(Categories, LoadShowsTheIndustryWithTheFirstLevelBelowIt) {
  auto& screen = defaultInstance<frmGetLEBI>();
  EXPECT_EQ(targets(),
            QStringList{u"/_vti_login/_vti_detail_field_s.asp?STABLE=%4C%45%42%49"
                        "&STRDATA=%69%64%2C%6C%65%62%69%2C"
                        "&STOTHER=%50%5F%49%44%3D%30%20%41%4E%44%20%48%41%59%45%5F%49%44%3D%33"_s});
  ASSERT_EQ(screen.TreeView1->rootCount(), 1);
  const TreeNode* root = screen.TreeView1->root(0);
  EXPECT_EQ(root->text(), u"图书"_s);
  EXPECT_EQ(root->Tag, u"bume"_s);
  EXPECT_FALSE(root->icon(0).isNull());
  EXPECT_TRUE(root->isExpanded());
  ASSERT_EQ(root->childCount(), 2);
  const TreeNode* child = branch(screen, 1);
  EXPECT_EQ(child->Key, u"18 XID"_s);
  EXPECT_EQ(child->text(), u"历史"_s);
  EXPECT_EQ(child->Tag, u"lebi"_s);
  EXPECT_TRUE(child->isExpanded());
  EXPECT_FALSE(child->icon(0).isNull());
}

TEST_F(Categories, HasItsNames) {
  auto& screen = defaultInstance<frmGetLEBI>();
  EXPECT_EQ(screen.objectName(), u"frmGetLEBI"_s);
  EXPECT_EQ(screen.windowTitle(), u"选择类别"_s);
  for (const char* name : {"TreeView1", "TextLebi_id", "TextLebi", "commandC", "commandT"}) {
    EXPECT_NE(screen.findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
  }
}

TEST_F(Categories, APressLoadsTheChildrenOnceAndChoosesTheNode) {
  const Choice choice = pick<frmGetLEBI>([](frmGetLEBI& screen) {
    TreeNode* node = branch(screen, 0);
    pressNode(screen, node);
    ASSERT_EQ(node->childCount(), 2);
    EXPECT_TRUE(node->isExpanded());
    EXPECT_EQ(node->childNode(0)->Key, u"14 XID"_s);
    EXPECT_EQ(screen.TextLebi_id->text(), u"13 XID"_s);
    pressNode(screen, node);
    press(screen.commandC);
  });
  EXPECT_EQ(targets(), QStringList({childrenTarget(0), childrenTarget(13)}));
  EXPECT_EQ(choice.id, u"13 XID"_s) << "a level with children can be chosen, too";
  EXPECT_EQ(choice.name, u"文学"_s);
}

TEST_F(Categories, TheTreeGrowsOnTheWayDownToALeaf) {
  const Choice choice = pick<frmGetLEBI>([](frmGetLEBI& screen) {
    pressNode(screen, branch(screen, 0));
    pressNode(screen, branch(screen, 0)->childNode(1));
    press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"15 XID"_s);
  EXPECT_EQ(choice.name, u"散文"_s);
  EXPECT_EQ(targets().last(), childrenTarget(15));
}

TEST_F(Categories, ALeafIsAskedAgainAtEachPress) {
  portal.answerWith({page(top), page({})});
  pick<frmGetLEBI>([](frmGetLEBI& screen) {
    for (int i = 0; i < 3; ++i) pressNode(screen, branch(screen, 1));
  });
  EXPECT_EQ(targets(), QStringList({childrenTarget(0), childrenTarget(18), childrenTarget(18),
                                    childrenTarget(18)}));
}

TEST_F(Categories, ALeafThatGetsChildrenAtALaterPressIsExpanded) {
  portal.answerWith({page(top), page({}), page(literature)});
  pick<frmGetLEBI>([](frmGetLEBI& screen) {
    TreeNode* node = branch(screen, 0);
    pressNode(screen, node);
    node->setExpanded(false);  // as the Left key does
    pressNode(screen, node);
    EXPECT_EQ(node->childCount(), 2);
    EXPECT_TRUE(node->isExpanded());
  });
}

TEST_F(Categories, ThePressCountsAndNotTheRelease) {
  pick<frmGetLEBI>([](frmGetLEBI& screen) {
    QTest::mousePress(screen.TreeView1->viewport(), Qt::LeftButton, {},
                      middle(screen, branch(screen, 0)));
    EXPECT_EQ(screen.TextLebi_id->text(), u"13 XID"_s);
  });
}

TEST_F(Categories, AnyButtonChooses) {
  pick<frmGetLEBI>([](frmGetLEBI& screen) {
    pressNode(screen, branch(screen, 1), Qt::RightButton);
    EXPECT_EQ(screen.TextLebi_id->text(), u"18 XID"_s);
  });
}

TEST_F(Categories, ANodeReachedByKeysIsChosen) {
  const Choice choice = pick<frmGetLEBI>([](frmGetLEBI& screen) {
    screen.TreeView1->setFocus();
    screen.TreeView1->setCurrentItem(screen.TreeView1->root(0));
    QTest::keyClick(screen.TreeView1, Qt::Key_Down);
    press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"13 XID"_s);
  EXPECT_EQ(targets().last(), childrenTarget(13));
}

TEST_F(Categories, TheRootAndEmptySpaceLeaveTheChoiceAndAskForNothing) {
  pick<frmGetLEBI>([this](frmGetLEBI& screen) {
    pressNode(screen, branch(screen, 1));
    const auto requests = portal.requests().size();
    pressNode(screen, screen.TreeView1->root(0));
    QTest::mouseClick(screen.TreeView1->viewport(), Qt::LeftButton, {},
                      screen.TreeView1->viewport()->rect().bottomLeft() + QPoint(60, -5));
    EXPECT_EQ(screen.TextLebi_id->text(), u"18 XID"_s);
    EXPECT_EQ(screen.TextLebi->text(), u"历史"_s);
    EXPECT_EQ(portal.requests().size(), requests);
  });
}

TEST_F(Categories, AcceptWithNothingPressedGivesNothing) {
  const Choice choice = pick<frmGetLEBI>([](frmGetLEBI& screen) {
    press(screen.commandC);
    EXPECT_FALSE(screen.isVisible());
  });
  EXPECT_EQ(choice.id, QString());
}

TEST_F(Categories, CancelAndEscGiveNothing) {
  Choice choice = pick<frmGetLEBI>([](frmGetLEBI& screen) {
    pressNode(screen, branch(screen, 1));
    press(screen.commandT);
  });
  EXPECT_EQ(choice.id + choice.name, QString());
  EXPECT_TRUE(isLoaded<frmGetLEBI>());
  choice = pick<frmGetLEBI>([](frmGetLEBI& screen) {
    pressNode(screen, branch(screen, 1));
    QTest::keyClick(&screen, Qt::Key_Escape);
  });
  EXPECT_EQ(choice.id, QString());
  EXPECT_FALSE(isLoaded<frmGetLEBI>());
}

TEST_F(Categories, ReopenedItShowsTheGrownTreeAndTheOldChoice) {
  pick<frmGetLEBI>([](frmGetLEBI& screen) {
    pressNode(screen, branch(screen, 0));
    press(screen.commandC);
  });
  const auto requests = portal.requests().size();
  const Choice choice = pick<frmGetLEBI>([](frmGetLEBI& screen) {
    EXPECT_EQ(branch(screen, 0)->childCount(), 2);
    press(screen.commandC);
  });
  EXPECT_EQ(choice.id, u"13 XID"_s);
  EXPECT_EQ(portal.requests().size(), requests);
}

TEST_F(Categories, APortalFailureLeavesTheTreeShortWithoutAWord) {
  portal.answerWith({page(top), "<html></html>"});
  pick<frmGetLEBI>([](frmGetLEBI& screen) {
    pressNode(screen, branch(screen, 0));
    EXPECT_EQ(branch(screen, 0)->childCount(), 0);
    EXPECT_EQ(screen.TextLebi_id->text(), u"13 XID"_s) << "it can be chosen all the same";
  });
  unload<frmGetLEBI>();
  portal.answerWith({"<html></html>"});
  EXPECT_EQ(defaultInstance<frmGetLEBI>().TreeView1->root(0)->childCount(), 0);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

}  // namespace
