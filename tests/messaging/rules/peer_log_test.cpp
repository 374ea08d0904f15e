#include "messaging/rules/peer_log.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QDateTime when(QDate(2026, 3, 9), QTime(8, 5, 7), Qt::UTC);

TEST(PeerLog, SentDirectly) {
  EXPECT_EQ(sentLog(u"云集书社"_s, when, u"你好"_s, Road::Direct),
            u"发送：云集书社\r\n2026-3-9 8:05:07\r\n你好\r\n\r\n"_s);
}

TEST(PeerLog, SentByRelayHasTheMarkBehindTheText) {
  EXPECT_EQ(sentLog(u"云集书社"_s, when, u"你好"_s, Road::Relay),
            u"发送：云集书社\r\n2026-3-9 8:05:07\r\n你好\r\n（由服务器中转）\r\n\r\n"_s);
}

TEST(PeerLog, ReceivedDirectly) {
  EXPECT_EQ(receivedLog(u"Li"_s, when, u"一\r\n二"_s, Road::Direct),
            u"接收：Li\r\n2026-3-9 8:05:07\r\n一\r\n二\r\n\r\n"_s);
}

TEST(PeerLog, ReceivedByRelay) {
  EXPECT_EQ(receivedLog(u"Li"_s, QDateTime(QDate(2026, 3, 9), QTime(0, 0), Qt::UTC), u"好"_s,
                        Road::Relay),
            u"接收：Li\r\n2026-3-9\r\n好\r\n（由服务器中转）\r\n\r\n"_s);
}

TEST(PeerLog, KeepsAMegabyte) {
  EXPECT_EQ(logLimit, 1'048'576);
}

}  // namespace
