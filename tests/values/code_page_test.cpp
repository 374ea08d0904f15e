#include "values/code_page.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

TEST(CodePage, ChineseTakesTwoBytesAndComesBack) {
  EXPECT_EQ(toCodePage(u"中A"), QByteArray::fromHex("d6d041"));
  EXPECT_EQ(fromCodePage(QByteArray::fromHex("d6d041")), u"中A"_s);
  EXPECT_EQ(toCodePage(u"《大学语文》"), QByteArray::fromHex("a1b6b4f3d1a7d3efcec4a1b7"));
}

TEST(CodePage, WhatDoesNotFitBecomesOneQuestionMark) {
  EXPECT_EQ(toCodePage(u"a\u0E01b"), QByteArray("a?b"));
  EXPECT_EQ(toCodePage(u"a😀b"), QByteArray("a?b"));
  const QChar lone[] = {QChar(0xD83D), u'b'};
  EXPECT_EQ(toCodePage(QStringView(lone, 2)), QByteArray("?b"));
}

TEST(CodePage, InvalidBytesBecomeOneReplacementEach) {
  EXPECT_EQ(fromCodePage(QByteArray::fromHex("ff41")), u"\uFFFDA"_s);
  EXPECT_EQ(fromCodePage(QByteArray::fromHex("d6")), u"\uFFFD"_s);
  EXPECT_EQ(fromCodePage(QByteArray::fromHex("d63c2f")), u"\uFFFD</"_s);
  EXPECT_EQ(fromCodePage(QByteArray::fromHex("ffff")), u"\uFFFD\uFFFD"_s);
}

TEST(CodePage, ZeroAndControlBytesPassThrough) {
  EXPECT_EQ(toCodePage(QStringView(u"a\0\t\r\n", 5)), QByteArray("a\0\t\r\n", 5));
  EXPECT_EQ(fromCodePage(QByteArray("a\0b", 3)), QStringView(u"a\0b", 3).toString());
}

TEST(CodePage, EveryTwoByteCharacterSurvivesARoundTrip) {
  int characters = 0;
  for (int lead = 0x81; lead <= 0xFE; ++lead) {
    for (int trail = 0x40; trail <= 0xFE; ++trail) {
      const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
      const QString text = fromCodePage(QByteArrayView(bytes, 2));
      if (text.size() != 1) continue;
      ++characters;
      EXPECT_EQ(fromCodePage(toCodePage(text)), text) << lead << " " << trail;
    }
  }
  EXPECT_GT(characters, 21'000);
}

TEST(CodePage, EmptyStaysEmpty) {
  EXPECT_TRUE(toCodePage(u"").isEmpty());
  EXPECT_TRUE(fromCodePage("").isEmpty());
}
