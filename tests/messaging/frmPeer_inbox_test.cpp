#include <gtest/gtest.h>

#include "messaging/PeerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString inboxTarget =
    u"/_vti_product/_vti_detail_field_s.asp?STABLE=%78%69%78%69"
    "&STRDATA=%75%73%65%72%5F%69%64%2C%75%73%65%72%6E%61%6D%65%2C%64%54%69%6D%65%2C"
    "%63%6F%6E%74%65%6E%74%2C&STOTHER=%71%79%78%78%5F%69%64%3D%32%35"_s;

class PeerInbox : public PeerFixture {
 protected:
  void poll() { emit screen().Timer3->timer(); }
};

TEST_F(PeerInbox, WithNobodyLoggedInTheTimerDoesNothingAndGoesOn) {
  state.gQiyeId = 0;
  int ticks = 0;
  QObject::connect(screen().Timer3, &FormTimer::timer, screen().Timer3, [&ticks] { ++ticks; });
  screen().Timer3->setInterval(1);
  ASSERT_TRUE(waitFor([&ticks] { return ticks >= 5; }));
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(screen().Timer3->isEnabled());
  EXPECT_FALSE(screen().isVisible());
}

TEST_F(PeerInbox, OnceSomebodyIsLoggedInItIsReadExactlyOnce) {
  screen().Timer3->setInterval(1);
  ASSERT_TRUE(waitFor([this] { return screen().isVisible(); }));
  EXPECT_FALSE(screen().Timer3->isEnabled());
  EXPECT_EQ(targets(), QStringList{inboxTarget});
}

TEST_F(PeerInbox, MessagesGoOnTopOfTheFirstLogAndIntoTheTableWithTheirTime) {
  portal.answerWith({page({{u"77"_s, u"云集书社"_s, u"2026-3-9 8:05:07"_s, u"一<br>二"_s},
                           {u"88"_s, u"Wu"_s, u"2026-3-10"_s, u"three"_s}})});
  poll();
  EXPECT_TRUE(screen().isVisible());
  EXPECT_EQ(log(0),
            u"接收：Wu\r\n2026-3-10\r\nthree\r\n（由服务器中转）\r\n\r\n"
            "接收：云集书社\r\n2026-3-9 8:05:07\r\n一\r\n二\r\n（由服务器中转）\r\n\r\n"_s);
  EXPECT_EQ(log(1), QString());
  EXPECT_EQ(rows(), (QStringList{u"25|77|青禾书店|云集书社|（由服务器中转）一\r\n二"_s,
                                 u"25|88|青禾书店|Wu|（由服务器中转）three"_s}));
  EXPECT_EQ(store.value(u"SELECT dtime FROM XIXI WHERE user_id=77"_s), u"2026-03-09 08:05:07"_s);
  EXPECT_EQ(store.value(u"SELECT dtime FROM XIXI WHERE user_id=88"_s), u"2026-03-10 00:00:00"_s);
  EXPECT_TRUE(chooser().isEmpty()) << "who writes through the portal takes no slot";
}

TEST_F(PeerInbox, TheWindowComesUpAlsoWhenThereWasNothingToRead) {
  poll();
  EXPECT_TRUE(screen().isVisible());
  EXPECT_TRUE(rows().isEmpty());
  EXPECT_FALSE(screen().Timer3->isEnabled());
}

TEST_F(PeerInbox, AnAnswerWithoutATableLeavesItHiddenAndIsNotAskedForAgain) {
  portal.answerWith({"<html></html>"});
  poll();
  EXPECT_FALSE(screen().isVisible());
  EXPECT_FALSE(screen().Timer3->isEnabled());
}

struct BrokenRow {
  const char* name;
  QStringList cells;
};

class PeerInboxBroken : public PeerInbox, public testing::WithParamInterface<BrokenRow> {};

TEST_P(PeerInboxBroken, EndsTheReadingAndKeepsWhatCameBefore) {
  portal.answerWith({page({{u"77"_s, u"Li"_s, u"2026-3-9"_s, u"good"_s},
                           GetParam().cells,
                           {u"78"_s, u"Li"_s, u"2026-3-9"_s, u"behind"_s}})});
  poll();
  EXPECT_FALSE(screen().isVisible());
  EXPECT_FALSE(screen().Timer3->isEnabled());
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|Li|（由服务器中转）good"_s});
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PeerInboxBroken,
    testing::Values(BrokenRow{"IdIsNone", {u"x"_s, u"Li"_s, u"2026-3-9"_s, u"bad"_s}},
                    BrokenRow{"IdTooLarge", {u"3000000000"_s, u"Li"_s, u"2026-3-9"_s, u"bad"_s}},
                    BrokenRow{"DateIsNone", {u"77"_s, u"Li"_s, u"soon"_s, u"bad"_s}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(PeerInbox, APortalThatIsDownIsAFailureWithoutAWord) {
  state.gWebServer = u"HTTP://127.0.0.1:1/"_s;
  EXPECT_FALSE(screen().FetchRelayedMessages());
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(PeerInbox, WhileItIsReadAPeersMessageWaits) {
  const auto peer = inbound();
  portal.setHandler([&](const QByteArray&) {
    return ScriptedServer::Reply{
        .bytes = ScriptedServer::ok(page({{u"77"_s, u"Li"_s, u"2026-3-9"_s, u"stored"_s}})),
        .delay = std::chrono::milliseconds(300)};
  });
  peer->send("88@Wu,direct");
  poll();
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|Li|（由服务器中转）stored"_s});
  ASSERT_TRUE(comeRows(2));
  EXPECT_EQ(rows()[1], u"25|88|青禾书店|Wu|direct"_s);
}

}  // namespace
