#include "store/ColumnKind.h"

#include <QDateTime>

#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

TEST(ColumnKind, IsToldByTheDeclaredType) {
  EXPECT_EQ(columnKind("INTEGER"), ColumnKind::Integer);
  EXPECT_EQ(columnKind("smallint"), ColumnKind::Integer);
  EXPECT_EQ(columnKind("DOUBLE"), ColumnKind::Number);
  EXPECT_EQ(columnKind("Numeric(10,2)"), ColumnKind::Number);
  EXPECT_EQ(columnKind("BOOLEAN"), ColumnKind::Boolean);
  EXPECT_EQ(columnKind("DATETIME"), ColumnKind::Date);
  EXPECT_EQ(columnKind("VARCHAR(50)"), ColumnKind::Text);
  EXPECT_EQ(columnKind(nullptr), ColumnKind::Text);
}

struct Turn {
  const char* name;
  ColumnKind kind;
  QVariant value;
  StoredValue stored;
};

StoredValue text(const QString& value) {
  return value.toUtf8();
}
StoredValue whole(qint64 value) {
  return value;
}

class Stored : public testing::TestWithParam<Turn> {};

TEST_P(Stored, IsWhatTheColumnKeeps) {
  EXPECT_EQ(toStored(GetParam().kind, GetParam().value), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(
    Values, Stored,
    testing::Values(
        Turn{"textAsTyped", ColumnKind::Text, u" 25.50 "_s, text(u" 25.50 "_s)},
        Turn{"leadingZeros", ColumnKind::Text, u"010"_s, text(u"010"_s)},
        Turn{"emptyText", ColumnKind::Text, QString(), text(u""_s)},
        Turn{"booleanIntoText", ColumnKind::Text, true, text(u"True"_s)},
        Turn{"numberIntoText", ColumnKind::Text, 12.5, text(u"12.5"_s)},
        Turn{"wholeIntoText", ColumnKind::Text, 12, text(u"12"_s)},
        Turn{"dateIntoText", ColumnKind::Text, QDate(2024, 3, 9), text(u"2024-3-9"_s)},
        Turn{"null", ColumnKind::Integer, QVariant(), std::monostate()},
        Turn{"wholeText", ColumnKind::Integer, u" 417 "_s, whole(417)},
        Turn{"halfEven", ColumnKind::Integer, u"2.5"_s, whole(2)},
        Turn{"wholeFromDouble", ColumnKind::Integer, 3.5, whole(4)},
        Turn{"shortNumber", ColumnKind::Integer, QVariant::fromValue(qint16(7)), whole(7)},
        Turn{"above16Bits", ColumnKind::Integer, u"40000"_s, whole(40000)},
        Turn{"numberText", ColumnKind::Number, u"-12.25"_s, StoredValue(-12.25)},
        Turn{"thousands", ColumnKind::Number, u"1,234"_s, StoredValue(1234.0)},
        Turn{"checked", ColumnKind::Boolean, true, whole(1)},
        Turn{"flagNumber", ColumnKind::Boolean, 1, whole(1)},
        Turn{"flagWord", ColumnKind::Boolean, u"False"_s, whole(0)},
        Turn{"flagText", ColumnKind::Boolean, u"-1"_s, whole(1)},
        Turn{"date", ColumnKind::Date, QDate(2024, 3, 9), text(u"2024-03-09 00:00:00"_s)},
        Turn{"dateText", ColumnKind::Date, u"2024-3-9 8:05:00"_s, text(u"2024-03-09 08:05:00"_s)},
        Turn{"noDate", ColumnKind::Date, QDate(), std::monostate()}),
    [](const auto& row) { return row.param.name; });

TEST(Stored, RefusesATextThatIsNotWhollyOfTheKind) {
  for (const QString& wrong : {u""_s, u"abc"_s, u"12 ID"_s, u"0x10"_s}) {
    EXPECT_THROW(toStored(ColumnKind::Integer, wrong), TypeMismatch) << wrong.toStdString();
    EXPECT_THROW(toStored(ColumnKind::Number, wrong), TypeMismatch) << wrong.toStdString();
    EXPECT_THROW(toStored(ColumnKind::Boolean, wrong), TypeMismatch) << wrong.toStdString();
    EXPECT_THROW(toStored(ColumnKind::Date, wrong), TypeMismatch) << wrong.toStdString();
  }
  EXPECT_THROW(toStored(ColumnKind::Integer, u"2147483648"_s), Overflow);
  EXPECT_THROW(toStored(ColumnKind::Date, 12), TypeMismatch);
}

TEST(Stored, ReadsBackAsTheScreensShowIt) {
  EXPECT_EQ(textOfStored(ColumnKind::Boolean, StoredValue(qint64(1))), u"True"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Boolean, StoredValue(qint64(0))), u"False"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Integer, StoredValue(qint64(-12))), u"-12"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Number, StoredValue(25.0)), u"25"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Number, StoredValue(-0.0)), u"0"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Number, StoredValue(0.1 + 0.2)), u"0.3"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Number, StoredValue(1e20)), u"1E+20"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Date, text(u"2024-03-09 00:00:00"_s)), u"2024-3-9"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Date, text(u"2024-03-09 08:05:00"_s)), u"2024-3-9 8:05:00"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Date, text(u"soon"_s)), u"soon"_s);
  EXPECT_EQ(textOfStored(ColumnKind::Text, StoredValue()), u""_s);
  EXPECT_EQ(fromStored(ColumnKind::Boolean, StoredValue(qint64(1))), QVariant(true));
  EXPECT_EQ(fromStored(ColumnKind::Date, text(u"2024-03-09 08:05:00"_s)).toDateTime().date(),
            QDate(2024, 3, 9));
}

}  // namespace
}  // namespace qinghe
