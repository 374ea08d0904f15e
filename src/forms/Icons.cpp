#include "forms/Icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

/// Draws an SVG with its "currentColor" taken from the palette at the time of drawing, so that a
/// change of theme shows at once.
class SvgEngine : public QIconEngine {
 public:
  SvgEngine(const QString& key, const QByteArray& drawing) : key_(key), drawing_(drawing) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device() == nullptr ? 1.0 : painter->device()->devicePixelRatioF();
    auto drawn = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
    drawn.setDevicePixelRatio(ratio);
    painter->drawPixmap(rect, drawn);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
    const auto colour = colourOf(mode);
    const auto name = u"qinghe-icon/%1/%2x%3/%4/%5"_s.arg(key_)
                          .arg(size.width())
                          .arg(size.height())
                          .arg(colour.name(), QString::number(mode));
    QPixmap result;
    if (QPixmapCache::find(name, &result)) return result;
    result = QPixmap(size);
    result.fill(Qt::transparent);
    auto source = drawing_;
    source.replace("currentColor", colour.name().toLatin1());
    QSvgRenderer renderer(source);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&result);
    if (mode == QIcon::Disabled) painter.setOpacity(0.4);
    renderer.render(&painter);
    painter.end();
    QPixmapCache::insert(name, result);
    return result;
  }

  QIconEngine* clone() const override { return new SvgEngine(key_, drawing_); }
  bool isNull() override { return drawing_.isEmpty(); }

 private:
  static QColor colourOf(QIcon::Mode mode) {
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
    return QGuiApplication::palette().color(QPalette::Active, role);
  }

  QString key_;
  QByteArray drawing_;
};

}  // namespace

QIcon iconFor(const QString& key) {
  QFile file(u":/icons/%1.svg"_s.arg(key));
  if (key.isEmpty() || key.contains(u'/') || !file.open(QIODevice::ReadOnly)) return {};
  const auto drawing = file.readAll();
  if (!QSvgRenderer(drawing).isValid()) return {};
  return QIcon(new SvgEngine(key, drawing));
}

}  // namespace qinghe
