#include "picture_codec.h"

#include <gtest/gtest.h>
#include <QImageWriter>
#include <QRandomGenerator>

#include "pages/TestPicture.h"

namespace qinghe::portal_server {
namespace {

PictureFault faultOf(const std::string& bytes, const PictureLimits& limits = {}) {
  PictureFault fault{};
  const auto copies = readPicture(bytes, fault, limits);
  EXPECT_EQ(copies.has_value(), fault == PictureFault::None);
  return fault;
}

PictureCopies copiesOf(const std::string& bytes) {
  PictureFault fault{};
  auto copies = readPicture(bytes, fault);
  EXPECT_TRUE(copies) << faultText(fault);
  return copies.value_or(PictureCopies());
}

std::string bigEndian(quint32 number) {
  return {static_cast<char>(number >> 24), static_cast<char>(number >> 16),
          static_cast<char>(number >> 8), static_cast<char>(number)};
}

quint32 checksum(const std::string& bytes) {
  quint32 sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<quint8>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
  }
  return ~sum;
}

std::string pngChunk(const std::string& kind, const std::string& data) {
  const std::string checked = kind + data;
  return bigEndian(static_cast<quint32>(data.size())) + checked + bigEndian(checksum(checked));
}

// The head of a PNG picture that says it is so large, and a few bytes behind it.
std::string claimedPng(quint32 width, quint32 height) {
  return "\x89PNG\r\n\x1A\n" +
         pngChunk("IHDR", bigEndian(width) + bigEndian(height) + std::string("\x08\x06\0\0\0", 5)) +
         pngChunk("IDAT", "\x78\x9C") + pngChunk("IEND", "");
}

TEST(PictureCodec, APictureIsKeptInTwoSizes) {
  const auto copies = copiesOf(testPicture("JPEG", 2000, 1000));
  EXPECT_EQ(copies.type, "image/jpeg");
  EXPECT_EQ(pictureOf(copies.large).size(), QSize(1600, 800));
  EXPECT_EQ(pictureOf(copies.small).size(), QSize(320, 160));
}

// Left half in one colour, right half in another one that shines through.
QImage halves(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32);
  image.fill(QColor(20, 200, 30, 100));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width / 2; ++x) image.setPixelColor(x, y, QColor(200, 30, 20));
  }
  return image;
}

TEST(PictureCodec, ALargePictureIsScaledWhileItIsReadAndKeepsItsColoursAndItsTransparency) {
  for (const char* format : {"PNG", "JPEG"}) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(halves(4000, 2400).save(&buffer, format));
    const QImage large = pictureOf(copiesOf(bytes.toStdString()).large);
    ASSERT_EQ(large.size(), QSize(1600, 960));
    const QColor left = large.pixelColor(400, 480);
    EXPECT_NEAR(left.red(), 200, 4) << format;
    EXPECT_NEAR(left.green(), 30, 4) << format;
    EXPECT_EQ(left.alpha(), 255);
    const QColor right = large.pixelColor(1200, 480);
    EXPECT_NEAR(right.green(), 200, 4) << format;
    EXPECT_NEAR(right.alpha(), std::string(format) == "PNG" ? 100 : 255, 3);
  }
}

TEST(PictureCodec, AnUprightPhotographStandsUprightAfterScaling) {
  // What a camera notes that is held upright: the right side of the pixels is the bottom.
  const std::string note(
      "\xFF\xE1\0\x22"
      "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0",
      36);
  std::string jpeg = testPicture("JPEG", 2000, 1000);
  jpeg.insert(2, note);
  const auto copies = copiesOf(jpeg);
  EXPECT_EQ(pictureOf(copies.large).size(), QSize(800, 1600));
  EXPECT_EQ(pictureOf(copies.small).size(), QSize(160, 320));
}

TEST(PictureCodec, ASmallPictureIsNotBlownUp) {
  const auto copies = copiesOf(testPicture("PNG", 3, 5));
  EXPECT_EQ(copies.type, "image/png");
  EXPECT_EQ(pictureOf(copies.large).size(), QSize(3, 5));
  EXPECT_EQ(pictureOf(copies.small).size(), QSize(3, 5));
  EXPECT_EQ(pictureOf(copies.small).pixelColor(1, 1), QColor(200, 30, 30));
}

TEST(PictureCodec, AThinPictureKeepsAtLeastOnePixel) {
  EXPECT_EQ(pictureOf(copiesOf(testPicture("PNG", 8000, 1)).small).size(), QSize(320, 1));
}

TEST(PictureCodec, ATransparentPictureStaysOne) {
  const auto copies = copiesOf(testPicture("PNG", 40, 40, QColor(0, 0, 0, 0)));
  EXPECT_EQ(pictureOf(copies.small).pixelColor(5, 5).alpha(), 0);
}

TEST(PictureCodec, APhotographInPngIsKeptAsJpegOnWhite) {
  QImage noise(1200, 900, QImage::Format_ARGB32);
  QRandomGenerator random(7);
  random.fillRange(reinterpret_cast<quint32*>(noise.bits()), noise.sizeInBytes() / 4);
  noise.setPixelColor(0, 0, QColor(0, 0, 0, 0));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  noise.save(&buffer, "PNG");
  ASSERT_GT(bytes.size(), 1'000'000);
  PictureFault fault{};
  const auto copies = readPicture(bytes.toStdString(), fault, {.bytes = 8'000'000});
  ASSERT_TRUE(copies);
  EXPECT_EQ(copies->type, "image/jpeg");
}

