#include "orders/order_locks.h"

#include <algorithm>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

using enum LockRule;
using enum LockTime;

const QList<OrderLock>& purchaseLocks() {
  // The ship date is the seller's: it is open here and saved nowhere but in the local copy, so a
  // change of it does not count as unsaved.
  static const QList<OrderLock> locks{
      {u"DTPicker1"_s, Unshipped, Totals, true},     {u"txtFields(1)"_s, Unshipped, Totals, true},
      {u"Ximu"_s, Unshipped, Totals, false},         {u"mnuList"_s, Unshipped, Totals, false},
      {u"TxtInputSL"_s, Unconfirmed, Release, true}, {u"TxtInputJG"_s, Unconfirmed, Release, true},
      {u"TxtInputZK"_s, Unconfirmed, Release, true}, {u"txtFields(2)"_s, Closed, Start, true},
      {u"txtFields(3)"_s, Closed, Start, true},      {u"txtFields(4)"_s, Closed, Start, true},
      {u"DTPicker2"_s, Open, Start, false},          {u"ComboFHFS"_s, Closed, Start, false},
      {u"CheckJHHS"_s, Open, Start, true},           {u"CheckXSHS"_s, Closed, Start, true},
      {u"CheckFH"_s, Closed, Start, true},           {u"CheckSH"_s, Open, Start, true}};
  return locks;
}

QList<OrderLock> sellerLocks() {
  // The order date is the buyer's: open here as the form starts, and never counted as unsaved.
  return {{u"txtFields(4)"_s, Unconfirmed, Totals, true},
          {u"DTPicker2"_s, Unshipped, Totals, true},
          {u"ComboFHFS"_s, Unshipped, Totals, true},
          {u"txtFields(1)"_s, Closed, Start, true},
          {u"txtFields(2)"_s, Closed, Start, true},
          {u"txtFields(3)"_s, Closed, Start, true},
          {u"DTPicker1"_s, Open, Start, false},
          {u"CheckJHHS"_s, Closed, Start, true},
          {u"CheckXSHS"_s, Open, Start, true},
          {u"CheckFH"_s, Open, Start, true},
          {u"CheckSH"_s, Closed, Start, true}};
}

const QList<OrderLock>& salesLocks() {
  static const QList<OrderLock> locks =
      sellerLocks() + QList<OrderLock>{{u"TxtInputZK"_s, Unconfirmed, Release, true}};
  return locks;
}

const QList<OrderLock>& retailLocks() {
  // The input is there and never opened: a retail order's lines cannot be edited.
  static const QList<OrderLock> locks =
      sellerLocks() + QList<OrderLock>{{u"TxtInputZK"_s, Closed, Start, true}};
  return locks;
}

}  // namespace

const QList<OrderLock>& orderLocks(OrderSide side) {
  switch (side) {
    case OrderSide::Purchase:
      return purchaseLocks();
    case OrderSide::Sales:
      return salesLocks();
    case OrderSide::Retail:
      break;
  }
  return retailLocks();
}

bool isAllowed(LockRule rule, const OrderFlags& flags) {
  switch (rule) {
    case Open:
      return true;
    case Unconfirmed:
      return !flags.jhhs && !flags.xshs;
    case Unshipped:
      return !flags.fh && !flags.sh;
    case Closed:
      break;
  }
  return false;
}

bool isAllowed(OrderSide side, const QString& control, const OrderFlags& flags) {
  const QList<OrderLock>& locks = orderLocks(side);
  const auto found = std::ranges::find(locks, control, &OrderLock::control);
  return found != locks.end() && isAllowed(found->rule, flags);
}

}  // namespace qinghe
