#include "shell/frmSplash.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include "shell/AppState.h"
#include "shell/brand_picture.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

const QColor ink(0x12, 0x3B, 0x33);
const QColor paleInk(0x4A, 0x6A, 0x62);
const QColor light(0xEE, 0xF8, 0xEF);

QLabel* textLine(const QString& name, qreal size, bool bold, const QColor& colour,
                 QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * size);
  font.setBold(bold);
  label->setFont(font);
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, colour);
  label->setPalette(palette);
  return label;
}

QString levelName(qint16 level) {
  switch (level) {
    case 0:
      return u"免费用户"_s;
    case 1:
      return u"正式用户"_s;
    case 2:
      return u"VIP用户"_s;
    default:
      return {};
  }
}

}  // namespace

QString frmSplash::warningLine() {
  return u"警告：本程序受著作权法保护，未经许可不得复制或传播。"_s;
}

frmSplash::frmSplash() : Form(Kind::Window, u"frmSplash"_s, productTitle()) {
  // Above the main window, which comes up behind it a moment later.
  setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);

  Label1 = textLine(u"Label1"_s, 1.3, true, paleInk, this);
  Label1->setText(u"青禾云集"_s);
  lblProductName = textLine(u"lblProductName"_s, 2.0, true, ink, this);
  lblVersion = textLine(u"lblVersion"_s, 1.1, false, ink, this);
  lblPlatform = textLine(u"lblPlatform"_s, 1.0, false, paleInk, this);
  lblPlatform->setText(u"windows 9X/windows NT"_s);
  LabelZhce = textLine(u"LabelZhce"_s, 1.1, true, ink, this);
  LabelZhce->setText(u"未注册用户"_s);
  lblCompany = textLine(u"lblCompany"_s, 0.95, true, light, this);
  lblCompany->setText(u"青禾云集 版权所有"_s);
  lblWarning = textLine(u"lblWarning"_s, 0.85, false, light, this);
  lblWarning->setText(warningLine());

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(36, 32, 36, 14);
  column->setSpacing(6);
  column->addWidget(Label1);
  column->addSpacing(44);
  column->addWidget(lblProductName);
  column->addWidget(lblVersion);
  column->addWidget(lblPlatform);
  column->addSpacing(10);
  column->addWidget(LabelZhce);
  column->addStretch(1);
  column->addWidget(lblCompany);
  column->addWidget(lblWarning);
  setFixedSize(sizeHint().expandedTo({540, 340}));
}

void frmSplash::onLoad() {
  const auto& state = app();
  if (state.gQiyeId >= 1) {
    const QString level = levelName(state.gUserLevel);
    if (!level.isEmpty()) LabelZhce->setText(level);
  }
  lblVersion->setText(versionText());
  lblProductName->setText(productTitle());
  if (const auto* screen = QGuiApplication::primaryScreen())
    move(screen->availableGeometry().center() - rect().center());
  showForm();
}

void frmSplash::mousePressEvent(QMouseEvent* /*event*/) {
  unload();
}

void frmSplash::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return ||
      event->key() == Qt::Key_Enter)
    unload();
  else
    Form::keyPressEvent(event);
}

void frmSplash::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  paintSplashPicture(painter, rect());
  painter.setPen(QColor(0x14, 0x5F, 0x4B));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace qinghe
