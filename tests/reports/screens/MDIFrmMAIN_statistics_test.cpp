#include "program/MainWindowFixture.h"
#include "reports/screens/FrmQueryJIHU.h"
#include "reports/screens/FrmQueryXISH.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class StatisticsCommands : public MainWindowFixture {};

TEST_F(StatisticsCommands, OpenTheirWizardsInTheFrameAndBringThemBack) {
  beCompany(2, 0);
  start();
  entry(u"mnuQueryJIHU"_s)->trigger();
  ASSERT_TRUE(isLoaded<FrmQueryJIHU>());
  EXPECT_FALSE(isLoaded<FrmQueryXISH>());
  auto& purchase = defaultInstance<FrmQueryJIHU>();
  EXPECT_TRUE(frame->isAncestorOf(&purchase));
  purchase.SetStep(3);
  entry(u"mnuQueryXish"_s)->trigger();
  ASSERT_TRUE(isLoaded<FrmQueryXISH>());
  EXPECT_TRUE(frame->isAncestorOf(&defaultInstance<FrmQueryXISH>()));
  entry(u"mnuQueryJIHU"_s)->trigger();
  EXPECT_EQ(defaultInstance<FrmQueryJIHU>().mStep, 3) << "the same one, as it was left";
}

}  // namespace
