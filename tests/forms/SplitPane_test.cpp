#include <QLabel>

#include "forms/FormsFixture.h"
#include "forms/Splitter.h"

using namespace Qt::StringLiterals;
using qinghe::SplitPane;

namespace {

class SplitPaneTest : public testing::Test {
 protected:
  SplitPaneTest() {
    pane_.resize(600, 300);
    pane_.setPosition(200);
    pane_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&pane_));
    moved_.clear();
  }

  QWidget& bar() { return *pane_.findChild<QWidget*>(u"Splitter"_s); }
  QColor colour() { return bar().palette().color(QPalette::Window); }
  QColor face() { return pane_.palette().color(QPalette::Button); }

  void press(Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(&bar(), button, {}, QPoint(1, 100));
  }
  void moveTo(int x) { QTest::mouseMove(&bar(), bar().mapFrom(&pane_, QPoint(x + 1, 100))); }
  void release(Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(&bar(), button, {}, QPoint(1, 100));
  }
  void drag(int x) {
    press();
    moveTo(x);
    release();
  }

  QLabel* first_ = new QLabel(u"first"_s);
  QLabel* second_ = new QLabel(u"second"_s);
  SplitPane pane_{first_, second_};
  QSignalSpy moved_{&pane_, &SplitPane::moved};
};

}  // namespace

TEST_F(SplitPaneTest, ThePanesStandBesideTheBar) {
  EXPECT_EQ(bar().geometry(), QRect(200, 0, 3, 300));
  EXPECT_LE(first_->geometry().right(), 200);
  EXPECT_EQ(first_->height(), 300);
  EXPECT_GE(second_->x(), 203);
  EXPECT_EQ(second_->geometry().right(), 599);
  EXPECT_EQ(bar().cursor().shape(), Qt::SplitHCursor);
  EXPECT_EQ(second_->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(SplitPaneTest, TheBarTakesTheColourOfAnotherTheme) {
  QPalette dark = pane_.palette();
  dark.setColor(QPalette::Button, QColor(49, 54, 59));
  pane_.setPalette(dark);
  EXPECT_EQ(colour(), QColor(49, 54, 59));
}

TEST_F(SplitPaneTest, TheBarIsBlackAndFollowsTheMouseWhileItIsDragged) {
  EXPECT_EQ(colour(), face());
  press();
  EXPECT_EQ(colour(), QColor(Qt::black));
  moveTo(350);
  EXPECT_EQ(bar().x(), 350);
  EXPECT_EQ(pane_.position(), 200) << "not before the release";
  moveTo(330);
  release();
  EXPECT_EQ(colour(), face());
  EXPECT_EQ(pane_.position(), 330);
  EXPECT_EQ(bar().x(), 330);
  EXPECT_GT(first_->width(), 320);
  EXPECT_EQ(moved_.count(), 1);
}

TEST_F(SplitPaneTest, APositionIsKeptOnlyAwayFromTheEdges) {
  const std::pair<int, bool> cases[] = {{41, false},  {42, true}, {558, true}, {559, false},
                                        {-20, false}, {0, false}, {700, false}};
  for (const auto& [x, kept] : cases) {
    pane_.setPosition(200);
    drag(x);
    EXPECT_EQ(pane_.position(), kept ? x : 200) << x;
    EXPECT_EQ(bar().x(), pane_.position()) << x;
  }
}

TEST_F(SplitPaneTest, MovingWithoutAPressDoesNothing) {
  moveTo(300);
  release();
  EXPECT_EQ(bar().x(), 200);
  EXPECT_EQ(moved_.count(), 0);
}

TEST_F(SplitPaneTest, AnotherButtonStartsNoDragAndEndsOne) {
  press(Qt::RightButton);
  EXPECT_EQ(colour(), face());
  release(Qt::RightButton);
  press();
  moveTo(300);
  press(Qt::RightButton);
  EXPECT_EQ(colour(), face());
  moveTo(400);
  EXPECT_EQ(bar().x(), 300);
  EXPECT_EQ(pane_.position(), 300);
}

TEST_F(SplitPaneTest, TheMarginBesideTheBarCanBeGrabbed) {
  QTest::mousePress(&pane_, Qt::LeftButton, {}, QPoint(199, 50));
  EXPECT_EQ(colour(), QColor(Qt::black));
  QTest::mouseMove(&pane_, QPoint(249, 50));
  QTest::mouseRelease(&pane_, Qt::LeftButton, {}, QPoint(249, 50));
  EXPECT_EQ(pane_.position(), 250);
}

TEST_F(SplitPaneTest, ResizingLaysOutAgain) {
  pane_.resize(800, 200);
  EXPECT_EQ(bar().geometry(), QRect(200, 0, 3, 200));
  EXPECT_EQ(second_->geometry().right(), 799);
  pane_.resize(150, 200);
  EXPECT_LE(bar().x(), 150 - 42);
  EXPECT_GE(second_->width(), 1);
  pane_.resize(800, 200);
  EXPECT_EQ(bar().x(), 200) << "a narrow window does not forget the place";
}

TEST_F(SplitPaneTest, TheLeastPaneCanBeOther) {
  pane_.setLeastPane(100);
  drag(90);
  EXPECT_EQ(pane_.position(), 200);
  drag(100);
  EXPECT_EQ(pane_.position(), 100);
}

TEST_F(SplitPaneTest, APositionSetByCodeMovesThePanesAtOnce) {
  pane_.setPosition(250);
  EXPECT_EQ(bar().x(), 250);
  EXPECT_EQ(moved_.count(), 1);
  pane_.setPosition(250);
  EXPECT_EQ(moved_.count(), 1);
}
