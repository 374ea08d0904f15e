#include "picture_codec.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <algorithm>

namespace qinghe::portal_server {

namespace {

constexpr int jpegQuality = 85;
constexpr qsizetype largestPng = 1'000'000;  // beyond that it is a photograph

enum class Kind { None, Jpeg, Png };

Kind kindOf(std::string_view bytes) {
  using namespace std::string_view_literals;
  if (bytes.starts_with("\xFF\xD8\xFF"sv)) return Kind::Jpeg;
  if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return Kind::Png;
  return Kind::None;
}

// A progressive picture of some bytes can ask for thousands of passes over all its pixels.
bool hasTooManyScans(std::string_view bytes, int most) {
  constexpr std::string_view scan = "\xFF\xDA";
  int scans = 0;
  for (std::size_t at = bytes.find(scan); at != std::string_view::npos;
       at = bytes.find(scan, at + scan.size())) {
    if (++scans > most) return true;
  }
  return false;
}

std::string encoded(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, format, jpegQuality)) return {};
  return bytes.toStdString();
}

QImage onWhite(const QImage& image) {
  QImage flat(image.size(), QImage::Format_RGB32);
  flat.fill(Qt::white);
  QPainter(&flat).drawImage(0, 0, image);
  return flat;
}

// The pixels alone: a picture carries comments, places and thumbnails along.
QImage bare(QImage image) {
  if (image.colorSpace().isValid()) image.convertToColorSpace(QColorSpace::SRgb);
  image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  return QImage(image.constBits(), image.width(), image.height(), image.bytesPerLine(),
                image.format())
      .copy();
}

QImage within(const QImage& image, int side) {
  if (std::max(image.width(), image.height()) <= side) return image;
  QSize size = image.size().scaled(side, side, Qt::KeepAspectRatio);
  return image.scaled(size.expandedTo({1, 1}), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

PictureCopies copiesOf(const QImage& image, Kind kind, const PictureLimits& limits) {
  QImage large = within(image, limits.largeSide);
  if (kind == Kind::Png) {
    std::string png = encoded(large, "PNG");
    if (static_cast<qsizetype>(png.size()) <= largestPng) {
      return {"image/png", std::move(png), encoded(within(large, limits.smallSide), "PNG")};
    }
  }
  if (large.hasAlphaChannel()) large = onWhite(large);
  return {"image/jpeg", encoded(large, "JPEG"), encoded(within(large, limits.smallSide), "JPEG")};
}

}  // namespace

std::optional<PictureCopies> readPicture(std::string_view bytes, PictureFault& fault,
                                         const PictureLimits& limits) {
  fault = PictureFault::None;
  const Kind kind = kindOf(bytes);
  if (bytes.empty())
    fault = PictureFault::Empty;
  else if (bytes.size() > limits.bytes)
    fault = PictureFault::TooBig;
  else if (kind == Kind::None)
    fault = PictureFault::WrongType;
  else if (kind == Kind::Jpeg && hasTooManyScans(bytes, limits.scans))
    fault = PictureFault::Broken;
  if (fault != PictureFault::None) return {};

  auto data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  // The format is named, so that no other reader ever sees what a stranger sent.
  QImageReader reader(&buffer, kind == Kind::Jpeg ? "jpeg" : "png");
  const QSize size = reader.size();
  if (!size.isValid() || size.isEmpty()) {
    fault = PictureFault::Broken;
    return {};
  }
  const long long area = static_cast<long long>(size.width()) * size.height();
  if (std::max(size.width(), size.height()) > limits.side || area > limits.area) {
    fault = PictureFault::TooLarge;
    return {};
  }
  // Scaled while it is read, so that a large picture is never whole in memory.
  if (std::max(size.width(), size.height()) > limits.largeSide) {
    const QSize side(limits.largeSide, limits.largeSide);
    reader.setScaledSize(size.scaled(side, Qt::KeepAspectRatio).expandedTo({1, 1}));
  }
  reader.setAutoTransform(true);
  const QImage image = reader.read();
  if (!image.isNull()) {
    PictureCopies copies = copiesOf(bare(image), kind, limits);
    if (!copies.large.empty() && !copies.small.empty()) return copies;
  }
  fault = PictureFault::Broken;
  return {};
}

std::string_view faultText(PictureFault fault) {
  switch (fault) {
    case PictureFault::Empty:
      return "没有选择图片文件。";
    case PictureFault::TooBig:
      return "图片文件太大，不能超过 4 MB。";
    case PictureFault::WrongType:
      return "只接受 JPEG 和 PNG 图片。";
    case PictureFault::TooLarge:
      return "图片的尺寸太大，请缩小后再上传。";
    case PictureFault::Broken:
      return "图片文件已损坏，不能读取。";
    case PictureFault::None:
      break;
  }
  return {};
}

}  // namespace qinghe::portal_server
