// How an order screen looks: the panels around its list.

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "orders/documents/OrderScreen.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 900;
constexpr int firstHeight = 580;
constexpr int edge = 12;
constexpr int gap = 8;

QCheckBox* flagBox(const QString& name, const QString& caption, QWidget* parent) {
  auto* box = new QCheckBox(caption, parent);
  box->setObjectName(name);
  return box;
}

QDateEdit* dateBox(const QString& name, const QString& caption, QWidget* parent) {
  auto* box = new QDateEdit(QDate::currentDate(), parent);
  box->setObjectName(name);
  box->setAccessibleName(caption);
  box->setCalendarPopup(true);
  box->setDisplayFormat(u"yyyy-M-d"_s);
  return box;
}

TextBox* textBox(const QString& name, const QString& caption, QWidget* parent) {
  auto* box = new TextBox(name, TextBox::Lines::One, parent);
  box->editor()->setAccessibleName(QString(caption).remove(u' '));
  return box;
}

/// What is closed is still read all day, so it must not be pale.
void keepReadable(QWidget* control) {
  auto colours = control->palette();
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    colours.setColor(QPalette::Disabled, role, colours.color(QPalette::Active, role));
  }
  control->setPalette(colours);
}

QLabel* labelOf(const QString& caption, QWidget* buddy, QWidget* parent) {
  auto* label = new QLabel(caption, parent);
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(buddy);
  return label;
}

struct CountBox {
  QString caption;
  int stretch;  ///< sums of money are longer than counts
};

const QList<CountBox>& countBoxes() {
  static const QList<CountBox> boxes{{u"条目"_s, 2}, {u"数量"_s, 3}, {u"金额"_s, 4}, {u"折扣"_s, 4},
                                     {u"应收"_s, 4}, {u"合计"_s, 4}, {u"税额"_s, 4}};
  return boxes;
}

const std::array<QString, 5> fieldCaptions{QString(), u"订货单号"_s, u"供    商"_s, u"客    户"_s,
                                           u"其它费用"_s};

}  // namespace

void OrderScreen::makeControls() {
  Toolbar1 = new Toolbar(u"Toolbar1"_s, this);
  for (const OrderButton& button : look_.buttons) {
    Toolbar1->addButton(button.key, button.caption, button.caption);
  }
  for (std::size_t i = 1; i < fields_.size(); ++i) {
    fields_[i] = textBox(u"txtFields(%1)"_s.arg(i), fieldCaptions[i], this);
    keepReadable(fields_[i]);
  }
  fields_[4]->setText(u"0"_s);
  DTPicker1 = dateBox(u"DTPicker1"_s, u"订货日期"_s, this);
  DTPicker2 = dateBox(u"DTPicker2"_s, u"发货日期"_s, this);
  ComboFHFS = new ComboBox(u"ComboFHFS"_s, this);
  ComboFHFS->setAccessibleName(u"发货方式"_s);
  ComboFHFS->setMinimumContentsLength(8);
  for (const QString& method : shippingMethods()) ComboFHFS->add(method);
  CheckJHHS = flagBox(u"CheckJHHS"_s, u"客户确认"_s, this);
  CheckXSHS = flagBox(u"CheckXSHS"_s, u"供商确认"_s, this);
  CheckFH = flagBox(u"CheckFH"_s, u"已经发货"_s, this);
  CheckSH = flagBox(u"CheckSH"_s, u"已收到货"_s, this);
  for (QWidget* control : {static_cast<QWidget*>(DTPicker1), static_cast<QWidget*>(DTPicker2),
                           static_cast<QWidget*>(ComboFHFS), static_cast<QWidget*>(CheckJHHS),
                           static_cast<QWidget*>(CheckXSHS), static_cast<QWidget*>(CheckFH),
                           static_cast<QWidget*>(CheckSH)}) {
    keepReadable(control);
  }
  ListView1 = new ListView(u"ListView1"_s, this);
  ListView1->setAccessibleName(u"订货明细"_s);
  ListView1->setSpreadsColumns(true);
  for (std::size_t i = 0; i < counts_.size(); ++i) {
    const QString& caption = countBoxes().at(static_cast<qsizetype>(i)).caption;
    counts_[i] = textBox(u"TxtCounts(%1)"_s.arg(i), caption, this);
    counts_[i]->setText(u"0"_s);
    keepReadable(counts_[i]);
    counts_[i]->setEnabled(false);
  }
  StatusBar1 = new StatusBar(u"StatusBar1"_s, this);
}

void OrderScreen::layOut() {
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addWidget(headerPanel());
  all->addWidget(ListView1, 1);
  all->addWidget(totalsPanel());
  all->addWidget(StatusBar1);
  resize(firstWidth, firstHeight);

  // By the rows of the header.
  const QList<QWidget*> order{fields_[1]->editor(),
                              DTPicker1,
                              fields_[4]->editor(),
                              fields_[2]->editor(),
                              DTPicker2,
                              CheckJHHS,
                              CheckXSHS,
                              fields_[3]->editor(),
                              ComboFHFS,
                              CheckFH,
                              CheckSH,
                              ListView1};
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

QWidget* OrderScreen::headerPanel() {
  auto* panel = new QWidget(this);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(edge, gap, edge, gap);
  grid->setHorizontalSpacing(gap);
  grid->setVerticalSpacing(gap);
  struct Place {
    QString caption;
    QWidget* box;
    QWidget* focus;
    int row, column;
  };
  const auto field = [this](std::size_t index, int row, int column) {
    return Place{fieldCaptions[index], fields_[index], fields_[index]->editor(), row, column};
  };
  const QList<Place> places{field(1, 0, 0), {u"订货日期"_s, DTPicker1, DTPicker1, 0, 2},
                            field(2, 1, 0), {u"发货日期"_s, DTPicker2, DTPicker2, 1, 2},
                            field(3, 2, 0), {u"发货方式"_s, ComboFHFS, ComboFHFS, 2, 2},
                            field(4, 0, 4)};
  for (const Place& place : places) {
    grid->addWidget(labelOf(place.caption, place.focus, panel), place.row, place.column);
    const int span = place.column == 4 ? 2 : 1;
    grid->addWidget(place.box, place.row, place.column + 1, 1, span);
  }
  grid->addWidget(CheckJHHS, 1, 5);
  grid->addWidget(CheckXSHS, 1, 6);
  grid->addWidget(CheckFH, 2, 5);
  grid->addWidget(CheckSH, 2, 6);
  grid->setColumnStretch(1, 3);
  grid->setColumnStretch(3, 1);
  return panel;
}

QWidget* OrderScreen::totalsPanel() {
  auto* panel = new QWidget(this);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(edge, gap, edge, gap);
  grid->setHorizontalSpacing(gap);
  grid->setVerticalSpacing(2);
  for (int i = 0; i < OrderCountCount; ++i) {
    const CountBox& box = countBoxes().at(i);
    grid->addWidget(labelOf(box.caption, TxtCounts(i)->editor(), panel), 0, i);
    grid->addWidget(TxtCounts(i), 1, i);
    grid->setColumnStretch(i, box.stretch);
  }
  return panel;
}

}  // namespace qinghe
