#include "reports/engine/TextFitter.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

constexpr QChar kEllipsis(0x2026);

TEST(TextFitter, LeavesTextThatFitsAlone) {
  TextFitter fitter(36, false);
  for (const QString& text : {u""_s, u"12.50"_s, u"书名"_s, u"Mixed 中文 text"_s}) {
    double width = -1;
    EXPECT_EQ(fitter.fit(text, fitter.widthOf(text), &width), text);
    EXPECT_DOUBLE_EQ(width, fitter.widthOf(text));
  }
}

TEST(TextFitter, CutsLongTextWithAnEllipsisInsideTheWidth) {
  TextFitter fitter(36, false);
  for (const QString& text : {u"abcdefghijklmnopqrstuvwxyz"_s, u"很长很长很长很长很长的书名"_s,
                              u"مرحبا بالعالم مرحبا بالعالم"_s, QString(100000, u'x')}) {
    const double room = fitter.widthOf(text.left(12)) * 0.7;
    double width = 0;
    const QString cut = fitter.fit(text, room, &width);
    EXPECT_TRUE(cut.contains(kEllipsis)) << cut.toStdString();
    EXPECT_GT(cut.size(), 2);
    EXPECT_LT(cut.size(), 20);
    EXPECT_LE(width, room + 0.02);
    EXPECT_LE(QFontMetricsF(fitter.font()).horizontalAdvance(cut), room + 1);
  }
}

TEST(TextFitter, GivesSimpleTextAsGlyphsSideBySide) {
  TextFitter fitter(36, true);
  for (const QString& text : {u"12.50"_s, u"中国文学 Mixed"_s, u"12.50"_s}) {
    const QGlyphRun* run = fitter.glyphs(text);
    ASSERT_NE(run, nullptr);
    ASSERT_EQ(run->glyphIndexes().size(), text.size());
    double x = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
      EXPECT_NE(run->glyphIndexes()[i], 0U);
      EXPECT_DOUBLE_EQ(run->positions()[i].x(), x);
      x += fitter.widthOf(text.mid(i, 1));
    }
    EXPECT_DOUBLE_EQ(x, fitter.widthOf(text));
  }
}

TEST(TextFitter, LeavesTextThatJoinsOrCombinesToThePainter) {
  TextFitter fitter(36, false);
  for (const QString& text : {u"مرحبا"_s, u"e\u0301"_s, u"\U0001F600"_s}) {
    EXPECT_EQ(fitter.glyphs(text), nullptr) << text.toStdString();
  }
}

TEST(TextFitter, GivesNothingWhereNotEvenTheEllipsisFits) {
  TextFitter fitter(36, false);
  double width = -1;
  EXPECT_EQ(fitter.fit(u"中文"_s, 1, &width), QString());
  EXPECT_EQ(fitter.fit(u"中文"_s, 0, &width), QString());
  EXPECT_EQ(fitter.fit(u"中文"_s, -5, &width), QString());
}

TEST(TextFitter, MakesOneLineOfLineEndsAndTabs) {
  TextFitter fitter(36, false);
  double width = 0;
  EXPECT_EQ(fitter.fit(u"a\r\nb\tc"_s, 10000, &width), u"a  b c"_s);
}

TEST(TextFitter, NeverCutsACharacterOfTwoUnitsInHalf) {
  TextFitter fitter(36, false);
  const QString text = QString::fromUcs4(U"\U00020000\U00020001\U00020002\U00020003\U00020004");
  for (int percent = 5; percent < 100; percent += 5) {
    double width = 0;
    const QString cut = fitter.fit(text, fitter.widthOf(text) * percent / 100, &width);
    EXPECT_TRUE(cut.isValidUtf16());
  }
}

TEST(TextFitter, AddsWidthsUpAsTheFontSetsThem) {
  TextFitter fitter(36, true);
  const QFontMetricsF metrics(fitter.font());
  for (const QString& text : {u"AVAToyota 1234567.890"_s, u"商品目录/报价单，（第一册）"_s}) {
    EXPECT_NEAR(fitter.widthOf(text), metrics.horizontalAdvance(text), 0.5);
  }
}

}  // namespace
