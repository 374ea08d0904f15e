#include "orders/documents/OrderScreen.h"

#include "forms/Prompts.h"
#include "messaging/frmPeer.h"
#include "orders/documents/order_urls.h"
#include "orders/order_totals.h"
#include "shell/PortalMethod.h"
#include "shell/help.h"
#include "shell/ras.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int numberField = 1;
constexpr int sellerField = 2;
constexpr int buyerField = 3;
constexpr int chargesField = 4;

QDateTime withTime(const QDateEdit& picker, QTime time) {
  return {picker.date(), time, Qt::UTC};
}

}  // namespace

OrderScreen::OrderScreen(const OrderLook& look)
    : Form(Kind::Child, look.form, look.caption), look_(look) {
  makeControls();
  layOut();
  makeCells();
  applyLocks(LockTime::Start);
  connectControls();
  giveHelpKey(*this, *Toolbar1);
}

TextBox* OrderScreen::txtFields(int index) const {
  return index >= 0 && index < static_cast<int>(fields_.size())
             ? fields_.at(static_cast<std::size_t>(index))
             : nullptr;
}

void OrderScreen::makeCells() {
  QList<CellColumn> columns;
  for (const LineInput input : look_.inputs) {
    columns.append(
        {.column = columnOf(input),
         .input = nameOf(input),
         .complaint = [input](const QString& text) { return complaintOf(input, text); },
         .afterLeave = [this, input](ListItem& row,
                                     const QString& text) { enterCell(row, input, text); }});
  }
  cells_ = new CellEditor(ListView1, columns);
  // All inputs of a side have the same lock, which is asked anew each time.
  cells_->mayOpen = [this] { return isAllowed(look_.side, nameOf(look_.inputs.first()), flags()); };
}

void OrderScreen::connectControls() {
  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    if (!CheckConnection()) return;
    try {
      press(key);
    } catch (const Failure&) {
      prompts().ask(this, {u"网络锁定失败，操作无效"_s});
    }
  });
  for (int index = numberField; index <= chargesField; ++index) {
    connect(txtFields(index), &TextBox::lostFocus, this, [this, index] { leaveField(index); });
  }
  if (look_.chargesMustBeNumeric) {
    txtFields(chargesField)->onValidate = [this] {
      if (IsNumeric(txtFields(chargesField)->text())) return true;
      prompts().ask(this, {u"必须是数值,请重新输入"_s});
      return false;
    };
  }
  for (const OrderLock& lock : orderLocks(look_.side)) {
    if (lock.setsDirty) watchForChanges(lock.control);
  }
}

void OrderScreen::watchForChanges(const QString& control) {
  auto* widget = findChild<QWidget*>(control);
  const auto change = [this] { mDirty = true; };
  if (auto* box = qobject_cast<TextBox*>(widget)) {
    connect(box, &TextBox::changed, this, change);
  } else if (auto* date = qobject_cast<QDateEdit*>(widget)) {
    connect(date, &QDateEdit::dateChanged, this, change);
  } else if (auto* flag = qobject_cast<QCheckBox*>(widget)) {
    connect(flag, &QCheckBox::toggled, this, change);
  } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
    connect(combo, &QComboBox::editTextChanged, this, change);
    connect(combo, &QComboBox::activated, this, change);
  }
}

void OrderScreen::leaveField(int index) {
  if (isLeaving() || (index != chargesField && !look_.everyFieldMakesTotals)) return;
  guarded([this] { RefreshTotals(); });
}

void OrderScreen::SetupColumns() {
  constexpr int unitsInPixel = 15;
  for (const LineColumnTitle& column : look_.columns) {
    ListView1->addColumn(column.title, qRound(column.width / double{unitsInPixel}));
    const int last = ListView1->model()->columnCount() - 1;
    ListView1->setColumnHidden(last, column.width == 0);
  }
}

void OrderScreen::onLoad() {
  SetupColumns();
  if (openId() != 0) {
    LoadHeader();
    LoadLines();
    try {
      RefreshTotals();
    } catch (const Failure&) {
      // The activation below recomputes and tells it, once.
    }
  } else {
    const OrderParty partner{textOf(app().gPartnerId), app().gPartnerName};
    showHeader(newOrder(partner, own(), QDate::currentDate()));
  }
  showForm();
  mDirty = false;
}

void OrderScreen::onActivate() {
  guarded([this] { RefreshTotals(); });
}

bool OrderScreen::guarded(const std::function<void()>& step) {
  try {
    step();
    return true;
  } catch (const Failure& failure) {
    prompts().ask(this, {failure.description(), {}, Buttons::Ok, Mark::Critical});
    return false;
  }
}

void OrderScreen::press(const QString& key) {
  if (key == u"Save") {
    reportSave(save());
  } else if (key == u"Refresh") {
    refresh();
  } else if (key == u"Call") {
    defaultInstance<frmPeer>().showForm();
  } else if (key == u"Exit") {
    unload();
  } else if (key == u"Help") {
    showHelp();
  }
}

void OrderScreen::refresh() {
  if (openId() == 0) {
    prompts().ask(this, {u"订单未保存"_s});
    return;
  }
  LoadHeader();
  LoadLines();
  mDirty = false;
  RefreshTotals();
}

