#include "reports/engine/ReportPainter.h"

#include <gtest/gtest.h>

#include <QImage>

#include "tests/reports/engine/ReportFixtures.h"

using namespace qinghe;
using namespace fixtures;
using Kind = ReportBox::Kind;

namespace {

constexpr int kPaperWidth = 500;  // pixels, which are report units here
constexpr int kPaperHeight = 100;

/// A page with one box from 100 to 300 pixels, where ten figures of full size have room.
QImage painted(const QString& text, ReportBox::Align align = ReportBox::Align::Right) {
  constexpr double kUnit = ReportPainter::kUnitsPerMillimetre;
  ReportBox box = fixtures::box(Kind::Field, u"n"_s);
  box.align = align;
  ReportPage page;
  page.boxes.push_back({&box, QRectF(100 / kUnit, 20 / kUnit, 200 / kUnit, 60 / kUnit), text});
  QImage image(kPaperWidth, kPaperHeight, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  ReportPainter().paint(painter, page);
  painter.end();
  return image;
}

/// The rectangle that holds all that is not white.
QRect inkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qGray(image.pixel(x, y)) < 200) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

TEST(ReportPainter, PaintsNumbersDatesAndCodesWholeHoweverNarrowTheirBox) {
  const QStringList texts = {u"123456789012345.6"_s, u"-922337203685.58"_s,  u"2024-12-31 23:58"_s,
                             u"978-7-9903-0061-1"_s, u"G20241231-1234567"_s, u"6227 0000 1234 5"_s};
  for (const auto align : {ReportBox::Align::Left, ReportBox::Align::Right}) {
    for (const QString& text : texts) {
      const QImage image = painted(text, align);
      const QRect ink = inkOf(image);
      EXPECT_GE(ink.left(), 99) << text.toStdString();
      EXPECT_LE(ink.right(), 300) << text.toStdString();
      EXPECT_GT(ink.width(), 190) << "as large as it fits";
      // The very last figure is there.
      EXPECT_NE(image, painted(text.chopped(1) + u'9', align)) << text.toStdString();
    }
  }
}

TEST(ReportPainter, CutsNamesAndWhatWouldBeTooSmallToRead) {
  const QStringList texts = {u"资本主义与近代以来欧亚大陆的商路"_s, u"The Quick Brown Fox 2"_s,
                             u"12 元一册，共三册，另加运费"_s, QString(35, u'7'),
                             QString(200, u'7')};
  for (const QString& text : texts) {
    const QImage image = painted(text, ReportBox::Align::Left);
    EXPECT_EQ(image, painted(text + u"8"_s, ReportBox::Align::Left)) << text.toStdString();
    EXPECT_NE(image, painted(text.left(4), ReportBox::Align::Left)) << text.toStdString();
    EXPECT_LE(inkOf(image).right(), 300) << text.toStdString();
  }
}

TEST(ReportPainter, PaintsWhatFollowsAShrunkenNumberInItsOwnSize) {
  constexpr double kUnit = ReportPainter::kUnitsPerMillimetre;
  const ReportBox number = box(Kind::Field, u"n"_s);
  const auto drawn = [&](const QString& before) {
    ReportPage page;
    page.boxes.push_back({&number, QRectF(0, 0, 80 / kUnit, 40 / kUnit), before});
    // Letters that join are set by the painter's font, not by glyphs.
    page.boxes.push_back(
        {&number, QRectF(100 / kUnit, 40 / kUnit, 250 / kUnit, 50 / kUnit), u"مرحبا 12"_s});
    QImage image(kPaperWidth, kPaperHeight, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    ReportPainter().paint(painter, page);
    painter.end();
    return image.copy(100, 40, 300, 60);
  };
  EXPECT_EQ(drawn(u"123456789012.34"_s), drawn(u"1"_s));
}

}  // namespace
