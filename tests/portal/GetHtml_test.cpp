#include <QCoreApplication>
#include <QTimer>
#include <ctime>
#include <future>
#include <utility>

#include "TransportFixture.h"
#include "portal/RequestBuilder.h"
#include "portal/url_encode.h"

using namespace Qt::StringLiterals;
using namespace qinghe;
using namespace std::chrono_literals;

namespace {

class GetHtmlTest : public TransportFixture {};

TEST_F(GetHtmlTest, ModeZeroIsEmptyForEveryUrlAndMakesNoTraffic) {
  EXPECT_EQ(html.GetUrl(0, url(u"x.asp?A=%41"_s)), u""_s);
  EXPECT_EQ(html.GetUrl(0, u""_s), u""_s);
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(GetHtmlTest, UnknownModesAreEmptyAndMakeNoTraffic) {
  for (const qint16 mode : {qint16(-1), qint16(3), qint16(32767)})
    EXPECT_EQ(html.GetUrl(mode, url(u"x.asp"_s)), u""_s);
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(GetHtmlTest, ModeTwoSendsTheUrlAsItWasBuilt) {
  server.answerWith({"page"});
  const auto request = RequestBuilder(state.gWebServer, paths::productRows)
                           .encoded(u"STABLE"_s, u"XI"_s)
                           .encoded(u"NAME"_s, u""_s)
                           .encoded(u"T"_s, u"\n中"_s);
  EXPECT_EQ(html.GetUrl(2, request.url()), u"page"_s);
  EXPECT_EQ(requestLine(server),
            "GET /_vti_product/_vti_detail_field_s.asp?STABLE=%58%49&NAME=&T=%A%D6%D0 HTTP/1.1");
}

TEST_F(GetHtmlTest, ModeOneSendsTheEncodedUrlEncodedOnceMoreThroughTheRelay) {
  server.answerWith({"page"});
  EXPECT_EQ(html.GetUrl(1, u"H/?V="_s + UrlEncodeField(u"A"_s)), u"page"_s);
  EXPECT_EQ(requestLine(server),
            "GET /_vti_comm/review.asp?review=%48%2F%3F%56%3D%25%34%31 HTTP/1.1");
}

TEST_F(GetHtmlTest, ModeTwoSendsRawValuesBareButForWhatWouldSplitTheRequest) {
  html.GetUrl(2, url(u"?XIMU=a b&c+%书'\"\r\nX: y\x7F&NOTH=%31#cut"_s));
  EXPECT_EQ(requestLine(server), "GET /?XIMU=a b&c+%\xCA\xE9'\"%0D%0AX: y%7F&NOTH=%31 HTTP/1.1");
  EXPECT_FALSE(server.requests().value(0).contains("\r\nX: y"));
}

TEST_F(GetHtmlTest, ModeOneEncodesRawValuesOnceAndKeepsWhatANumberSignWouldCut) {
  state.gWebServer = u"HTTP://"_s + server.host() + u'/';
  html.GetUrl(1, u"H/?V=a&书#\r\n"_s);
  EXPECT_EQ(requestLine(server),
            "GET /_vti_comm/review.asp?review=%48%2F%3F%56%3D%61%26%CA%E9%23%3C%62%72%3E HTTP/1.1");
}

TEST_F(GetHtmlTest, ModeOneLeavesTheCallersUrlAlone) {
  server.answerWith({"page"});
  const auto request = u"a<b"_s;
  html.GetUrl(1, request);
  EXPECT_EQ(request, u"a<b"_s);
}

TEST_F(GetHtmlTest, UndoesTheThreeMarksWithoutRegardToCase) {
  server.answerWith({"1<br>2<BR>3<Br>&lt;td&LT;&gt;&Gt;&nbsp;<br/><br >&amp;lt;<b"});
  EXPECT_EQ(html.GetUrl(2, url(u""_s)), u"1\r\n2\r\n3\r\n<td<>>&nbsp;<br/><br >&amp;lt;<b"_s);
}

TEST_F(GetHtmlTest, AMarkThatComesOutOfAnotherIsLeft) {
  server.answerWith({"&lt;br>&lt;br&gt;&&lt;lt;"});
  EXPECT_EQ(html.GetUrl(2, url(u""_s)), u"<br><br>&<lt;"_s);
}

TEST_F(GetHtmlTest, APageOfMarksAloneIsUndoneInTimeThatGrowsWithItsLength) {
  const auto timeFor = [this](qsizetype marks) {
    server.answerWith({QByteArray("<br>").repeated(marks)});
    const auto start = Clock::now();
    EXPECT_EQ(html.GetUrl(2, url(u""_s)).size(), marks * 2);
    return Clock::now() - start;
  };
  timeFor(1000);
  EXPECT_LT(timeFor(2'000'000), 50s);
}

TEST_F(GetHtmlTest, AnErrorPageIsAPageWithoutMarker) {
  answer(
      "HTTP/1.1 500 Internal Server Error\r\nContent-Type: image/png\r\n"
      "Content-Length: 4\r\n\r\noops");
  const auto page = html.GetUrl(2, url(u"x"_s));
  EXPECT_EQ(page, u"oops"_s);
  EXPECT_EQ(html.ParseResponse(page), u""_s);
}

TEST_F(GetHtmlTest, PostUrlSendsTheBodyInTheCodePageAndReturnsNothing) {
  server.answerWith({"never read"});
  auto request = RequestBuilder(state.gWebServer, paths::productAdd)
                     .encoded(u"stable"_s, u"x"_s)
                     .raw(u"JISH"_s, u"a b&=%41书"_s);
  EXPECT_EQ(html.PostUrl(request.page(), request.body()), u""_s);
  ASSERT_TRUE(server.waitForRequests(1));
  EXPECT_EQ(requestLine(server), "POST /_vti_product/_vti_add.asp HTTP/1.1");
  EXPECT_EQ(server.body(0), "stable=%78&JISH=a b&=%41\xCA\xE9");
  const auto raw = server.requests().at(0);
  EXPECT_EQ(raw.count("Content-Type: application/x-www-form-urlencoded\r\n"), 1);
  EXPECT_EQ(raw.count("Content-Type:"), 1);
  EXPECT_TRUE(raw.contains("Content-Length: 26\r\n"));
  EXPECT_FALSE(raw.contains("Expect:"));
}

TEST_F(GetHtmlTest, PostUrlReturnsBeforeTheAnswer) {
  answer(hanging());
  html.PostUrl(url(u"p"_s), u"a=1"_s);
  EXPECT_TRUE(inet.StillExecuting());
  EXPECT_TRUE(server.waitForRequests(1));
}

TEST_F(GetHtmlTest, AReadDuringAPostIsEmptyAtOnce) {
  answer(hanging());
  html.PostUrl(url(u"p"_s), u"a=1"_s);
  ASSERT_TRUE(server.waitForRequests(1));
  EXPECT_EQ(html.openUrl(url(u"x"_s)), u""_s);
  EXPECT_EQ(html.GetUrl(2, url(u"x"_s)), u""_s);
  EXPECT_EQ(html.GetUrl(1, url(u"x"_s)), u""_s);
  EXPECT_TRUE(inet.StillExecuting());
  EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(GetHtmlTest, ASecondPostWaitsForTheFirstWhileTheMessageLoopRuns) {
  AnswerGate gate;
  answerBehind(gate, "ok");
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    if (++ticks == 20) gate.open();
  });
  timer.start(20ms);

  html.PostUrl(url(u"p"_s), u"n=1"_s);
  const auto cpu = std::clock();
  html.PostUrl(url(u"p"_s), u"n=2"_s);
  const auto busy = static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
  EXPECT_GE(ticks, 20);
  EXPECT_LT(busy, 0.3) << "the wait burns the processor";
  ASSERT_TRUE(server.waitForRequests(2));
  EXPECT_EQ(server.body(0), "n=1");
  EXPECT_EQ(server.body(1), "n=2");
}

TEST_F(GetHtmlTest, PostsFromNestedHandlersAllGoOut) {
  AnswerGate gate;
  answerBehind(gate, "ok");
  QObject context;
  html.PostUrl(url(u"p"_s), u"n=1"_s);
  QMetaObject::invokeMethod(
      &context,
      [&] {
        QMetaObject::invokeMethod(
            &context,
            [&] {
              gate.open();
              html.PostUrl(url(u"p"_s), u"n=3"_s);
            },
            Qt::QueuedConnection);
        html.PostUrl(url(u"p"_s), u"n=2"_s);
      },
      Qt::QueuedConnection);
  html.PostUrl(url(u"p"_s), u"n=4"_s);
  ASSERT_TRUE(server.waitForRequests(4));
}

TEST_F(GetHtmlTest, TheWaitOfAPostEndsWithTheTimeLimitOfAnotherThatHangs) {
  // On a busy machine the first one's time may be over before it has been sent.
  std::promise<void> second;
  server.setHandler([&second](const QByteArray& request) {
    if (request.endsWith("n=1")) return hanging();
    second.set_value();
    return delayed(0ms, "ok");
  });
  const auto usual = std::exchange(inet.timeLimit, 300ms);
  html.PostUrl(url(u"p"_s), u"n=1"_s);
  inet.timeLimit = usual;
  html.PostUrl(url(u"p"_s), u"n=2"_s);
  EXPECT_EQ(second.get_future().wait_for(30s), std::future_status::ready);
}

TEST_F(GetHtmlTest, APostFromAHandlerWithinAReadTakesTheReadToItsEnd) {
  AnswerGate gate;
  server.setHandler([door = gate.door()](const QByteArray& request) {
    if (!request.startsWith("GET")) return delayed(0ms, "posted");
    door();
    return delayed(0ms, "read");
  });
  QObject context;
  QMetaObject::invokeMethod(
      &context,
      [&] {
        gate.open();
        html.PostUrl(url(u"p"_s), u"n=1"_s);
      },
      Qt::QueuedConnection);
  EXPECT_EQ(html.GetUrl(2, url(u"x"_s)), u"read"_s);
  ASSERT_TRUE(server.waitForRequests(2));
  EXPECT_EQ(server.body(1), "n=1");
}

TEST_F(GetHtmlTest, APostToAnUnusableAddressFails) {
  EXPECT_THROW(html.PostUrl(u"ftp://x/"_s, u"a=1"_s), TransferError);
  EXPECT_THROW(html.PostUrl(u""_s, u"a=1"_s), TransferError);
  EXPECT_FALSE(inet.StillExecuting());
}

TEST_F(GetHtmlTest, ErrorsOfTheControlPassThrough) {
  state.gWebServer = u"HTTP://127.0.0.1:%1/"_s.arg(deadPort());
  EXPECT_THROW(html.GetUrl(2, url(u"x"_s)), TransferError);
  EXPECT_THROW(html.GetUrl(1, url(u"x"_s)), TransferError);
}

TEST_F(GetHtmlTest, PutUrlAndPostUrl2SendNothing) {
  html.PutUrl(u"url_no=login_qy&review=%41 b"_s);
  html.PostUrl2(u"x"_s, u"a=1"_s);
  EXPECT_FALSE(inet.StillExecuting());
  EXPECT_EQ(server.connectionCount(), 0);
  EXPECT_THROW(html.PutUrl(u"中"_s), Overflow);
  EXPECT_THROW(html.PostUrl2(u"x"_s, u"中"_s), Overflow);
}

TEST_F(GetHtmlTest, StringToBytesTakesOneByteACharacterAndMakesBlanksPlus) {
  QByteArray bytes = "old";
  GetHtml::StringToBytes(bytes, u"a b~\r\n\t"_s);
  EXPECT_EQ(bytes, "a+b~\r\n\t");
  GetHtml::StringToBytes(bytes, u""_s);
  EXPECT_EQ(bytes, "");
  EXPECT_THROW(GetHtml::StringToBytes(bytes, u"a中"_s), Overflow);
}

}  // namespace
