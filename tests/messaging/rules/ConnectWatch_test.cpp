#include "messaging/rules/ConnectWatch.h"

#include <gtest/gtest.h>

#include <vector>

using namespace qinghe;

namespace {

using Verdict = ConnectWatch::Verdict;

TEST(ConnectWatch, WaitsTwoTicksOfConnectingAndGivesUpAtTheThird) {
  ConnectWatch watch;
  EXPECT_EQ(watch.tick(SocketState::Connecting), Verdict::Wait);
  EXPECT_EQ(watch.ticks(), 1);
  EXPECT_EQ(watch.tick(SocketState::Connecting), Verdict::Wait);
  EXPECT_EQ(watch.ticks(), 2);
  EXPECT_EQ(watch.tick(SocketState::Connecting), Verdict::GiveUp);
  EXPECT_EQ(watch.ticks(), 0);
}

TEST(ConnectWatch, GreetsAtTheFirstTickOfALineThatIsUpAndCountsAnew) {
  ConnectWatch watch;
  watch.tick(SocketState::Connecting);
  EXPECT_EQ(watch.tick(SocketState::Connected), Verdict::SayHello);
  EXPECT_EQ(watch.ticks(), 0);
}

TEST(ConnectWatch, GivesUpAtOnceInEveryOtherState) {
  for (int number = 0; number <= 9; ++number) {
    if (number == 6 || number == 7) continue;
    ConnectWatch watch;
    watch.tick(SocketState::Connecting);
    EXPECT_EQ(watch.tick(static_cast<SocketState>(number)), Verdict::GiveUp) << number;
    EXPECT_EQ(watch.ticks(), 0) << number;
  }
}

TEST(ConnectWatch, TicksOfAnInterruptedAttemptCountForTheNext) {
  ConnectWatch watch;
  watch.tick(SocketState::Connecting);
  watch.tick(SocketState::Connecting);
  EXPECT_EQ(watch.tick(SocketState::Connecting), Verdict::GiveUp);
  EXPECT_EQ(watch.tick(SocketState::Connecting), Verdict::Wait);
}

}  // namespace
