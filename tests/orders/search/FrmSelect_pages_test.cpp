#include <gtest/gtest.h>

#include "SearchFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

using GoodsSearchPages = SearchFixture;

TEST_F(GoodsSearchPages, FurtherPagesAreAppendedUntilTheLastIsThere) {
  fillResult({found(u"1"_s, u"一"_s), found(u"2"_s, u"二"_s)}, u"3"_s);
  const QString query = u"NOTH=TRUE AND LEBI_ID=13"_s;
  auto* more = screen().Command5;
  EXPECT_EQ(more->text(), u"33%"_s);
  nextAnswers({page({found(u"3"_s, u"三"_s)}), page({found(u"4"_s, u"四"_s)})});
  click(more);
  EXPECT_EQ(more->text(), u"66%"_s);
  EXPECT_EQ(list().itemAt(2)->tag(), u"2"_s);
  click(more);
  EXPECT_EQ(more->text(), u"100%"_s);
  EXPECT_TRUE(more->isVisible());
  click(more);
  EXPECT_FALSE(more->isVisible());
  EXPECT_EQ(names(), (QStringList{u"一"_s, u"二"_s, u"三"_s, u"四"_s}));
  EXPECT_EQ(targets(), (QStringList{pageTarget(query, 2), pageTarget(query, 3)}));
}

TEST_F(GoodsSearchPages, TheKeysStayWithTheResultWhenItsLastPageIsThere) {
  fillResult({found(u"1"_s, u"一"_s)}, u"2"_s);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&screen()));
  nextAnswers({page({found(u"2"_s, u"二"_s)})});
  auto* more = screen().Command5;
  more->setFocus();
  QTest::keyClick(more, Qt::Key_Space);
  EXPECT_TRUE(more->hasFocus()) << "for the page after it";
  QTest::keyClick(more, Qt::Key_Space);
  EXPECT_FALSE(more->isVisible());
  EXPECT_TRUE(list().hasFocus());
}

TEST_F(GoodsSearchPages, AnotherQueryBeginsOnItsFirstPageAndCountsAnew) {
  fillResult({found(u"1"_s, u"一"_s)}, u"3"_s);
  nextAnswers({page({found(u"2"_s, u"二"_s)})});
  click(screen().Command5);
  fillResult({found(u"3"_s, u"三"_s)}, u"2"_s);
  EXPECT_EQ(names(), QStringList{u"三"_s});
  EXPECT_EQ(screen().Command5->text(), u"50%"_s);
  fillResult({found(u"4"_s, u"四"_s)}, u"1"_s);
  EXPECT_FALSE(screen().Command5->isVisible());
}

TEST_F(GoodsSearchPages, ThePageSizeIsTheOneOfItsLoad) {
  screen();
  state.gPageSize = 50;
  nextAnswers({page({}), page({}), count(u"0"_s)});
  clickNode(screen().TreeView1->root(0)->childNode(0));
  EXPECT_EQ(targets().mid(1), queryTargets(u"NOTH=TRUE AND LEBI_ID=13"_s));
}

TEST_F(GoodsSearchPages, AnEmptyResultSaysNothing) {
  fillResult({}, u"0"_s);
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_FALSE(screen().Command5->isVisible());
  EXPECT_EQ(boxes->texts(), QStringList{});
}

}  // namespace
