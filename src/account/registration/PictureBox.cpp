#include "account/registration/PictureBox.h"

#include <QImageReader>
#include <QPainter>

namespace qinghe {

namespace {

/// More than any screen shows; a larger picture is shrunk while it is read.
constexpr QSize largest(2000, 2000);

}  // namespace

PictureBox::PictureBox(const QString& name, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

bool PictureBox::load(const QString& path) {
  QImageReader reader(path);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (size.width() > largest.width() || size.height() > largest.height()) {
    reader.setScaledSize(size.scaled(largest, Qt::KeepAspectRatio));
  }
  picture_ = QPixmap::fromImageReader(&reader);
  update();
  return !picture_.isNull();
}

void PictureBox::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QRect frame = rect().adjusted(0, 0, -1, -1);
  if (!picture_.isNull()) {
    QSize size = picture_.size();
    if (size.width() > frame.width() || size.height() > frame.height()) {
      size.scale(frame.size(), Qt::KeepAspectRatio);
    }
    QRect place(QPoint(), size);
    place.moveCenter(frame.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, picture_);
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(frame);
}

}  // namespace qinghe
