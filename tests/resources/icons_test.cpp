#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdlib>
#include <set>

#include "resources/resources.h"

using namespace Qt::StringLiterals;

namespace qinghe {
namespace {

QByteArray source(const QString& key) {
  initResources();
  QFile file(u":/icons/"_s + key + u".svg"_s);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage painted(const QString& key, int size, const QByteArray& ink) {
  QSvgRenderer renderer(source(key).replace("currentColor", ink));
  QImage image(size, size, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  renderer.render(&painter, QRectF(0, 0, size, size));
  return image;
}

QStringList allKeys() {
  initResources();
  QStringList keys = QDir(u":/icons"_s).entryList({u"*.svg"_s}, QDir::Files, QDir::Name);
  for (QString& key : keys) key.chop(4);
  return keys;
}

int inkedPixels(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += qAlpha(image.pixel(x, y)) > 100 ? 1 : 0;
  }
  return count;
}

/// How far two pictures of one size are apart: the mean difference of a colour channel, 0 to 255.
double difference(const QImage& a, const QImage& b) {
  double sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
             std::abs(qBlue(p) - qBlue(q)) + std::abs(qAlpha(p) - qAlpha(q));
    }
  }
  return sum / (4.0 * a.width() * a.height());
}

class IconOfKey : public testing::TestWithParam<const char*> {};

TEST_P(IconOfKey, IsThere) {
  EXPECT_FALSE(source(QString::fromLatin1(GetParam())).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Lists, IconOfKey,
                         testing::Values("Ximu", "Shxi", "Lebi", "Goku", "Gohu", "Dihu", "Qyxx",
                                         "Cyxx", "Xixi", "LK", "NL", "Help", "Bume", "Forum",
                                         "Glob", "Publish"));
INSTANTIATE_TEST_SUITE_P(ToolBars, IconOfKey,
                         testing::Values("Print", "Add", "Save", "Update", "Delete", "Help",
                                         "Refresh", "Call", "Load", "Find", "Open", "Import",
                                         "Peer", "Exit"));
INSTANTIATE_TEST_SUITE_P(Preview, IconOfKey,
                         testing::Values("PDF", "HTML", "CSV", "ZoomIn", "ZoomOut", "FitWidth",
                                         "First", "Previous", "Next", "Last"));
INSTANTIATE_TEST_SUITE_P(
    Menu, IconOfKey,
    testing::Values("mnuLogin_YH", "mnuLogin_QY", "mnuLogin_Local", "mnuLogin_CY", "mnuRegister_QY",
                    "mnuRegistr_CY", "mnuRegistr_YH", "mnuPeer", "mnuXIXI", "mnuIcq", "mnuGroup",
                    "mnuOnline", "mnuFuwu", "mnuXimu", "mnuFuwu_WEB", "mnuXimu_WEB", "mnuDocu_WEB",
                    "mnuXiwe_WEB", "mnuQust_WEB", "mnuMumu_WEB", "mnuForum_WEB", "mnuTupi_WEB",
                    "mnuHTTP_WEB", "mnuDIHU_XS", "mnuGOHU_XS", "mnuQueryXish", "mnuSelect",
                    "mnuGOHU_JH", "mnuQueryJIHU", "mnuView2", "mnuView", "mnuHelp_online",
                    "mnuHelp", "mnuDial", "Internet", "mnuCalc", "mnuShow", "mnuAbout",
                    "mnuTempExit"));
INSTANTIATE_TEST_SUITE_P(Program, IconOfKey,
                         testing::Values("TrayConnected", "TrayOffline", "TrayWaiting", "Logo",
                                         "qinghe"));

TEST(Icons, EachOneParsesAndPaintsSomethingAtSixteenPixels) {
  for (const QString& key : allKeys()) {
    EXPECT_TRUE(QSvgRenderer(source(key)).isValid()) << qPrintable(key);
    const int inked = inkedPixels(painted(key, 16, "#000000"));
    EXPECT_GT(inked, 12) << qPrintable(key);
  }
}

TEST(Icons, OutlinesFollowTheTextColourAndFullPicturesDoNot) {
  const std::set<QString> fullColour{u"TrayConnected"_s, u"TrayOffline"_s, u"TrayWaiting"_s,
                                     u"Logo"_s, u"qinghe"_s};
  for (const QString& key : allKeys()) {
    const QByteArray svg = source(key);
    if (fullColour.contains(key)) {
      EXPECT_FALSE(svg.contains("currentColor")) << qPrintable(key);
      continue;
    }
    EXPECT_TRUE(svg.contains("currentColor")) << qPrintable(key);
    EXPECT_TRUE(svg.contains("viewBox=\"0 0 24 24\"")) << qPrintable(key);
  }
}

TEST(Icons, NoneHoldsLettersOrReachesOutside) {
  for (const QString& key : allKeys()) {
    const QByteArray svg = source(key);
    for (const char* element : {"<text", "<image", "<script", "<style", "href"}) {
      EXPECT_FALSE(svg.contains(element)) << qPrintable(key) << " " << element;
    }
  }
}

TEST(Icons, TheTrayStatesAreToldApartAtSixteenPixels) {
  const QImage connected = painted(u"TrayConnected"_s, 16, "#000000");
  const QImage offline = painted(u"TrayOffline"_s, 16, "#000000");
  const QImage waiting = painted(u"TrayWaiting"_s, 16, "#000000");
  EXPECT_GT(difference(connected, offline), 20);
  EXPECT_GT(difference(connected, waiting), 20);
  EXPECT_GT(difference(offline, waiting), 20);
}

}  // namespace
}  // namespace qinghe