bool OrderScreen::save() {
  cells_->takeAcceptable();
  // A button takes no focus: charges that are being typed have not been left, and the totals that
  // go out with them must count them.
  if (focusWidget() == txtFields(chargesField)->editor()) guarded([this] { RefreshTotals(); });
  return SaveOrder();
}

void OrderScreen::reportSave(bool saved) {
  if (saved) mDirty = false;
  StatusBar1->setText(saved ? u"订单保存成功！！！"_s : u"订单保存失败！！！"_s);
}

void OrderScreen::onQueryUnload(Cancel& cancel) {
  if (!mDirty) return;
  const Answer answer =
      prompts().ask(this, {u"数据尚未保存，是否保存"_s, {}, Buttons::YesNoCancel, Mark::Question});
  if (answer == Answer::Yes) {
    // A save that says no still closes; only what the store raises keeps the screen, so that the
    // user can try again.
    cancel.value = !guarded([this] { reportSave(save()); });
  } else if (answer == Answer::Cancel) {
    cancel.value = true;
  }
}

OrderParty OrderScreen::own() const {
  return {textOf(app().gQiyeId), app().gUserName};
}

OrderFlags OrderScreen::flags() const {
  return {.jhhs = CheckJHHS->isChecked(),
          .xshs = CheckXSHS->isChecked(),
          .sh = CheckSH->isChecked(),
          .fh = CheckFH->isChecked()};
}

OrderForm OrderScreen::header() const {
  OrderForm form;
  form.id = txtFields(numberField)->Tag;
  form.number = txtFields(numberField)->text();
  form.orderDate = withTime(*DTPicker1, orderTime_);
  form.seller = {txtFields(sellerField)->Tag, txtFields(sellerField)->text()};
  form.buyer = {txtFields(buyerField)->Tag, txtFields(buyerField)->text()};
  form.otherCharges = txtFields(chargesField)->text();
  form.shipDate = withTime(*DTPicker2, shipTime_);
  form.flags = flags();
  form.shipMethod = ComboFHFS->currentText();
  for (std::size_t i = 0; i < counts_.size(); ++i) form.counts.texts[i] = counts_[i]->text();
  form.goodsIds = goodsIds_;
  form.quantities = quantities_;
  return form;
}

void OrderScreen::showHeader(const OrderForm& form) {
  txtFields(numberField)->Tag = form.id;
  txtFields(numberField)->setText(form.number);
  DTPicker1->setDate(form.orderDate.date());
  orderTime_ = form.orderDate.time();
  txtFields(sellerField)->Tag = form.seller.id;
  txtFields(sellerField)->setText(form.seller.name);
  txtFields(buyerField)->Tag = form.buyer.id;
  txtFields(buyerField)->setText(form.buyer.name);
  txtFields(chargesField)->setText(form.otherCharges);
  DTPicker2->setDate(form.shipDate.date());
  shipTime_ = form.shipDate.time();
  CheckJHHS->setChecked(form.flags.jhhs);
  CheckXSHS->setChecked(form.flags.xshs);
  CheckSH->setChecked(form.flags.sh);
  CheckFH->setChecked(form.flags.fh);
  ComboFHFS->setCurrentIndex(ComboFHFS->findText(form.shipMethod, Qt::MatchExactly));
  ComboFHFS->setEditText(form.shipMethod);
  goodsIds_ = form.goodsIds;
  quantities_ = form.quantities;
}

bool OrderScreen::takeId(const QString& cell) {
  app().*look_.openId = toInt32(Val(cell));
  txtFields(numberField)->Tag = textOf(openId());
  return openId() != 0;
}

bool OrderScreen::LoadHeader() {
  OrderForm form = header();
  bool answered = false;
  const QString url = readRequest(headerRead(look_.side, textOf(openId()))).url();
  const bool read = readPortal(url, EmptyAnswer::IsFailure, [&](GetHtml& html) {
    for (const OrderValue value : headerAnswerValues(look_.side)) {
      const QString cell = html.GetRowItem();
      answered = true;
      if (value == OrderValue::Id) {
        takeId(cell);
        form.id = textOf(openId());
      } else {
        takeHeaderCell(form, value, cell);
      }
    }
    return true;
  });
  // What came before a cell that fails is filled in, what stands behind it stays as it was.
  if (answered) showHeader(form);
  return read;
}

void OrderScreen::RefreshTotals() {
  OrderCounts counts = header().counts;
  const auto show = [&] {
    for (std::size_t i = 0; i < counts_.size(); ++i) counts_[i]->setText(counts.texts[i]);
    applyLocks(LockTime::Totals);
  };
  try {
    qinghe::RefreshTotals(summedLines(), txtFields(chargesField)->text(), counts);
  } catch (const Failure&) {
    show();
    throw;
  }
  show();
}

void OrderScreen::applyLocks(LockTime time) {
  for (const OrderLock& lock : orderLocks(look_.side)) {
    if (lock.time == time) setUsable(lock.control, isAllowed(lock.rule, flags()));
  }
}

void OrderScreen::setUsable(const QString& control, bool usable) {
  if (Toolbar1->button(control) != nullptr) {
    Toolbar1->setButtonEnabled(control, usable);
  } else if (auto* widget = findChild<QWidget*>(control)) {
    widget->setEnabled(usable);
  }
}

}  // namespace qinghe
