#include "messaging/rules/PeerList.h"

#include <gtest/gtest.h>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

PeerEntry named(qint32 id, const QString& name) {
  return {id, name, {}, 0, false};
}

TEST(PeerListRules, ASlotThatIsNotThereFails) {
  QList<PeerEntry> peers(2);
  const PeerList list(peers);
  EXPECT_NO_THROW(list.at(1));
  EXPECT_THROW(list.at(2), InvalidCall);
  EXPECT_THROW(list.at(-1), InvalidCall);
}

TEST(PeerListRules, ResizingKeepsWhatTheSlotsHold) {
  QList<PeerEntry> peers{named(5, u"甲"_s), named(6, u"乙"_s), named(7, u"丙"_s)};
  const PeerList list(peers);
  list.resize(1);
  ASSERT_EQ(peers.size(), 2);
  EXPECT_EQ(peers[1].qyxx, u"乙"_s);
  list.resize(2);
  ASSERT_EQ(peers.size(), 3);
  EXPECT_EQ(peers[2].qyxx_id, 0);
}

TEST(PeerListRules, RefreshingSetsTheFlagsFromTheSocketsAndListsWhoHasAName) {
  QList<PeerEntry> peers{named(5, u"甲"_s), named(6, {}), named(7, u"丙"_s)};
  peers[0].online = true;
  const QList<PeerItem> items = PeerList(peers).refresh(
      {SocketState::Closed, SocketState::Connected, SocketState::Connected});
  EXPECT_FALSE(peers[0].online);
  EXPECT_TRUE(peers[1].online);
  EXPECT_TRUE(peers[2].online);
  ASSERT_EQ(items.size(), 2);
  EXPECT_EQ(items[0].key, u"0 ID"_s);
  EXPECT_EQ(items[0].text, u"甲"_s);
  EXPECT_EQ(items[0].image, u"NL"_s);
  EXPECT_EQ(items[1].key, u"2 ID"_s);
  EXPECT_EQ(items[1].image, u"LK"_s);
}

TEST(PeerListRules, OnlyStateSevenIsOnline) {
  for (int number = 0; number <= 9; ++number) {
    QList<PeerEntry> peers{named(5, u"甲"_s)};
    const auto items = PeerList(peers).refresh({static_cast<SocketState>(number)});
    EXPECT_EQ(peers[0].online, number == 7) << number;
    EXPECT_EQ(items[0].image, number == 7 ? u"LK"_s : u"NL"_s) << number;
  }
}

TEST(PeerListRules, APartnerIsSoughtInTheInboundSlotsAlone) {
  QList<PeerEntry> peers{named(5, u"甲"_s), named(6, u"乙"_s), named(7, u"丙"_s)};
  const PeerList list(peers);
  EXPECT_FALSE(list.isInbound(5, 3)) << "slot 0 is the outgoing one";
  EXPECT_TRUE(list.isInbound(6, 3));
  EXPECT_TRUE(list.isInbound(7, 3));
  EXPECT_FALSE(list.isInbound(7, 2)) << "a slot without a socket";
  EXPECT_FALSE(list.isInbound(8, 3));
}

TEST(PeerListRules, TheSlotIsTheNumberInFrontOfAKey) {
  EXPECT_EQ(slotOfKey(u"0 ID"), 0);
  EXPECT_EQ(slotOfKey(u"12 ID"), 12);
  EXPECT_EQ(slotOfKey(u""), 0);
  EXPECT_THROW(slotOfKey(u"99999 ID"), Overflow);
}

struct PlaceRow {
  QStringList keys;
  qint32 id;
  int place;
};

class PlaceOfKey : public testing::TestWithParam<PlaceRow> {};

TEST_P(PlaceOfKey, ComparesSlotsWithAnEnterprisesId) {
  EXPECT_EQ(placeOfKey(GetParam().keys, GetParam().id), GetParam().place);
}

INSTANTIATE_TEST_SUITE_P(Rows, PlaceOfKey,
                         testing::Values(PlaceRow{{}, 77, 1}, PlaceRow{{u"1 ID"_s}, 77, 2},
                                         PlaceRow{{u"0 ID"_s, u"1 ID"_s}, 77, 3},
                                         PlaceRow{{u"1 ID"_s}, 1, 1},
                                         PlaceRow{{u"0 ID"_s, u"1 ID"_s}, 1, 2},
                                         PlaceRow{{u"0 ID"_s, u"1 ID"_s}, 0, 1},
                                         PlaceRow{{u"0 ID"_s, u"0 ID"_s}, 0, 1}));

}  // namespace
