#include "values/dates.h"

#include <gtest/gtest.h>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

TEST(DateText, IsUnpaddedWithATimeOnlyWhenThereIsOne) {
  EXPECT_EQ(textOf(QDate(2024, 3, 9)), u"2024-3-9"_s);
  EXPECT_EQ(textOf(QDateTime(QDate(2024, 12, 31), QTime(0, 0), Qt::UTC)), u"2024-12-31"_s);
  EXPECT_EQ(textOf(QDateTime(QDate(2024, 3, 9), QTime(8, 5, 0), Qt::UTC)), u"2024-3-9 8:05:00"_s);
}

TEST(ReadDate, TakesTheThreeForms) {
  for (const QString& text : {u"2024-3-9"_s, u"2024/3/9"_s, u"3/9/2024"_s, u"2024-03-09"_s}) {
    const auto value = readDate(text);
    ASSERT_TRUE(value) << text.toStdString();
    EXPECT_EQ(value->date(), QDate(2024, 3, 9)) << text.toStdString();
    EXPECT_EQ(value->time(), QTime(0, 0));
  }
}

TEST(ReadDate, TakesATimeOfDay) {
  EXPECT_EQ(readDate(u"2024-3-9 8:05:07")->time(), QTime(8, 5, 7));
  EXPECT_EQ(readDate(u"3/9/2024 23:59")->time(), QTime(23, 59));
}

TEST(ReadDate, RefusesWhatIsNoDate) {
  for (const QString& text :
       {u""_s, u"abc"_s, u"2024-13-1"_s, u"2024-2-30"_s, u"2024-3/9"_s, u"24-3-9"_s,
        u"2024-3-9 25:00"_s, u"2024-3-9x"_s, u"1"_s.repeated(1000)}) {
    EXPECT_FALSE(readDate(text)) << text.toStdString();
  }
}

TEST(ReadDate, TakesTheFormThatFilesKeep) {
  EXPECT_EQ(*readDate(u"2024-03-09 08:05:07"),
            QDateTime(QDate(2024, 3, 9), QTime(8, 5, 7), Qt::UTC));
  EXPECT_EQ(readDate(u"1999-12-31 00:00:00")->date(), QDate(1999, 12, 31));
  for (const QString& text :
       {u"2024-02-30 08:05:07"_s, u"2024-03-09 24:05:07"_s, u"2024-03-09 08:60:07"_s,
        u"2024-03-0x 08:05:07"_s, u"2024-03-09T08:05:07"_s, u"2024-03-09 08-05-07"_s,
        u"2024-03-09 08:05:-7"_s, u"0000-03-09 08:05:07"_s, u"2024-00-09 08:05:07"_s}) {
    EXPECT_FALSE(readDate(text)) << text.toStdString();
  }
  EXPECT_EQ(readDate(u" 2024-3-09 8:05:07 ")->time(), QTime(8, 5, 7)) << "as long, and another";
}

TEST(ReadDate, KeepsAnHourThatSummerTimeWouldSkip) {
  EXPECT_EQ(textOf(*readDate(u"2024-3-31 2:30:00")), u"2024-3-31 2:30:00"_s);
}

TEST(ToDate, ThrowsWhereReadDateHasNoValue) {
  EXPECT_EQ(toDate(u"2024-3-9").date(), QDate(2024, 3, 9));
  EXPECT_THROW(toDate(u""), TypeMismatch);
}

TEST(ConditionDate, IsMonthFirstBetweenHashes) {
  EXPECT_EQ(conditionDate(QDate(2024, 3, 9)), u"#3/9/2024#"_s);
}
