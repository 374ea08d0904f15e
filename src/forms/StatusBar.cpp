#include "forms/StatusBar.h"

#include <QLabel>

namespace qinghe {

StatusBar::StatusBar(const QString& name, QWidget* parent)
    : QStatusBar(parent), label_(new QLabel(this)) {
  setObjectName(name);
  setSizeGripEnabled(false);
  label_->setTextFormat(Qt::PlainText);
  label_->setObjectName(name + QStringLiteral(".text"));
  // A long text is cut off and does not widen the window.
  label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  addWidget(label_, 1);
}

QString StatusBar::text() const {
  return label_->text();
}

void StatusBar::setText(const QString& text) {
  label_->setText(text);
}

}  // namespace qinghe
