#include "forms/FormTimer.h"

#include <QElapsedTimer>

#include "forms/FormsFixture.h"
#include "forms/HourGlass.h"

using namespace Qt::StringLiterals;
using qinghe::FormTimer;
using qinghe::HourGlass;

namespace {

class FormTimerTest : public FormsFixture {
 protected:
  /// Waits until a plain timer of the same interval has surely fired some times.
  static void letTimePass(int ms) {
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return clock.elapsed() > ms; }));
  }

  FormTimer timer_{u"Timer1"_s, 5, nullptr};
  QSignalSpy fired_{&timer_, &FormTimer::timer};
};

}  // namespace

TEST_F(FormTimerTest, FiresAgainAndAgainWhileEnabled) {
  EXPECT_EQ(timer_.objectName(), u"Timer1"_s);
  EXPECT_FALSE(timer_.isEnabled());
  timer_.setEnabled(true);
  EXPECT_TRUE(QTest::qWaitFor([this] { return fired_.count() >= 3; }));
  timer_.setEnabled(false);
  fired_.clear();
  letTimePass(30);
  EXPECT_EQ(fired_.count(), 0);
}

TEST_F(FormTimerTest, WhatCameDueDuringAPortalReadFiresOnceBehindIt) {
  timer_.setEnabled(true);
  state_->gate.hold();
  state_->gate.hold();
  letTimePass(40);
  EXPECT_EQ(fired_.count(), 0);
  state_->gate.release();
  EXPECT_EQ(fired_.count(), 0);
  timer_.setInterval(100000);
  EXPECT_EQ(fired_.count(), 0);
}

TEST_F(FormTimerTest, TheHeldShotComesOnceAndNotInsideTheReadersStep) {
  FormTimer slow(u"Timer2"_s, 5, nullptr);
  QSignalSpy shots(&slow, &FormTimer::timer);
  QObject::connect(&slow, &FormTimer::timer, &slow, [&] { slow.setEnabled(false); });
  slow.setEnabled(true);
  state_->gate.hold();
  letTimePass(40);
  state_->gate.release();
  EXPECT_EQ(shots.count(), 0) << "the reader still has its answer to read";
  EXPECT_TRUE(QTest::qWaitFor([&] { return shots.count() > 0; }));
  letTimePass(20);
  EXPECT_EQ(shots.count(), 1);
}

TEST_F(FormTimerTest, ATimerSwitchedOffDuringAPortalReadDoesNotFireBehindIt) {
  timer_.setEnabled(true);
  state_->gate.hold();
  letTimePass(30);
  timer_.setEnabled(false);
  state_->gate.release();
  letTimePass(20);
  EXPECT_EQ(fired_.count(), 0);
}

TEST_F(FormTimerTest, AnIntervalOfNothingNeverFires) {
  timer_.setInterval(0);
  EXPECT_EQ(timer_.interval(), 0);
  timer_.setEnabled(true);
  EXPECT_TRUE(timer_.isEnabled());
  letTimePass(20);
  EXPECT_EQ(fired_.count(), 0);
  timer_.setInterval(1);
  EXPECT_TRUE(QTest::qWaitFor([this] { return fired_.count() > 0; }));
}

TEST(EventGate, OpensWhenTheLastHoldIsReleased) {
  qinghe::EventGate gate;
  QSignalSpy opened(&gate, &qinghe::EventGate::opened);
  gate.hold();
  gate.hold();
  gate.release();
  EXPECT_TRUE(gate.isHeld());
  EXPECT_EQ(opened.count(), 0);
  gate.release();
  EXPECT_FALSE(gate.isHeld());
  EXPECT_EQ(opened.count(), 1);
  gate.release();
  EXPECT_FALSE(gate.isHeld());
  EXPECT_EQ(opened.count(), 1);
}

TEST(HourGlass, NestsAndIsUndoneOnEveryWayOut) {
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  {
    const HourGlass outer;
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    try {
      const HourGlass inner;
      throw 1;
    } catch (int) {
    }
    EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
  }
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}
