#include "Seats.h"

#include <gtest/gtest.h>

#include <list>

using qinghe::portal_server::Seats;

TEST(Seats, AreBoundedInAllAndForOneClient) {
  Seats seats(3, 2);
  std::list<Seats::Seat> taken;
  const auto take = [&](const char* client) {
    auto seat = seats.take(client);
    if (!seat) return false;
    taken.push_back(std::move(*seat));
    return true;
  };
  EXPECT_TRUE(take("a"));
  EXPECT_TRUE(take("a"));
  EXPECT_FALSE(take("a")) << "no third one for the same client";
  EXPECT_TRUE(take("b"));
  EXPECT_FALSE(take("c")) << "none left at all";
  taken.erase(taken.begin());
  EXPECT_TRUE(take("a")) << "a seat that was left is free";
  taken.clear();
  EXPECT_TRUE(take("b"));
  EXPECT_TRUE(take("b"));
  EXPECT_TRUE(take("c"));
}

TEST(Seats, OneThatMovedIsLeftOnce) {
  Seats seats(1, 1);
  {
    auto first = seats.take("a");
    ASSERT_TRUE(first);
    const Seats::Seat second(std::move(*first));
    first.reset();
    EXPECT_FALSE(seats.take("a"));
  }
  EXPECT_TRUE(seats.take("a"));
}
