#include "forms/Icons.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include "support/text_printing.h"

using namespace Qt::StringLiterals;
using qinghe::iconFor;

namespace {

bool showsColour(const QPixmap& pixmap, const QColor& colour) {
  const auto image = pixmap.toImage();
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).alpha() == 255 && image.pixelColor(x, y).rgb() == colour.rgb()) {
        return true;
      }
    }
  }
  return false;
}

class Theme {
 public:
  Theme(const QColor& text, const QColor& highlighted) {
    auto palette = before_;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::HighlightedText, highlighted);
    QGuiApplication::setPalette(palette);
  }
  ~Theme() { QGuiApplication::setPalette(before_); }

 private:
  QPalette before_ = QGuiApplication::palette();
};

}  // namespace

TEST(Icons, AnUnknownKeyHasAnEmptyIcon) {
  for (const auto& key : {u""_s, u"NoSuchKey"_s, u"../icons/Save"_s, u"save"_s}) {
    EXPECT_TRUE(iconFor(key).isNull()) << key.toStdString();
  }
}

TEST(Icons, AnOutlineTakesTheThemesTextColourAlsoWhenTheThemeChanges) {
  const auto icon = iconFor(u"Save"_s);
  ASSERT_FALSE(icon.isNull());
  for (const auto& [text, highlighted] : {std::pair(QColor(250, 251, 252), QColor(1, 2, 3)),
                                          {QColor(9, 8, 7), QColor(255, 0, 255)}}) {
    const Theme theme(text, highlighted);
    EXPECT_TRUE(showsColour(icon.pixmap(QSize(64, 64), 1.0), text));
    EXPECT_TRUE(showsColour(icon.pixmap(QSize(64, 64), 1.0, QIcon::Selected), highlighted));
    EXPECT_FALSE(showsColour(icon.pixmap(QSize(64, 64), 1.0, QIcon::Disabled), text));
  }
}

TEST(Icons, AnIconIsSharpAtAnyPixelRatio) {
  const auto icon = iconFor(u"Save"_s);
  for (const qreal ratio : {1.0, 1.25, 2.0}) {
    const auto pixmap = icon.pixmap(QSize(24, 24), ratio);
    EXPECT_EQ(pixmap.width(), qRound(24 * ratio));
    EXPECT_EQ(pixmap.devicePixelRatio(), ratio);
  }
}

TEST(Icons, AnIconPaintsItselfIntoItsRectangle) {
  const Theme theme(Qt::red, Qt::blue);
  QPixmap canvas(80, 80);
  canvas.setDevicePixelRatio(2);
  canvas.fill(Qt::white);
  QPainter painter(&canvas);
  iconFor(u"Save"_s).paint(&painter, QRect(4, 4, 32, 32));
  painter.end();
  EXPECT_TRUE(showsColour(canvas, Qt::red));
  EXPECT_EQ(canvas.toImage().pixelColor(2, 2), QColor(Qt::white));
}
