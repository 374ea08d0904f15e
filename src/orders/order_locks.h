#pragma once

#include <QList>
#include <QString>

#include "orders/OrderForm.h"

namespace qinghe {

/// While what an order allows a party to use something.
enum class LockRule {
  Open,         ///< always
  Closed,       ///< never
  Unconfirmed,  ///< neither `JHHS` nor `XSHS` is set
  Unshipped,    ///< neither `FH` nor `SH` is set
};

/// When a rule takes effect.
enum class LockTime {
  Start,    ///< the control starts that way and stays so
  Totals,   ///< whenever the totals are recomputed, not when a box is ticked
  Release,  ///< asked anew at each release of the mouse over the list
};

/// One control of one side. Locks are a matter of the client alone.
struct OrderLock {
  QString control;  ///< the control's name, the toolbar's key or the menu entry
  LockRule rule;
  LockTime time;
  bool setsDirty;  ///< a change of it by the user counts as unsaved
};

/// The controls of a side; those of `LockTime::Totals` in the order the totals apply them.
const QList<OrderLock>& orderLocks(OrderSide side);

bool isAllowed(LockRule rule, const OrderFlags& flags);

/// Whether a side may use a control under these flags; what the side does not have, it may not.
bool isAllowed(OrderSide side, const QString& control, const OrderFlags& flags);

}  // namespace qinghe
