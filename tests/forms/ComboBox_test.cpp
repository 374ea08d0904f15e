#include "forms/ComboBox.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class ComboBoxTest : public testing::Test {
 protected:
  ComboBoxTest() {
    box.add(u"ABC"_s, 7);
    box.add(u"DEF"_s, 8);
    box.add(u"ABC"_s, 9);
    other.move(0, 60);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  QWidget window;
  ComboBox box{u"comboDawe"_s, &window};
  QLineEdit other{&window};
};

TEST_F(ComboBoxTest, StartsWithoutIndexAndText) {
  EXPECT_EQ(box.listIndex(), -1);
  EXPECT_EQ(box.currentText(), QString());
  EXPECT_EQ(box.objectName(), u"comboDawe"_s);
}

TEST_F(ComboBoxTest, TypingDropsTheIndexAndKeepsTheText) {
  box.setCurrentIndex(1);
  box.lineEdit()->setCursorPosition(1);
  QTest::keyClicks(box.lineEdit(), u"x"_s);
  EXPECT_EQ(box.listIndex(), -1);
  EXPECT_EQ(box.currentText(), u"DxEF"_s);
  EXPECT_EQ(box.lineEdit()->cursorPosition(), 2);
}

TEST_F(ComboBoxTest, TypedTextOfARowIsNoChoiceOfIt) {
  box.setFocus();
  QTest::keyClicks(box.lineEdit(), u"DEF"_s);
  EXPECT_EQ(box.listIndex(), -1);
  QTest::keyClick(box.lineEdit(), Qt::Key_Return);
  EXPECT_EQ(box.listIndex(), -1) << "after Enter";
  QTest::keyClick(box.lineEdit(), Qt::Key_Tab);
  EXPECT_FALSE(box.lineEdit()->hasFocus());
  EXPECT_EQ(box.listIndex(), -1) << "after leaving";
  EXPECT_EQ(box.currentText(), u"DEF"_s);
  EXPECT_EQ(box.count(), 3) << "nothing typed becomes a row";
}

TEST_F(ComboBoxTest, TheArrowKeysChooseARow) {
  box.setFocus();
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(box.listIndex(), 0);
  EXPECT_EQ(box.itemDataAt(box.listIndex()), 7);
  QTest::keyClick(&box, Qt::Key_Down);
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(box.itemDataAt(box.listIndex()), 9) << "rows of one text are different rows";
}

TEST_F(ComboBoxTest, TheNumberOfNoRowIsAFailure) {
  EXPECT_THROW(box.itemDataAt(-1), InvalidCall);
  EXPECT_THROW(box.itemDataAt(3), InvalidCall);
}

TEST_F(ComboBoxTest, NewRowsKeepTypedText) {
  ComboBox fresh(u"comboDawe"_s);
  fresh.lineEdit()->setText(u"typed"_s);
  fresh.add(u"ABC"_s, 1);
  EXPECT_EQ(fresh.listIndex(), -1);
  EXPECT_EQ(fresh.currentText(), u"typed"_s);
}

}  // namespace
