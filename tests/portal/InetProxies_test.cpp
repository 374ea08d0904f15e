#include "TransportFixture.h"
#include "portal/proxies.h"

using namespace Qt::StringLiterals;
using namespace qinghe;
using namespace std::chrono_literals;

namespace {

class InetProxies : public TransportFixture {
 protected:
  InetProxies() {
    proxy.answerWith({"through the proxy"});
    server.answerWith({"direct"});
  }
  QByteArray absoluteLine(const QByteArray& path) const {
    return "GET HTTP://" + server.host().toLatin1() + path + " HTTP/1.1";
  }
  QString read() { return inet.OpenURL(url(u"a b?c=%41#d"_s)); }

  ScriptedServer proxy;
};

TEST_F(InetProxies, TypeOneIsDirectWhateverIsSet) {
  qputenv("http_proxy", "http://" + proxy.host().toLatin1());
  inet.AccessType = 1;
  inet.Proxy = u"HTTP="_s + proxy.host();
  EXPECT_EQ(read(), u"direct"_s);
  EXPECT_EQ(requestLine(server), "GET /a b?c=%41 HTTP/1.1");
}

TEST_F(InetProxies, AnUnknownTypeIsDirect) {
  qputenv("http_proxy", "http://" + proxy.host().toLatin1());
  inet.Proxy = u"HTTP="_s + proxy.host();
  for (const qint16 type : {qint16(-1), qint16(3)}) {
    inet.AccessType = type;
    EXPECT_EQ(read(), u"direct"_s);
  }
}

TEST_F(InetProxies, TypeTwoGoesThroughTheNamedProxyForLoopbackToo) {
  qputenv("no_proxy", "*");
  inet.AccessType = 2;
  inet.Proxy = u"HTTP="_s + proxy.host();
  EXPECT_EQ(read(), u"through the proxy"_s);
  EXPECT_EQ(requestLine(proxy), absoluteLine("/a b?c=%41"));
  EXPECT_TRUE(proxy.requests().at(0).contains("\r\nHost: " + server.host().toLatin1() + "\r\n"));
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(InetProxies, ARelayedReadThroughAProxyIsEncodedTwiceAndAbsolute) {
  inet.AccessType = 2;
  inet.Proxy = u"HTTP="_s + proxy.host();
  EXPECT_EQ(html.GetUrl(1, u"A=%41"_s), u"through the proxy"_s);
  EXPECT_EQ(requestLine(proxy), absoluteLine("/_vti_comm/review.asp?review=%41%3D%25%34%31"));
}

TEST_F(InetProxies, APostGoesThroughTheProxyToo) {
  inet.AccessType = 2;
  inet.Proxy = u"HTTP="_s + proxy.host();
  html.PostUrl(url(u"p"_s), u"a=1"_s);
  ASSERT_TRUE(inet.waitUntilFree(60s));
  EXPECT_EQ(requestLine(proxy), "POST HTTP://" + server.host().toLatin1() + "/p HTTP/1.1");
  EXPECT_EQ(proxy.body(0), "a=1");
}

TEST_F(InetProxies, TypeTwoTakesTheNextProxyWhenOneCannotBeReached) {
  inet.AccessType = 2;
  inet.Proxy = u"HTTP=127.0.0.1:%1 HTTP=127.0.0.1:%2 HTTP=%3"_s.arg(deadPort())
                   .arg(deadPort())
                   .arg(proxy.host());
  EXPECT_EQ(read(), u"through the proxy"_s);
  EXPECT_EQ(read(), u"through the proxy"_s);
  EXPECT_EQ(proxy.requests().size(), 2);
  EXPECT_EQ(proxy.connectionCount(), 1);
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(InetProxies, WhenNoNamedProxyCanBeReachedItIsAnErrorAndNotDirect) {
  inet.AccessType = 2;
  inet.Proxy = u"HTTP=127.0.0.1:%1 HTTP=127.0.0.1:%2"_s.arg(deadPort()).arg(deadPort());
  EXPECT_THROW(read(), TransferError);
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(InetProxies, AnAnswerThatAProxyBreaksIsAnErrorAndNotAskedForTwice) {
  proxy.setHandler([](const QByteArray&) {
    Reply reply;
    reply.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc";
    reply.keepAlive = false;
    return reply;
  });
  inet.AccessType = 2;
  inet.Proxy = u"HTTP=%1 HTTP=%2"_s.arg(proxy.host(), server.host());
  EXPECT_THROW(read(), TransferError);
  EXPECT_EQ(proxy.requests().size(), 1);
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(InetProxies, TypeTwoIsDirectWhenNoProxyIsNamed) {
  inet.AccessType = 2;
  for (const auto& list : {u""_s, u"  "_s, u"HTTP="_s, u"HTTP= HTTP="_s, u"FTP=127.0.0.1:1"_s}) {
    inet.Proxy = list;
    EXPECT_EQ(read(), u"direct"_s) << list.toStdString();
  }
}

TEST_F(InetProxies, AnEntryThatIsNoHostAndPortCountsAsOneThatCannotBeReached) {
  inet.AccessType = 2;
  for (const auto& entry :
       {u"HTTP=socks5://%1"_s, u"HTTP=user@%1"_s, u"HTTP=%1/x"_s, u"HTTP=%1?x"_s, u"HTTP=书:80"_s,
        u"HTTP=%1:9:9"_s, u"HTTP=127.0.0.1\x01:80"_s}) {
    const auto named = entry.contains(u"%1"_s) ? entry.arg(proxy.host()) : entry;
    inet.Proxy = named;
    EXPECT_THROW(read(), TransferError) << named.toStdString();
    inet.Proxy = named + u" HTTP="_s + proxy.host();
    EXPECT_EQ(read(), u"through the proxy"_s) << named.toStdString();
  }
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(InetProxies, AProxysTextBringsNothingIntoTheRequest) {
  inet.AccessType = 2;
  inet.Proxy = u"HTTP=%1\r\nX-Evil: 1\r\n\r\n"_s.arg(proxy.host());
  try {
    read();
  } catch (const TransferError&) {
  }
  inet.Proxy = u"HTTP=%1"_s.arg(proxy.host()) + QChar(0) + u"evil"_s;
  EXPECT_THROW(read(), TransferError);
  for (const auto& request : proxy.requests() + server.requests())
    EXPECT_FALSE(request.contains("vil")) << request.toStdString();
}

TEST_F(InetProxies, TypeZeroTakesTheSystemsProxy) {
  qputenv("http_proxy", "http://" + proxy.host().toLatin1());
  inet.AccessType = 0;
  EXPECT_EQ(read(), u"through the proxy"_s);
  EXPECT_EQ(requestLine(proxy), absoluteLine("/a b?c=%41"));
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(InetProxies, TypeZeroTakesTheProxyForAllWhenThereIsNoOther) {
  qputenv("ALL_PROXY", proxy.host().toLatin1());
  inet.AccessType = 0;
  EXPECT_EQ(read(), u"through the proxy"_s);
}

TEST_F(InetProxies, TypeZeroIsDirectForWhatTheSystemExempts) {
  qputenv("http_proxy", "http://" + proxy.host().toLatin1());
  qputenv("no_proxy", "example.com, 127.0.0.0/8");
  inet.AccessType = 0;
  EXPECT_EQ(read(), u"direct"_s);
  EXPECT_EQ(requestLine(server), "GET /a b?c=%41 HTTP/1.1");
}

TEST_F(InetProxies, TypeZeroWithoutSystemProxyIsDirect) {
  qputenv("HTTP_PROXY", "http://" + proxy.host().toLatin1());
  inet.AccessType = 0;
  inet.Proxy = u"HTTP="_s + proxy.host();
  EXPECT_EQ(read(), u"direct"_s);
}

TEST_F(InetProxies, AChangeOfTypeTakesEffectAtTheNextRequest) {
  inet.Proxy = u"HTTP="_s + proxy.host();
  inet.AccessType = 1;
  EXPECT_EQ(read(), u"direct"_s);
  inet.AccessType = 2;
  EXPECT_EQ(read(), u"through the proxy"_s);
  inet.AccessType = 1;
  EXPECT_EQ(read(), u"direct"_s);
}

struct ExemptRow {
  const char* host;
  const char* list;
  bool exempt;
};

TEST(SystemProxy, ExemptsNamesTheirSubdomainsAddressesAndRanges) {
  const ExemptRow rows[] = {
      {"shop.cn", "", false},
      {"shop.cn", "*", true},
      {"shop.cn", "shop.cn", true},
      {"SHOP.cn", "Shop.CN.", true},
      {"www.shop.cn", "shop.cn", true},
      {"www.shop.cn", ".shop.cn", true},
      {"shop.cn", ".shop.cn", true},
      {"workshop.cn", "shop.cn", false},
      {"shop.cn", "www.shop.cn", false},
      {"shop.cn", "a.cn,b.cn shop.cn", true},
      {"10.1.2.3", "10.1.2.3", true},
      {"10.1.2.3", "10.1.2", false},
      {"10.1.2.3", "10.0.0.0/8", true},
      {"11.1.2.3", "10.0.0.0/8", false},
      {"10.1.2.3", "10.1.2.2/31", true},
      {"10.1.2.4", "10.1.2.2/31", false},
      {"10.1.2.3", "10.0.0.0/33", false},
      {"10.1.2.3", "10.0.0.0/x", false},
      {"10.1.2.3", "0.0.0.0/0", true},
      {"::1", "[::1]", true},
      {"::1", "::/127", true},
      {"::1", "127.0.0.1", false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(isExempt(row.host, row.list), row.exempt) << row.host << " in " << row.list;
}

}  // namespace
