#include "account/registration/FrmRegister_OK.h"

#include <QFile>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "account/registration/FrmRegister_QY.h"
#include "shell/ras.h"

// The macro declares a function of the global namespace, so it cannot stand inside ours.
static void initTerms() {
  Q_INIT_RESOURCE(registration);
}

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 620;
constexpr int firstHeight = 480;

QString terms() {
  initTerms();
  QFile file(u":/registration/terms.txt"_s);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QRadioButton* option(int index, const QString& caption) {
  auto* button = new QRadioButton(caption);
  button->setObjectName(u"OptionS(%1)"_s.arg(index));
  return button;
}

}  // namespace

FrmRegister_OK::FrmRegister_OK()
    : Form(Kind::Child, u"FrmRegister_OK"_s, u"注册信息"_s),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      Text1(new TextBox(u"Text1"_s, TextBox::Lines::Many, this)),
      OptionS{option(0, u"不接受"_s), option(1, u"接受"_s)} {
  Toolbar1->addButton(u"Load"_s, u"注册"_s, u"填写企业的注册信息"_s);
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"不注册，关闭本窗口"_s);
  Text1->setText(terms());
  Text1->setReadOnly(true);
  Text1->editor()->setAccessibleName(u"服务条款"_s);
  layOut();
  connect(Toolbar1, &Toolbar::buttonClick, this, &FrmRegister_OK::buttonClick);
  connect(OptionS[1], &QRadioButton::toggled, this,
          [this](bool accepted) { Toolbar1->setButtonEnabled(u"Load"_s, accepted); });
  OptionS[0]->setChecked(true);
  Toolbar1->setButtonEnabled(u"Load"_s, false);
}

void FrmRegister_OK::layOut() {
  auto* options = new QHBoxLayout;
  options->addStretch(1);
  options->setSpacing(24);
  for (QRadioButton* button : OptionS) options->addWidget(button);
  options->addStretch(1);
  auto* inside = new QVBoxLayout;
  inside->setContentsMargins(12, 12, 12, 12);
  inside->setSpacing(12);
  inside->addWidget(Text1, 1);
  inside->addLayout(options);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addLayout(inside, 1);
  setTabOrder(Text1->editor(), OptionS[0]);
  setTabOrder(OptionS[0], OptionS[1]);
  resize(firstWidth, firstHeight);
}

void FrmRegister_OK::buttonClick(const QString& key) {
  if (!CheckConnection()) return;
  if (key == u"Load") {
    defaultInstance<FrmRegister_QY>().showForm();
    unload();
  } else if (key == u"Exit") {
    unload();
  }
}

}  // namespace qinghe
