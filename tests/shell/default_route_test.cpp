#include "shell/default_route.h"

#include <gtest/gtest.h>

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

const QByteArray heading =
    "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT   \n";

TEST(DefaultRouteLinks, NamesTheLinkOfTheDefaultRoute) {
  const QByteArray routes = heading +
                            "eth1\t000200C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0   \n"
                            "eth0\t00000000\t010200C0\t0003\t0\t0\t100\t00000000\t0\t0\t0   \n";
  EXPECT_EQ(defaultRouteLinks(routes, {}), QStringList{u"eth0"_s});
}

TEST(DefaultRouteLinks, PutsTheLowestMetricFirst) {
  const QByteArray routes = heading +
                            "wlan0\t00000000\t0102A8C0\t0003\t0\t0\t600\t00000000\t0\t0\t0\n"
                            "eth0\t00000000\t010200C0\t0003\t0\t0\t100\t00000000\t0\t0\t0\n"
                            "ppp0\t00000000\t00000000\t0001\t0\t0\t50\t00000000\t0\t0\t0\n";
  EXPECT_EQ(defaultRouteLinks(routes, {}), (QStringList{u"ppp0"_s, u"eth0"_s, u"wlan0"_s}));
}

TEST(DefaultRouteLinks, PassesOverRoutesThatAreDownOrNarrower) {
  const QByteArray routes = heading +
                            "eth0\t00000000\t010200C0\t0002\t0\t0\t0\t00000000\t0\t0\t0\n"
                            "tun0\t00000000\t010200C0\t0003\t0\t0\t0\t00000080\t0\t0\t0\n";
  EXPECT_EQ(defaultRouteLinks(routes, {}), QStringList());
}

TEST(DefaultRouteLinks, TakesIpv6BehindIpv4AndNamesEachLinkOnce) {
  const QByteArray routes =
      heading + "eth0\t00000000\t010200C0\t0003\t0\t0\t100\t00000000\t0\t0\t0\n";
  const QByteArray zeros(32, '0');
  const QByteArray ipv6 =
      zeros + " 00 " + zeros + " 00 fd" + QByteArray(30, '0') +
      " 00000400 00000002 00000000 00000003     wlan0\n" + zeros + " 00 " + zeros + " 00 fd" +
      QByteArray(30, '0') + " 00000100 00000002 00000000 00000003     eth0\n" + zeros + " 00 " +
      zeros + " 00 " + zeros + " ffffffff 00000001 00000000 00200200       lo\n";
  EXPECT_EQ(defaultRouteLinks(routes, ipv6), (QStringList{u"eth0"_s, u"wlan0"_s}));
  EXPECT_EQ(defaultRouteLinks({}, ipv6), (QStringList{u"eth0"_s, u"wlan0"_s}));
}

TEST(DefaultRouteLinks, PassesOverWhatCannotBeRead) {
  for (const QByteArray& broken :
       {QByteArray(), QByteArray("\n\n"), QByteArray("eth0"), QByteArray("eth0\t00000000\t0"),
        QByteArray("eth0\t00000000\t0\tzz\t0\t0\t0\t00000000"),
        QByteArray("eth0\t00000000\t0\t0003\t0\t0\t-\t00000000"), QByteArray(5000, '\0')}) {
    EXPECT_EQ(defaultRouteLinks(broken, broken), QStringList());
  }
}

TEST(WithDefaultRouteFirst, MovesTheDefaultLinksToTheFrontAndKeepsTheRest) {
  const QStringList links{u"eth0"_s, u"eth1"_s, u"wlan0"_s};
  EXPECT_EQ(withDefaultRouteFirst(links, {u"wlan0"_s, u"eth1"_s}),
            (QStringList{u"wlan0"_s, u"eth1"_s, u"eth0"_s}));
  EXPECT_EQ(withDefaultRouteFirst(links, {u"gone0"_s}), links);
  EXPECT_EQ(withDefaultRouteFirst({}, {u"eth0"_s}), QStringList());
}

}  // namespace
}  // namespace qinghe
