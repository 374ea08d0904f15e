#include "portal/GetHttp.h"

#include "TransportFixture.h"

using namespace Qt::StringLiterals;
using namespace qinghe;

namespace {

class GetHttpTest : public TransportFixture {
 protected:
  GetHttp http;
};

TEST_F(GetHttpTest, FetchesAPageDirectlyUnderItsOwnAgentName) {
  ScriptedServer proxy;
  qputenv("http_proxy", "http://" + proxy.host().toLatin1());
  server.answerWith({"\xD6\xD0 page"});
  EXPECT_EQ(http.GetUrl(url(u"x?a=%41 b"_s)), u"中 page"_s);
  EXPECT_EQ(requestLine(server), "GET /x?a=%41 b HTTP/1.1");
  EXPECT_TRUE(server.requests().at(0).contains("\r\nUser-Agent: vb wininet\r\n"));
  EXPECT_EQ(proxy.connectionCount(), 0);
}

TEST_F(GetHttpTest, ReadsWhileTheTransferControlIsBusy) {
  server.setHandler([](const QByteArray& request) {
    return request.startsWith("POST") ? hanging() : delayed({}, "page");
  });
  html.PostUrl(url(u"p"_s), u"a=1"_s);
  EXPECT_EQ(http.GetUrl(url(u"x"_s)), u"page"_s);
}

TEST_F(GetHttpTest, ReadsAPageOfManyBlocks) {
  server.answerWith({QByteArray(1000, 'x')});
  EXPECT_EQ(http.GetUrl(url(u"x"_s)), QString(1000, u'x'));
}

TEST_F(GetHttpTest, EachBlockBecomesTextByItself) {
  server.answerWith({QByteArray(254, 'x') + "\xD6\xD0" + QByteArray(253, 'y')});
  EXPECT_EQ(http.GetUrl(url(u"x"_s)), QString(254, u'x') + u"中"_s + QString(253, u'y'));
  server.answerWith({QByteArray(255, 'x') + "\xD6\xD0" + QByteArray(253, 'y')});
  EXPECT_FALSE(http.GetUrl(url(u"x"_s)).contains(u'中'));
}

TEST_F(GetHttpTest, IsEmptyWhenThePageCannotBeOpened) {
  EXPECT_EQ(http.GetUrl(u""_s), u""_s);
  EXPECT_EQ(http.GetUrl(u"ftp://127.0.0.1/"_s), u""_s);
  EXPECT_EQ(http.GetUrl(u"HTTP://127.0.0.1:%1/"_s.arg(deadPort())), u""_s);
  answer("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc", false);
  EXPECT_EQ(http.GetUrl(url(u"x"_s)), u""_s);
}

}  // namespace
