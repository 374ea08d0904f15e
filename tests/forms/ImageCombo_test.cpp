#include "forms/ImageCombo.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class ImageComboTest : public testing::Test {
 protected:
  ImageComboTest() {
    combo.add(u"0 ID"_s, u"甲"_s, u"NL"_s);
    combo.add(u"1 ID"_s, u"乙"_s, u"LK"_s);
  }

  ImageCombo combo{u"ImageCombo1"_s};
  QSignalSpy clicks{&combo, &ImageCombo::itemClick};
};

TEST_F(ImageComboTest, HasKeysTextsAndImages) {
  EXPECT_EQ(combo.itemCount(), 2);
  EXPECT_EQ(combo.keys(), (QStringList{u"0 ID"_s, u"1 ID"_s}));
  EXPECT_EQ(combo.text(1), u"乙"_s);
  EXPECT_EQ(combo.image(1), u"LK"_s);
  EXPECT_FALSE(combo.itemIcon(1).isNull());
  combo.setImage(1, u"NL"_s);
  EXPECT_EQ(combo.image(1), u"NL"_s);
}

TEST_F(ImageComboTest, SelectsNothingUntilSomebodySelects) {
  EXPECT_EQ(combo.selectedRow(), -1);
  combo.setSelectedRow(1);
  combo.add(u"2 ID"_s, u"丙"_s, u"NL"_s);
  EXPECT_EQ(combo.selectedRow(), 1);
  combo.clearItems();
  EXPECT_EQ(combo.itemCount(), 0);
  EXPECT_EQ(combo.selectedRow(), -1);
}

TEST_F(ImageComboTest, TellsWhatTheUserSelectsAndNotWhatCodeDoes) {
  combo.setSelectedRow(0);
  EXPECT_EQ(clicks.count(), 0);
  combo.show();
  QTest::keyClick(&combo, Qt::Key_Down);
  ASSERT_EQ(clicks.count(), 1);
  EXPECT_EQ(clicks[0][0].toInt(), 1);
}

TEST_F(ImageComboTest, ALongTextOfManyLinesIsShownCutInOneLine) {
  const QString text = QString(u"行\r\n"_s).repeated(1000);
  combo.add(u"2 ID"_s, text, u"NL"_s);
  EXPECT_EQ(combo.text(2), text);
  EXPECT_FALSE(combo.itemText(2).contains(u'\n'));
  EXPECT_TRUE(combo.itemText(2).endsWith(u'…'));
}

}  // namespace
