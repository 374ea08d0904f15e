#include "messaging/rules/peer_requests.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString server = u"HTTP://portal/"_s;

TEST(PeerRequests, LookUpAPartner) {
  EXPECT_EQ(partnerRequest(server, 77),
            u"HTTP://portal/_vti_login/_vti_detail_field_s.asp?STABLE=%51%59%58%58"
            "&STRDATA=%71%69%79%65%2C%69%70%75%72%6C%2C%6F%6E%6C%69%6E%65%2C"
            "&STOTHER=%49%44%3D%37%37"_s);
}

TEST(PeerRequests, RelayAMessageWithSmallAndCapitalNames) {
  EXPECT_EQ(relayRequest(server, {77, u"中"_s}, {25, u"A"_s}, u"a\r\n<b"_s),
            u"HTTP://portal/_vti_product/_vti_insert_xixi.asp?stable=%78%69%78%69&structn=%37"
            "&QYXX_ID=%37%37&QYXX=%D6%D0&USER_ID=%32%35&USERNAME=%41"
            "&CONTENT=%61%3C%62%72%3E%26%6C%74%3B%62"_s);
}

TEST(PeerRequests, RelayToNobodyHasEmptyValues) {
  EXPECT_EQ(relayRequest(server, {}, {25, u"A"_s}, u"x"_s),
            u"HTTP://portal/_vti_product/_vti_insert_xixi.asp?stable=%78%69%78%69&structn=%37"
            "&QYXX_ID=%30&QYXX=&USER_ID=%32%35&USERNAME=%41&CONTENT=%78"_s);
}

TEST(PeerRequests, ReadTheInbox) {
  EXPECT_EQ(inboxRequest(server, 25),
            u"HTTP://portal/_vti_product/_vti_detail_field_s.asp?STABLE=%78%69%78%69"
            "&STRDATA=%75%73%65%72%5F%69%64%2C%75%73%65%72%6E%61%6D%65%2C%64%54%69%6D%65%2C"
            "%63%6F%6E%74%65%6E%74%2C&STOTHER=%71%79%78%78%5F%69%64%3D%32%35"_s);
}

}  // namespace