TEST(PictureCodec, NothingButThePixelsRemains) {
  std::string jpeg = testPicture("JPEG", 20, 20);
  const std::string said = "<script>alert(1)</script> 31.23N 121.47E";
  const std::string comment =
      std::string("\xFF\xFE") + '\0' + static_cast<char>(said.size() + 2) + said;
  jpeg.insert(2, comment);
  const auto copies = copiesOf(jpeg + "PK\x03\x04 tail");
  EXPECT_EQ(copies.large.find("script"), std::string::npos);
  EXPECT_EQ(copies.large.find("tail"), std::string::npos);
  EXPECT_EQ(copies.small.find("script"), std::string::npos);
}

TEST(PictureCodec, TheContentSaysWhatItIs) {
  for (const std::string& bytes :
       {std::string("GIF89a\x01\0\x01\0\0\0\0", 13), std::string("<svg xmlns='x'/>"),
        std::string("BM\0\0\0\0"), testPicture("BMP", 2, 2), testPicture("PPM", 2, 2),
        std::string("MZ\x90\0"), std::string("#!/bin/sh\nrm -rf ~\n"), std::string("\0\0", 2),
        std::string(" \xFF\xD8\xFF"), std::string("\x89PNG\n\x1A\n")}) {
    EXPECT_EQ(faultOf(bytes), PictureFault::WrongType) << bytes.substr(0, 4);
  }
  EXPECT_EQ(faultOf(""), PictureFault::Empty);
}

TEST(PictureCodec, AFileIsBounded) {
  const std::string whole = testPicture("PNG", 30, 30);
  EXPECT_EQ(faultOf(whole, {.bytes = whole.size()}), PictureFault::None);
  EXPECT_EQ(faultOf(whole, {.bytes = whole.size() - 1}), PictureFault::TooBig);
  EXPECT_EQ(faultOf(std::string(4'000'001, 'x')), PictureFault::TooBig);
}

TEST(PictureCodec, SidesAndAreaAreBounded) {
  const std::string picture = testPicture("PNG", 40, 20);
  EXPECT_EQ(faultOf(picture, {.side = 40}), PictureFault::None);
  EXPECT_EQ(faultOf(picture, {.side = 39}), PictureFault::TooLarge);
  EXPECT_EQ(faultOf(picture, {.area = 800}), PictureFault::None);
  EXPECT_EQ(faultOf(picture, {.area = 799}), PictureFault::TooLarge);
  EXPECT_EQ(faultOf(testPicture("JPEG", 40, 20), {.area = 799}), PictureFault::TooLarge);
}

TEST(PictureCodec, ABombIsTurnedAwayByItsHead) {
  EXPECT_EQ(faultOf(claimedPng(100'000, 100'000)), PictureFault::TooLarge);
  EXPECT_EQ(faultOf(claimedPng(12'000, 12'000)), PictureFault::TooLarge);
  EXPECT_EQ(faultOf(claimedPng(0x7FFFFFFF, 0x7FFFFFFF)), PictureFault::Broken);
  EXPECT_EQ(faultOf(claimedPng(0, 10)), PictureFault::Broken);
  EXPECT_EQ(faultOf(claimedPng(0xFFFFFFFF, 10)), PictureFault::Broken);
  EXPECT_EQ(faultOf(claimedPng(100, 100)), PictureFault::Broken) << "promises more than it holds";
}

TEST(PictureCodec, PassesOverAPictureAreBounded) {
  const std::string plain = testPicture("JPEG", 16, 16);
  EXPECT_EQ(faultOf(plain, {.scans = 1}), PictureFault::None);
  EXPECT_EQ(faultOf(plain, {.scans = 0}), PictureFault::Broken);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImageWriter writer(&buffer, "jpeg");
  writer.setProgressiveScanWrite(true);
  ASSERT_TRUE(writer.write(pictureOf(plain)));
  EXPECT_EQ(faultOf(bytes.toStdString()), PictureFault::None);
  EXPECT_EQ(faultOf(bytes.toStdString(), {.scans = 3}), PictureFault::Broken);
}

TEST(PictureCodec, APictureCutAnywhereDoesNoHarm) {
  for (const char* format : {"JPEG", "PNG"}) {
    const std::string whole = testPicture(format, 24, 24);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      PictureFault fault{};
      const auto copies = readPicture(whole.substr(0, size), fault);
      EXPECT_EQ(copies.has_value(), fault == PictureFault::None) << format << size;
    }
  }
}

TEST(PictureCodec, EveryFaultHasItsWords) {
  for (const auto fault : {PictureFault::Empty, PictureFault::TooBig, PictureFault::WrongType,
                           PictureFault::TooLarge, PictureFault::Broken}) {
    EXPECT_FALSE(faultText(fault).empty());
  }
}

}  // namespace
}  // namespace qinghe::portal_server
