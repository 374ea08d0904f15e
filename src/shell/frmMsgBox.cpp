#include "shell/frmMsgBox.h"

#include <QFrame>
#include <QGridLayout>
#include <QPainter>

#include "shell/AppState.h"
#include "shell/brand_picture.h"
#include "shell/frmSplash.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

class BrandMark : public QWidget {
 public:
  explicit BrandMark(QWidget* parent) : QWidget(parent) { setFixedSize(64, 64); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    paintBrandMark(painter, rect());
  }
};

QLabel* textLine(const QString& name, qreal size, bool bold, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * size);
  font.setBold(bold);
  label->setFont(font);
  // A name from outside may be of any length; the notice keeps its size.
  label->setFixedWidth(340);
  label->setMaximumHeight(3 * label->fontMetrics().lineSpacing());
  return label;
}

}  // namespace

frmMsgBox::frmMsgBox() : Form(Kind::Dialog, u"frmMsgBox"_s, productTitle() + versionText()) {
  Label1 = textLine(u"Label1"_s, 1.3, true, this);
  Label2 = textLine(u"Label2"_s, 1.0, false, this);
  Label3 = textLine(u"Label3"_s, 1.0, false, this);
  lblDisclaimer = textLine(u"lblDisclaimer"_s, 0.85, false, this);
  lblDisclaimer->setText(frmSplash::warningLine());
  QPalette pale = lblDisclaimer->palette();
  // Made from the text's own colour: themes forget the one for hints.
  QColor colour = pale.color(QPalette::WindowText);
  colour.setAlphaF(0.7F);
  pale.setColor(QPalette::WindowText, colour);
  lblDisclaimer->setPalette(pale);
  cmdOK = new QPushButton(u"确定"_s, this);
  cmdOK->setObjectName(u"cmdOK"_s);
  cmdOK->setDefault(true);
  auto* line = new QFrame(this);
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);

  auto* lines = new QVBoxLayout;
  lines->setSpacing(6);
  lines->addWidget(Label1);
  lines->addWidget(Label2);
  lines->addWidget(Label3);
  lines->addStretch(1);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(20, 20, 20, 16);
  grid->setHorizontalSpacing(18);
  grid->setVerticalSpacing(12);
  grid->addWidget(new BrandMark(this), 0, 0, Qt::AlignTop);
  grid->addLayout(lines, 0, 1, 1, 2);
  grid->addWidget(line, 1, 0, 1, 3);
  grid->addWidget(lblDisclaimer, 2, 0, 1, 2, Qt::AlignVCenter);
  grid->addWidget(cmdOK, 2, 2, Qt::AlignRight | Qt::AlignVCenter);
  cmdOK->setFocus();

  Timer1 = new FormTimer(u"Timer1"_s, 2000, this);
  connect(Timer1, &FormTimer::timer, this, [this] { unload(); });
  connect(cmdOK, &QPushButton::clicked, this, [this] { unload(); });
  Timer1->setEnabled(true);
}

void showNotice(const QString& line1, const QString& line2, const QString& line3) {
  auto& notice = defaultInstance<frmMsgBox>();
  notice.Label1->setText(line1);
  notice.Label2->setText(line2);
  notice.Label3->setText(line3);
  TrayShowWaiting();
  // A check that comes in while the notice stands changes its lines; it is on the screen already.
  if (!notice.isVisible()) notice.showModal();
}

}  // namespace qinghe
