#include "demo_pictures.h"

#include <QBuffer>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include "pictures.h"

namespace qinghe::portal_server {

namespace {

constexpr std::int64_t covers = 16;  // goods with a cover, from the first on

// Colours that differ from one id to the next and are the same every time.
QColor colour(std::int64_t id, int saturation, int lightness) {
  return QColor::fromHsl(static_cast<int>(id * 47 % 360), saturation, lightness);
}

void paintGround(QPainter& painter, const QRect& area, const QColor& above, const QColor& below) {
  QLinearGradient ground(area.topLeft(), area.bottomLeft());
  ground.setColorAt(0, above);
  ground.setColorAt(1, below);
  painter.fillRect(area, ground);
}

// A book: spine, plate for the title, and an ornament.
QImage cover(std::int64_t id) {
  QImage image(360, 480, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  paintGround(painter, image.rect(), colour(id, 110, 150), colour(id, 120, 95));
  painter.fillRect(0, 0, 26, 480, colour(id, 120, 75));
  painter.fillRect(66, 70, 254, 96, QColor(250, 247, 238));
  painter.fillRect(90, 98, 206, 10, colour(id, 60, 90));
  painter.fillRect(90, 126, 130, 8, colour(id, 40, 130));
  painter.setPen(QPen(QColor(250, 247, 238, 170), 6));
  for (int ring = 0; ring < 4; ++ring) {
    const int size = 40 + ring * 46;
    if (id % 3 == 0) painter.drawEllipse(QPoint(193, 320), size / 2, size / 2);
    if (id % 3 == 1) painter.drawRect(193 - size / 2, 320 - size / 2, size, size);
    if (id % 3 == 2) painter.drawLine(70, 250 + ring * 46, 316, 210 + ring * 46);
  }
  return image;
}

// A sign: two leaves in a ring.
QImage sign(std::int64_t id) {
  QImage image(320, 320, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour(id, 110, 90), 14));
  painter.drawEllipse(QPoint(160, 160), 130, 130);
  painter.setPen(Qt::NoPen);
  for (const int side : {-1, 1}) {
    painter.setBrush(colour(id, 120, side < 0 ? 110 : 85));
    painter.save();
    painter.translate(160, 230);
    painter.rotate(side * 32);
    painter.drawEllipse(QPoint(0, -75), 30, 78);
    painter.restore();
  }
  return image;
}

// A place: sky, ground, and houses with windows.
QImage place(std::int64_t id) {
  QImage image(640, 420, QImage::Format_RGB32);
  QPainter painter(&image);
  paintGround(painter, image.rect(), QColor(196, 222, 238), QColor(244, 240, 226));
  painter.fillRect(0, 330, 640, 90, QColor(178, 170, 150));
  for (int house = 0; house < 4; ++house) {
    const int height = 150 + static_cast<int>((id * 31 + house * 53) % 110);
    const QRect wall(30 + house * 150, 330 - height, 130, height);
    painter.fillRect(wall, colour(id + house, 50, 165));
    for (int row = 0; row < height / 50; ++row) {
      for (int column = 0; column < 3; ++column) {
        painter.fillRect(wall.left() + 14 + column * 40, wall.top() + 16 + row * 48, 24, 28,
                         QColor(90, 105, 120));
      }
    }
  }
  return image;
}

std::optional<PictureCopies> copiesOf(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "JPEG", 95);
  PictureFault fault{};
  return readPicture({bytes.constData(), static_cast<std::size_t>(bytes.size())}, fault);
}

}  // namespace

void fillDemoPictures(Store& store) {
  store.transact([](StoreWriter& writer) {
    const auto give = [&](const char* kind, std::int64_t id, QImage (*draw)(std::int64_t)) {
      const auto subject = findSubject(writer, kind, std::to_string(id));
      if (subject) keepPicture(writer, *subject, copiesOf(draw(id)));
    };
    for (std::int64_t id = 1; id <= covers; ++id) give("ximu", id, cover);
    for (std::int64_t id = 1; id <= 4; ++id) give("qyxx", id, sign);
    for (std::int64_t id = 501; id <= 504; ++id) give("mumu", id, sign);
    // The first place of the first company waits for its owner's own picture.
    for (std::int64_t id = 2; id <= 6; ++id) give("tupi", id, place);
  });
}

}  // namespace qinghe::portal_server
