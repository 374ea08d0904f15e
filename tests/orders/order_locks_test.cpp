#include "orders/order_locks.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct LockCase {
  OrderSide side;
  QString control;
  LockRule rule;
  bool setsDirty;
};

class Locks : public testing::TestWithParam<LockCase> {};

TEST_P(Locks, FollowTheFlagsInAllSixteenStates) {
  const LockCase& row = GetParam();
  for (int state = 0; state < 16; ++state) {
    const OrderFlags flags{(state & 1) != 0, (state & 2) != 0, (state & 4) != 0, (state & 8) != 0};
    bool expected = row.rule == LockRule::Open;
    if (row.rule == LockRule::Unconfirmed) expected = (state & 3) == 0;
    if (row.rule == LockRule::Unshipped) expected = (state & 12) == 0;
    EXPECT_EQ(isAllowed(row.side, row.control, flags), expected)
        << row.control.toStdString() << " in state " << state;
  }
}

TEST_P(Locks, TellWhatCountsAsUnsaved) {
  for (const OrderLock& lock : orderLocks(GetParam().side)) {
    if (lock.control != GetParam().control) continue;
    EXPECT_EQ(lock.setsDirty, GetParam().setsDirty) << lock.control.toStdString();
  }
}

using enum OrderSide;
using enum LockRule;

INSTANTIATE_TEST_SUITE_P(Purchase, Locks,
                         testing::Values(LockCase{Purchase, u"TxtInputSL"_s, Unconfirmed, true},
                                         LockCase{Purchase, u"TxtInputJG"_s, Unconfirmed, true},
                                         LockCase{Purchase, u"TxtInputZK"_s, Unconfirmed, true},
                                         LockCase{Purchase, u"DTPicker1"_s, Unshipped, true},
                                         LockCase{Purchase, u"txtFields(1)"_s, Unshipped, true},
                                         LockCase{Purchase, u"Ximu"_s, Unshipped, false},
                                         LockCase{Purchase, u"mnuList"_s, Unshipped, false},
                                         LockCase{Purchase, u"txtFields(2)"_s, Closed, true},
                                         LockCase{Purchase, u"txtFields(3)"_s, Closed, true},
                                         LockCase{Purchase, u"txtFields(4)"_s, Closed, true},
                                         LockCase{Purchase, u"DTPicker2"_s, Open, false},
                                         LockCase{Purchase, u"ComboFHFS"_s, Closed, false},
                                         LockCase{Purchase, u"CheckJHHS"_s, Open, true},
                                         LockCase{Purchase, u"CheckSH"_s, Open, true},
                                         LockCase{Purchase, u"CheckXSHS"_s, Closed, true},
                                         LockCase{Purchase, u"CheckFH"_s, Closed, true}));

INSTANTIATE_TEST_SUITE_P(Sales, Locks,
                         testing::Values(LockCase{Sales, u"TxtInputSL"_s, Closed, true},
                                         LockCase{Sales, u"TxtInputJG"_s, Closed, true},
                                         LockCase{Sales, u"TxtInputZK"_s, Unconfirmed, true},
                                         LockCase{Sales, u"Ximu"_s, Closed, false},
                                         LockCase{Sales, u"DTPicker1"_s, Open, false},
                                         LockCase{Sales, u"txtFields(1)"_s, Closed, true},
                                         LockCase{Sales, u"txtFields(4)"_s, Unconfirmed, true},
                                         LockCase{Sales, u"DTPicker2"_s, Unshipped, true},
                                         LockCase{Sales, u"ComboFHFS"_s, Unshipped, true},
                                         LockCase{Sales, u"CheckJHHS"_s, Closed, true},
                                         LockCase{Sales, u"CheckSH"_s, Closed, true},
                                         LockCase{Sales, u"CheckXSHS"_s, Open, true},
                                         LockCase{Sales, u"CheckFH"_s, Open, true}));

INSTANTIATE_TEST_SUITE_P(Retail, Locks,
                         testing::Values(LockCase{Retail, u"TxtInputZK"_s, Closed, true},
                                         LockCase{Retail, u"txtFields(1)"_s, Closed, true},
                                         LockCase{Retail, u"txtFields(4)"_s, Unconfirmed, true},
                                         LockCase{Retail, u"DTPicker2"_s, Unshipped, true},
                                         LockCase{Retail, u"ComboFHFS"_s, Unshipped, true},
                                         LockCase{Retail, u"CheckJHHS"_s, Closed, true},
                                         LockCase{Retail, u"CheckSH"_s, Closed, true},
                                         LockCase{Retail, u"CheckXSHS"_s, Open, true},
                                         LockCase{Retail, u"CheckFH"_s, Open, true}));

QList<QString> controlsAt(OrderSide side, LockTime time) {
  QList<QString> controls;
  for (const OrderLock& lock : orderLocks(side)) {
    if (lock.time == time) controls.append(lock.control);
  }
  return controls;
}

}  // namespace

TEST(OrderLocks, TotalsApplyThemInOrder) {
  EXPECT_EQ(controlsAt(Purchase, LockTime::Totals),
            (QList<QString>{u"DTPicker1"_s, u"txtFields(1)"_s, u"Ximu"_s, u"mnuList"_s}));
  const QList<QString> seller{u"txtFields(4)"_s, u"DTPicker2"_s, u"ComboFHFS"_s};
  EXPECT_EQ(controlsAt(Sales, LockTime::Totals), seller);
  EXPECT_EQ(controlsAt(Retail, LockTime::Totals), seller);
}

TEST(OrderLocks, EditingTheListAsksTheBoxesAtTheRelease) {
  EXPECT_EQ(controlsAt(Purchase, LockTime::Release),
            (QList<QString>{u"TxtInputSL"_s, u"TxtInputJG"_s, u"TxtInputZK"_s}));
  EXPECT_EQ(controlsAt(Sales, LockTime::Release), QList<QString>{u"TxtInputZK"_s});
  EXPECT_EQ(controlsAt(Retail, LockTime::Release), QList<QString>());
}
