#include "shell/AppState.h"

#include "ShellTest.h"

namespace qinghe {
namespace {

TEST(AppState, IsTheLivingOneFromItsMakingToItsEnd) {
  auto first = std::make_unique<AppState>();
  EXPECT_EQ(&app(), first.get());
  EXPECT_EQ(&formsState(), &first->forms);
  first.reset();
  AppState second;
  EXPECT_EQ(&app(), &second);
  EXPECT_EQ(&formsState(), &second.forms);
}

TEST(AppState, StartsWithNobodyLoggedIn) {
  const AppState state;
  EXPECT_FALSE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 0);
  EXPECT_EQ(state.gQiyeId, 0);
  EXPECT_EQ(state.gUserLevel, 0);
  EXPECT_EQ(state.gUserNo, QString());
  EXPECT_TRUE(state.gResponse.isEmpty());
}

TEST(AppState, NamesTheProduct) {
  const AppState state;
  EXPECT_EQ(productTitle(), u"青禾云集电子商务系统"_s);
  EXPECT_EQ(state.forms.productTitle, productTitle());
}

TEST(AppState, TellsTheVersionInThreeNumbers) {
  const auto [major, minor, revision] = programVersion();
  EXPECT_EQ(major, 1);
  EXPECT_EQ(minor, 0);
  EXPECT_EQ(revision, 0);
  EXPECT_EQ(versionText(), u"版本 1.0.0"_s);
}

TEST(AppState, ABlockingReadShutsTheGate) {
  AppState state;
  ASSERT_TRUE(state.inetQuotes.onBlocking);
  EXPECT_FALSE(state.forms.gate.isHeld());
  state.inetQuotes.onBlocking(true);
  EXPECT_TRUE(state.forms.gate.isHeld());
  state.inetQuotes.onBlocking(false);
  EXPECT_FALSE(state.forms.gate.isHeld());
}

TEST(AppState, HasRealLinksDialerAndStoreHost) {
  AppState state;
  EXPECT_NE(dynamic_cast<NetworkLinks*>(state.links.get()), nullptr);
  EXPECT_NE(dynamic_cast<NmcliDialer*>(state.dialer.get()), nullptr);
  EXPECT_NE(state.storeHost, nullptr);
  EXPECT_EQ(state.store.host, state.storeHost.get());
  EXPECT_EQ(state.programDirectory, QCoreApplication::applicationDirPath());
}

}  // namespace
}  // namespace qinghe
