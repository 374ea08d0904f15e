#pragma once

#include <QCheckBox>
#include <QDateEdit>
#include <QList>
#include <QString>
#include <array>
#include <functional>

#include "forms/CellEditor.h"
#include "forms/ComboBox.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/StatusBar.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "orders/OrderForm.h"
#include "orders/OrderLineRow.h"
#include "orders/order_locks.h"
#include "shell/AppState.h"

namespace qinghe {

struct OrderButton {
  QString key;
  QString caption;
};

/// What tells one order screen from another.
struct OrderLook {
  QString form;
  QString caption;
  OrderSide side;
  qint32 AppState::*openId;        ///< the order to open, 0 for a new one
  QList<OrderButton> buttons;      ///< in their order
  QList<LineColumnTitle> columns;  ///< of the list
  QList<LineInput> inputs;         ///< over the list, from left to right
  bool chargesMustBeNumeric;       ///< other charges are refused on leaving unless they are
  bool everyFieldMakesTotals;      ///< leaving any text field recomputes, not other charges alone
};

/// What the three screens on an order share: the header's fields, the list of lines, the totals
/// with the locks that hang on them, toolbar, closing. List and fields are the document while it is
/// open, and all values in them are text.
///
/// Which control is locked when, and which one's change counts as unsaved, stands in `orderLocks`.
class OrderScreen : public Form {
  Q_OBJECT

 public:
  /// 1 number, 2 seller, 3 buyer, 4 other charges; null for any other.
  TextBox* txtFields(int index) const;
  /// In the order of `OrderCount`.
  TextBox* TxtCounts(int index) const { return counts_.at(static_cast<std::size_t>(index)); }

  Toolbar* Toolbar1;
  QDateEdit* DTPicker1;
  QDateEdit* DTPicker2;
  ComboBox* ComboFHFS;
  QCheckBox* CheckJHHS;
  QCheckBox* CheckXSHS;
  QCheckBox* CheckFH;
  QCheckBox* CheckSH;
  ListView* ListView1;
  StatusBar* StatusBar1;

 protected:
  explicit OrderScreen(const OrderLook& look);

  void onLoad() override;
  void onActivate() override;
  void onQueryUnload(Cancel& cancel) override;

  bool LoadHeader();
  virtual bool LoadLines() = 0;
  /// Whether the save worked, as far as its result tells. May throw.
  virtual bool SaveOrder() = 0;
  virtual QList<SummedTexts> summedLines() const = 0;
  /// What was typed into an input over a row.
  virtual void enterCell(ListItem& row, LineInput input, const QString& text) = 0;
  /// A button; its failure gets the one message of the toolbar.
  virtual void press(const QString& key);

  /// Recomputes the totals and applies the locks that go with them. Throws `Overflow`; the locks
  /// are applied all the same.
  void RefreshTotals();

  /// `SaveOrder` with what is being typed, as far as it is acceptable, and totals that count it.
  bool save();
  void reportSave(bool saved);
  /// A step whose failure has no words of its own: a box tells the error. Whether it succeeded.
  bool guarded(const std::function<void()>& step);

  OrderForm header() const;
  void showHeader(const OrderForm& form);
  /// Takes the order's id from a portal answer; whether it is one.
  bool takeId(const QString& cell);
  OrderParty own() const;
  qint32 openId() const { return app().*look_.openId; }
  const OrderLook& look() const { return look_; }
  CellEditor* cells() const { return cells_; }

  virtual void setUsable(const QString& control, bool usable);

  bool mDirty = false;

 private:
  void makeControls();
  void makeCells();
  void layOut();
  QWidget* headerPanel();
  QWidget* totalsPanel();
  void connectControls();
  void watchForChanges(const QString& control);
  void SetupColumns();
  void applyLocks(LockTime time);
  OrderFlags flags() const;
  void refresh();
  void leaveField(int index);

  OrderLook look_;
  std::array<TextBox*, 5> fields_{};
  std::array<TextBox*, OrderCountCount> counts_{};
  CellEditor* cells_ = nullptr;
  // The pickers show days only; the portal may have kept a time with one.
  QTime orderTime_, shipTime_;
  QString goodsIds_, quantities_;  ///< of a retail order, as received
};

}  // namespace qinghe
