#include "shell/Picker.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

#include "shell/modal.h"

namespace qinghe {

using namespace Qt::StringLiterals;

Picker::Picker(const QString& name, const QString& caption)
    : Form(Kind::Dialog, name, caption),
      commandC(new QPushButton(u"确定(&O)"_s, this)),
      commandT(new QPushButton(u"取消(&C)"_s, this)) {
  commandC->setObjectName(u"commandC"_s);
  commandC->setDefault(true);
  commandT->setObjectName(u"commandT"_s);
  connect(commandC, &QPushButton::clicked, this, [this] { accept(); });
  connect(commandT, &QPushButton::clicked, this, &Picker::cancel);
}

Choice Picker::choose() {
  const QPointer<Picker> self(this);
  showModalWaiting(*this);
  return self == nullptr ? Choice() : choice();
}

TextBox* Picker::hiddenBox(const QString& name) {
  auto* box = new TextBox(name, TextBox::Lines::One, this);
  box->hide();
  return box;
}

void Picker::addButtons(QVBoxLayout& layout) {
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(commandC);
  buttons->addWidget(commandT);
  layout.addLayout(buttons);
}

void Picker::accept() {
  hideForm();
}

void Picker::cancel() {
  clearChoice();
  hideForm();
}

void Picker::onUnload() {
  clearChoice();
}

}  // namespace qinghe
