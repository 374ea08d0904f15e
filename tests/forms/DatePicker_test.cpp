#include "forms/DatePicker.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDateEdit>
#include <QSignalSpy>
#include <QTest>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

TEST(DatePicker, HasNoValueWithoutItsMarkAndKeepsTheDateForLater) {
  DatePicker picker(u"DTPickerFrom"_s);
  picker.setValue(QDate(2024, 3, 9));
  EXPECT_EQ(picker.value(), QDate(2024, 3, 9));
  picker.check()->click();
  EXPECT_EQ(picker.value(), std::nullopt);
  EXPECT_FALSE(picker.editor()->isEnabled());
  picker.check()->click();
  EXPECT_EQ(picker.value(), QDate(2024, 3, 9));
}

TEST(DatePicker, TellsWhatTheUserDoesAndNotWhatCodeDoes) {
  DatePicker picker(u"DTPickerFrom"_s);
  const QSignalSpy changed(&picker, &DatePicker::changed);
  picker.setValue(QDate(2024, 3, 9));
  picker.setValue(std::nullopt);
  picker.setValue(QDate(2024, 3, 10));
  EXPECT_EQ(changed.count(), 0);
  picker.show();
  QTest::keyClick(picker.editor(), Qt::Key_Up);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(picker.value(), QDate(2025, 3, 10));
  picker.check()->click();
  EXPECT_EQ(changed.count(), 2);
}

TEST(DatePicker, NamesItsPartsAfterItself) {
  const DatePicker picker(u"DTPickerTo"_s);
  EXPECT_EQ(picker.objectName(), u"DTPickerTo"_s);
  EXPECT_EQ(picker.check()->objectName(), u"DTPickerTo.check"_s);
  EXPECT_EQ(picker.editor()->objectName(), u"DTPickerTo.editor"_s);
}

}  // namespace
