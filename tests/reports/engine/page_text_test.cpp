#include "reports/engine/page_text.h"

#include <gtest/gtest.h>

#include <cmath>

#include <limits>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const PageNumbers kNumbers{3, 12, QDate(2024, 3, 9)};

TEST(PageText, FillsInPageCountAndDate) {
  const struct {
    QString text, expected;
  } cases[] = {
      {u"%p"_s, u"3"_s},
      {u"%P"_s, u"12"_s},
      {u"%d"_s, u"2024-3-9"_s},
      {u"%D"_s, u"2024-3-9"_s},
      {u"第[%p]页"_s, u"第[3]页"_s},
      {u"共[%P]页"_s, u"共[12]页"_s},
      {u"%p/%P"_s, u"3/12"_s},
      {u"/"_s, u"/"_s},
      {u""_s, u""_s},
      {u"100%"_s, u"100%"_s},
      {u"%x%"_s, u"%x%"_s},
      {u"%%p"_s, u"%3"_s},
  };
  for (const auto& c : cases) EXPECT_EQ(expandPageText(c.text, kNumbers), c.expected);
}

TEST(PageText, LeavesThePageCountBlankWhileItIsUnknown) {
  EXPECT_EQ(expandPageText(u"共[%P]页"_s, {1, -1, QDate(2024, 3, 9)}), u"共[]页"_s);
}

TEST(PageText, FormatsNumbersWithTheDecimalsOfTheFormat) {
  const struct {
    double value;
    QString format, expected;
  } cases[] = {
      {0, u"0.000"_s, u"0.000"_s},
      {1.5, u"0.000"_s, u"1.500"_s},
      {-4, u"0.000"_s, u"-4.000"_s},
      {-80.25, u"0.000"_s, u"-80.250"_s},
      {2.0005, u"0.000"_s, u"2.001"_s},
      {-2.0005, u"0.000"_s, u"-2.001"_s},
      {2.00049, u"0.000"_s, u"2.000"_s},
      {-0.0001, u"0.000"_s, u"0.000"_s},
      {0.1 + 0.2, u"0.000"_s, u"0.300"_s},
      {1234567.891, u"0.000"_s, u"1234567.891"_s},
      {2.5, u"0"_s, u"3"_s},
      {1234567.5, u"#,##0.00"_s, u"1,234,567.50"_s},
      {1.25, QString(), u"1.25"_s},
      {1.25, u"0.0x"_s, u"1.25"_s},
      {1.25, u"0."_s, u"1.25"_s},
      {1e20, u"0.000"_s, u"1E+20"_s},
  };
  for (const auto& c : cases) EXPECT_EQ(formatNumber(c.value, c.format), c.expected) << c.value;
}

TEST(PageText, RoundsTheFifteenDigitsThatAReaderSees) {
  const auto asRead = [](double value) {
    const double rounded = std::round(QString::number(value * 1000, 'g', 15).toDouble()) / 1000;
    return QString::number(rounded == 0 ? 0.0 : rounded, 'f', 3);
  };
  quint64 state = 7;
  for (int i = 0; i < 20000; ++i) {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    const double size = std::pow(10.0, static_cast<double>(i % 16) - 4);
    const double random = (static_cast<double>(state >> 11) / 9007199254740992.0 - 0.5) * size;
    const double half = (i - 10000 + 0.5) / 1000 * (i % 3 == 0 ? 1 : 997);
    for (const double value : {random, half, std::nextafter(half, 0), std::nextafter(half, 1e9)}) {
      ASSERT_EQ(formatNumber(value, u"0.000"_s), asRead(value))
          << QString::number(value, 'g', 17).toStdString();
    }
  }
}

TEST(PageText, FormatsNumbersThatAreNoneWithoutFailing) {
  EXPECT_FALSE(formatNumber(std::numeric_limits<double>::infinity(), u"0.000"_s).contains(u'.'));
  EXPECT_NO_THROW(
      static_cast<void>(formatNumber(std::numeric_limits<double>::quiet_NaN(), u"0.000"_s)));
}

TEST(PageText, FormatsNumericTextsAndLeavesOthersAlone) {
  EXPECT_EQ(formatText(u"12.5"_s, u"0.000"_s), u"12.500"_s);
  EXPECT_EQ(formatText(u"-3"_s, u"0.000"_s), u"-3.000"_s);
  EXPECT_EQ(formatText(u"1,200"_s, u"0.000"_s), u"1200.000"_s);
  EXPECT_EQ(formatText(u"面议"_s, u"0.000"_s), u"面议"_s);
  EXPECT_EQ(formatText(QString(), u"0.000"_s), QString());
  EXPECT_EQ(formatText(u"010"_s, QString()), u"010"_s);
}

}  // namespace
