#include "tools/Calculator.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QScreen>

#include "forms/Prompts.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize keySize(58, 44);
constexpr QStringView operators = u"+-X/=";

QString member(const QString& array, int index) {
  return u"%1(%2)"_s.arg(array).arg(index);
}

}  // namespace

Calculator::Calculator()
    : Form(Kind::Window, u"Calculator"_s, u"计算器"_s),
      Readout(new QLabel(this)),
      engine_(app().calculator) {
  Readout->setObjectName(u"Readout"_s);
  Readout->setTextFormat(Qt::PlainText);
  Readout->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Readout->setFrameShape(QFrame::StyledPanel);
  Readout->setAutoFillBackground(true);
  Readout->setBackgroundRole(QPalette::Base);
  Readout->setMinimumHeight(keySize.height());
  Readout->setMargin(8);
  Readout->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  Readout->setAccessibleName(u"显示"_s);
  QFont large = Readout->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  Readout->setFont(large);

  for (int digit = 0; digit <= 9; ++digit) {
    addKey(member(u"Number"_s, digit), QString::number(digit),
           [this, digit] { engine_.number(digit); });
  }
  for (int index = 0; index < operators.size(); ++index) {
    const QChar key = operators[index];
    addKey(member(u"Operator"_s, index), key, [this, key] { operate(key); });
  }
  addKey(u"Decimal"_s, u"."_s, [this] { engine_.decimal(); });
  addKey(u"Percent"_s, u"%"_s, [this] { engine_.percent(); });
  addKey(u"Cancel"_s, u"C"_s, [this] { engine_.cancel(); });
  addKey(u"CancelEntry"_s, u"CE"_s, [this] { engine_.cancelEntry(); });
  layOut();
  showReadout();
}

void Calculator::addKey(const QString& name, const QString& caption,
                        const std::function<void()>& press) {
  auto* key = new QPushButton(caption, this);
  key->setObjectName(name);
  key->setMinimumSize(keySize);
  // The keyboard has keys of its own for all of them; the focus stays with the window.
  key->setFocusPolicy(Qt::NoFocus);
  keys_[name] = key;
  connect(key, &QPushButton::clicked, this, [this, press] {
    press();
    showReadout();
  });
}

void Calculator::layOut() {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(12, 12, 12, 12);
  grid->setSpacing(6);
  grid->addWidget(Readout, 0, 0, 1, 5);
  const QList<QStringList> rows = {
      {u"Number(7)"_s, u"Number(8)"_s, u"Number(9)"_s, u"Cancel"_s, u"CancelEntry"_s},
      {u"Number(4)"_s, u"Number(5)"_s, u"Number(6)"_s, u"Operator(0)"_s, u"Operator(1)"_s},
      {u"Number(1)"_s, u"Number(2)"_s, u"Number(3)"_s, u"Operator(2)"_s, u"Operator(3)"_s},
      {u"Number(0)"_s, {}, u"Decimal"_s, u"Operator(4)"_s, u"Percent"_s}};
  for (int row = 0; row < rows.size(); ++row) {
    for (int column = 0; column < rows[row].size(); ++column) {
      const QString& name = rows[row][column];
      if (name.isEmpty()) continue;
      grid->addWidget(keys_[name], row + 1, column, 1, name == u"Number(0)" ? 2 : 1);
    }
  }
}

void Calculator::onLoad() {
  adjustSize();
  if (const QScreen* where = screen()) {
    QRect place(QPoint(), size());
    place.moveCenter(where->availableGeometry().center());
    move(place.topLeft());
  }
}

void Calculator::operate(QChar key) {
  switch (engine_.operate(key)) {
    case CalculatorEngine::Outcome::DivisionByZero:
      prompts().ask(this, {u"除数不能为零"_s, u"计算器"_s, Buttons::Ok, Mark::Exclamation});
      break;
    case CalculatorEngine::Outcome::TooLarge:
      prompts().ask(this, {u"数值溢出"_s, u"计算器"_s, Buttons::Ok, Mark::Exclamation});
      break;
    case CalculatorEngine::Outcome::Done:
      break;
  }
}

void Calculator::showReadout() {
  Readout->setText(engine_.readout());
}

QString Calculator::keyFor(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return u"Operator(4)"_s;
    case Qt::Key_Escape:
      return u"Cancel"_s;
    case Qt::Key_Delete:
      return u"CancelEntry"_s;
    default:
      break;
  }
  const QString text = event.text().toUpper();
  if (text.size() != 1) return {};
  const QChar typed = text[0] == u'*' ? QChar(u'X') : text[0];
  if (typed >= u'0' && typed <= u'9') return member(u"Number"_s, typed.unicode() - u'0');
  if (typed == u'.' || typed == u',') return u"Decimal"_s;
  if (typed == u'%') return u"Percent"_s;
  const qsizetype index = operators.indexOf(typed);
  return index < 0 ? QString() : member(u"Operator"_s, static_cast<int>(index));
}

void Calculator::keyPressEvent(QKeyEvent* event) {
  const QString name = keyFor(*event);
  if (name.isEmpty()) {
    Form::keyPressEvent(event);
  } else {
    keys_[name]->click();
  }
}

}  // namespace qinghe
