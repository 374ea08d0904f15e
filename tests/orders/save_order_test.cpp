#include "orders/save_order.h"

#include <gtest/gtest.h>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

// Says what was called: H and 0, 1, 2 to the portal, h and a, b, c locally.
struct SaveCase {
  std::string name;
  char failing;  // the step that answers false
  std::string calls;
  bool saved;
};

SaveOrderSteps recording(std::string& calls, char failing) {
  const auto step = [&calls, failing](char name) {
    calls += name;
    return name != failing;
  };
  const auto after = [](char first, qsizetype line) { return static_cast<char>(first + line); };
  return {[step] { return step('H'); },
          [step, after](qsizetype line) { return step(after('0', line)); },
          [step] { return step('h'); },
          [step, after](qsizetype line) { return step(after('a', line)); }};
}

class Saving : public testing::TestWithParam<SaveCase> {};

TEST_P(Saving, GoesThroughThePortalAndThenTheLocalCopy) {
  std::string calls;
  EXPECT_EQ(SaveOrder(3, recording(calls, GetParam().failing)), GetParam().saved);
  EXPECT_EQ(calls, GetParam().calls);
}

INSTANTIATE_TEST_SUITE_P(Order, Saving,
                         testing::Values(SaveCase{"All", '-', "H012habc", true},
                                         SaveCase{"PortalHeaderFails", 'H', "Hhabc", true},
                                         SaveCase{"PortalLineFails", '1', "H01habc", true},
                                         SaveCase{"LocalHeaderFails", 'h', "H012h", false},
                                         SaveCase{"LocalLineFails", 'b', "H012hab", false}),
                         [](const auto& row) { return row.param.name; });

}  // namespace

TEST(SaveOrder, AnOrderWithoutLinesIsItsHeaderOnly) {
  std::string calls;
  EXPECT_TRUE(SaveOrder(0, recording(calls, '-')));
  EXPECT_EQ(calls, "Hh");
}

TEST(SaveOrder, WhatTheStoreThrowsPasses) {
  std::string calls;
  SaveOrderSteps steps = recording(calls, '-');
  steps.SaveHeaderLocal = []() -> bool { throw Failure(1, u"x"_s); };
  EXPECT_THROW(SaveOrder(1, steps), Failure);
  EXPECT_EQ(calls, "H0");
}
