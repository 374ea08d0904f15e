#include <gtest/gtest.h>

#include <QStringList>

#include "portal/url_encode.h"
#include "values/code_page.h"
#include "values/numbers.h"

using namespace Qt::StringLiterals;
using qinghe::UrlEncodeField;

namespace {

struct Row {
  const char* name;
  QString value;
  QString encoded;
  QString valueAfterwards;
};
void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

class UrlEncodeFieldTable : public testing::TestWithParam<Row> {};

TEST_P(UrlEncodeFieldTable, EncodesEveryByteAndWritesTheMarksBack) {
  auto value = GetParam().value;
  EXPECT_EQ(UrlEncodeField(value), GetParam().encoded);
  EXPECT_EQ(value, GetParam().valueAfterwards);
}

const Row rows[] = {
    {"EmptyGivesEmpty", u""_s, u""_s, u""_s},
    {"LettersAreEncodedToo", u"Az"_s, u"%41%7A"_s, u"Az"_s},
    {"DigitsAreEncodedToo", u"09"_s, u"%30%39"_s, u"09"_s},
    {"ABlankIsNoPlus", u" "_s, u"%20"_s, u" "_s},
    {"PunctuationIsEncoded", u"-_.~+%&=?/"_s, u"%2D%5F%2E%7E%2B%25%26%3D%3F%2F"_s, u"-_.~+%&=?/"_s},
    {"AChineseCharacterIsTwoBytes", u"中"_s, u"%D6%D0"_s, u"中"_s},
    {"ATabHasOneDigit", u"\t"_s, u"%9"_s, u"\t"_s},
    {"ALoneLineFeedHasOneDigit", u"a\nb"_s, u"%61%A%62"_s, u"a\nb"_s},
    {"ALoneCarriageReturnHasOneDigit", u"\r"_s, u"%D"_s, u"\r"_s},
    {"FifteenHasOneDigitAndSixteenTwo", u"\x0F\x10"_s, u"%F%10"_s, u"\x0F\x10"_s},
    {"ALineBreakBecomesATag", u"a\r\nb"_s, u"%61%3C%62%72%3E%62"_s, u"a<br>b"_s},
    {"LineFeedBeforeCarriageReturnIsNoLineBreak", u"\n\r"_s, u"%A%D"_s, u"\n\r"_s},
    {"LessThanBecomesAnEntity", u"a<b"_s, u"%61%26%6C%74%3B%62"_s, u"a&lt;b"_s},
    {"GreaterThanBecomesAnEntity", u">"_s, u"%26%67%74%3B"_s, u"&gt;"_s},
    {"ATypedTagStaysApartFromALineBreak", u"<br>"_s, u"%26%6C%74%3B%62%72%26%67%74%3B"_s,
     u"&lt;br&gt;"_s},
    {"AnAmpersandIsLeftAsItIs", u"&lt;"_s, u"%26%6C%74%3B"_s, u"&lt;"_s},
    {"WhatDoesNotFitTheCodePageIsAQuestionMark", u"\u0E01"_s, u"%3F"_s, u"\u0E01"_s},
    {"AQuoteGoesThrough", u"'"_s, u"%27"_s, u"'"_s},
};

INSTANTIATE_TEST_SUITE_P(UrlEncodeField, UrlEncodeFieldTable, testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(UrlEncodeField, LeavesAConstantValueAlone) {
  const QString value = u"a<b"_s;
  EXPECT_EQ(UrlEncodeField(value), u"%61%26%6C%74%3B%62"_s);
  EXPECT_EQ(value, u"a<b"_s);
}

TEST(UrlEncodeField, TakesANumberByItsDecimalText) {
  EXPECT_EQ(UrlEncodeField(qinghe::textOf(25.5)), u"%32%35%2E%35"_s);
}

TEST(UrlEncodeField, EveryByteOfALongTextCanBeReadBack) {
  QString value;
  for (int i = 0; i < 3000; ++i) value += i % 3 == 0 ? u"书"_s : QString(QChar(32 + i % 28));
  QByteArray bytes;
  const auto parts = UrlEncodeField(std::as_const(value)).split(u'%').sliced(1);
  for (const auto& part : parts) bytes.append(static_cast<char>(part.toInt(nullptr, 16)));
  EXPECT_EQ(bytes, qinghe::toCodePage(value));
}

}  // namespace
