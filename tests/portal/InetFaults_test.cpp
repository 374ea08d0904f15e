#include "TransportFixture.h"

using namespace Qt::StringLiterals;
using namespace qinghe;
using namespace std::chrono_literals;

namespace {

class InetFaults : public TransportFixture {
 protected:
  /// Fails, within the time, and leaves the control in working order.
  void expectFailure() {
    const auto start = Clock::now();
    EXPECT_THROW(inet.OpenURL(url(u"x"_s)), TransferError);
    EXPECT_LT(Clock::now() - start, usualTimeLimit - 10s);
    EXPECT_FALSE(inet.StillExecuting());
    inet.timeLimit = usualTimeLimit;
    server.answerWith({"well again"});
    EXPECT_EQ(inet.OpenURL(url(u"y"_s)), u"well again"_s);
  }

  const std::chrono::milliseconds usualTimeLimit = inet.timeLimit;
};

struct BrokenRow {
  const char* name;
  QByteArray bytes;
  bool reset = false;
};
void PrintTo(const BrokenRow& row, std::ostream* out) {
  *out << row.name;
}
class BrokenAnswer : public InetFaults, public testing::WithParamInterface<BrokenRow> {};

TEST_P(BrokenAnswer, IsAnErrorAndNeverAPartOfAText) {
  Reply reply;
  reply.bytes = GetParam().bytes;
  reply.reset = GetParam().reset;
  reply.keepAlive = false;
  answer(reply);
  expectFailure();
}

const QByteArray chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
const BrokenRow brokenRows[] = {
    {"Nothing", ""},
    {"Garbage", "SSH-2.0-OpenSSH\r\n"},
    {"BytesThatAreNoText", QByteArray(300, '\0')},
    {"BareText", "<table start_pos><tr><td>1</td></tr></table>"},
    {"HalfAHead", "HTTP/1.1 200 OK\r\nContent-Le"},
    {"AHeadWithoutItsEnd", "HTTP/1.1 200 OK\r\nServer: x\r\n"},
    {"OnlyAContinue", "HTTP/1.1 100 Continue\r\n\r\n"},
    {"AFewBytesBehindAContinue", "HTTP/1.1 100 Continue\r\n\r\nHTT"},
    {"HalfAHeadBehindAContinue", "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\n"},
    {"ShorterThanItsLength", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nstart_pos"},
    {"NoneOfItsLength", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n"},
    {"LengthIsNoNumber", "HTTP/1.1 200 OK\r\nContent-Length: ten\r\n\r\n0123456789"},
    {"LengthIsNegative", "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n0123456789"},
    {"LengthIsGigantic", "HTTP/1.1 200 OK\r\nContent-Length: 9223372036854775807\r\n\r\nabc"},
    {"LengthDoesNotFit", "HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nabc"},
    {"LengthLiesWithinTheLimit", "HTTP/1.1 200 OK\r\nContent-Length: 67108864\r\n\r\nabc"},
    {"ChunkSizeIsNoNumber", chunked + "zz\r\nab\r\n0\r\n\r\n"},
    {"ChunkSizeIsGigantic", chunked + "7FFFFFFFFFFFFFFF\r\nab"},
    {"ChunkSizeDoesNotFit", chunked + "FFFFFFFFFFFFFFFFFFFF\r\nab\r\n0\r\n\r\n"},
    {"ChunkIsLongerThanTold", chunked + "2\r\nabcd\r\n0\r\n\r\n"},
    {"ChunkIsCut", chunked + "5\r\nabc"},
    {"LastChunkIsMissing", chunked + "2\r\nab\r\n"},
    {"ResetBeforeTheAnswer", "", true},
    {"ResetInTheHead", "HTTP/1.1 200 OK\r\nContent-", true},
    {"ResetInTheBody", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc", true},
    {"RedirectToFtp", "HTTP/1.1 302 Found\r\nLocation: ftp://127.0.0.1/x\r\n\r\n"},
    {"RedirectToAFile", "HTTP/1.1 302 Found\r\nLocation: file:///etc/hostname\r\n\r\n"},
    {"RedirectToNonsense", "HTTP/1.1 302 Found\r\nLocation: http://\r\n\r\n"},
    {"RedirectToABrokenHost", "HTTP/1.1 302 Found\r\nLocation: http://a{b/\r\n\r\n"},
};
INSTANTIATE_TEST_SUITE_P(Inet, BrokenAnswer, testing::ValuesIn(brokenRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(InetFaults, APortalThatIsDownIsAnErrorAtOnce) {
  const auto start = Clock::now();
  EXPECT_THROW(inet.OpenURL(u"HTTP://127.0.0.1:%1/x"_s.arg(deadPort())), TransferError);
  EXPECT_LT(Clock::now() - start, usualTimeLimit - 10s);
}

TEST_F(InetFaults, AnAnswerCutAtAnyPlaceIsAnError) {
  const auto whole = ScriptedServer::ok("start_pos<tr><td>1</td></tr></table>");
  for (qsizetype length = 0; length < whole.size(); ++length) {
    answer(whole.left(length), false);
    EXPECT_THROW(inet.OpenURL(url(u"x"_s)), TransferError) << length;
  }
}

TEST_F(InetFaults, ASilentPortalIsAnErrorWhenTheTimeIsUp) {
  inet.timeLimit = 200ms;
  answer(hanging());
  expectFailure();
}

TEST_F(InetFaults, ALateAnswerIsAnErrorWhenTheTimeIsUp) {
  inet.timeLimit = 200ms;
  answer(delayed(30s, "late"));
  expectFailure();
}

TEST_F(InetFaults, TheTimeLimitHoldsForTheWholeAnswerHoweverItDribbles) {
  inet.timeLimit = 300ms;
  Reply reply;
  reply.head = "HTTP/1.1 200 OK\r\n\r\n";
  reply.bytes = "x";
  reply.endlessChunk = 100'000;
  reply.pause = 10ms;
  answer(reply);
  expectFailure();
}

TEST_F(InetFaults, TheTimeLimitHoldsForAllRedirectsTogether) {
  inet.timeLimit = 400ms;
  auto reply = delayed(150ms, "");
  reply.bytes = "HTTP/1.1 302 Found\r\nLocation: /again\r\nContent-Length: 0\r\n\r\n";
  answer(reply);
  expectFailure();
  EXPECT_LE(server.requests().size(), 5);
}

TEST_F(InetFaults, ABodyMayBeAsLongAsTheLimitAndNoLonger) {
  inet.bodyLimit = 1000;
  for (const bool withLength : {true, false}) {
    const auto head = withLength ? "" : "HTTP/1.1 200 OK\r\n\r\n";
    const auto page = [&](int size) {
      return withLength ? ScriptedServer::ok(QByteArray(size, 'x')) : head + QByteArray(size, 'x');
    };
    answer(page(1000), false);
    EXPECT_EQ(inet.OpenURL(url(u"x"_s)).size(), 1000);
    answer(page(1001), false);
    expectFailure();
  }
}

TEST_F(InetFaults, AnEndlessBodyIsAnErrorAtTheLimit) {
  inet.bodyLimit = 1'000'000;
  Reply reply;
  reply.head = "HTTP/1.1 200 OK\r\n\r\n";
  reply.bytes = QByteArray(65536, 'x');
  reply.endlessChunk = 1'000'000;
  answer(reply);
  expectFailure();
}

TEST_F(InetFaults, EndlessChunksAreAnErrorAtTheLimit) {
  inet.bodyLimit = 10'000;
  Reply reply;
  reply.head = chunked;
  reply.bytes = "4\r\nabcd\r\n";
  reply.endlessChunk = 1'000'000;
  answer(reply);
  expectFailure();
}

TEST_F(InetFaults, AnEndlessHeadIsAnError) {
  Reply reply;
  reply.head = "HTTP/1.1 200 OK\r\n";
  reply.bytes = "X-More: " + QByteArray(1000, 'x') + "\r\n";
  reply.endlessChunk = 1'000'000;
  answer(reply);
  expectFailure();
}

TEST_F(InetFaults, ARedirectThatNeverEndsIsAnErrorAfterSomeRequests) {
  answer("HTTP/1.1 302 Found\r\nLocation: /x\r\nContent-Length: 0\r\n\r\n");
  expectFailure();
  EXPECT_LE(server.requests().size(), 20);
}

TEST_F(InetFaults, AConnectionThatWasClosedMeanwhileIsMadeAnew) {
  answer(ScriptedServer::ok("page"), false);
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(inet.OpenURL(url(u"x"_s)), u"page"_s);
    EXPECT_TRUE(server.waitForNoConnection());
  }
  EXPECT_EQ(server.connectionCount(), 5);
}

TEST_F(InetFaults, ARequestThatGotNoAnswerOnAKeptConnectionIsNotMadeAgain) {
  server.setHandler([](const QByteArray& request) {
    Reply reply;
    reply.bytes = request.contains("/save") ? QByteArray() : ScriptedServer::ok("page");
    reply.reset = request.contains("/save");
    reply.keepAlive = !reply.reset;
    return reply;
  });
  EXPECT_EQ(inet.OpenURL(url(u"x"_s)), u"page"_s);
  EXPECT_THROW(inet.OpenURL(url(u"save"_s)), TransferError);
  EXPECT_EQ(server.requestTargets(), (QList<QByteArray>{"/x", "/save"}));
  EXPECT_EQ(inet.OpenURL(url(u"y"_s)), u"page"_s) << "the next one has a new connection";
}

class Redirects : public TransportFixture {
 protected:
  void redirect(const QByteArray& status, const QByteArray& location) {
    server.setHandler([=](const QByteArray& request) {
      Reply reply;
      reply.bytes = request.contains(" /from")
                        ? "HTTP/1.1 " + status + " Moved\r\nLocation: " + location +
                              "\r\nContent-Length: 5\r\n\r\nmoved"
                        : ScriptedServer::ok("there");
      return reply;
    });
  }
};

struct RedirectRow {
  const char* name;
  QByteArray location;
  QByteArray target;
};
void PrintTo(const RedirectRow& row, std::ostream* out) {
  *out << row.name;
}
class RedirectTargets : public Redirects, public testing::WithParamInterface<RedirectRow> {};

TEST_P(RedirectTargets, AreRequested) {
  auto location = GetParam().location;
  location.replace("HOST", server.host().toLatin1());
  redirect("302", location);
  EXPECT_EQ(inet.OpenURL(url(u"from/a b.asp?q=1 2"_s)), u"there"_s);
  EXPECT_EQ(requestLine(server, 1), "GET " + GetParam().target + " HTTP/1.1");
  EXPECT_EQ(server.connectionCount(), 1);
}

const RedirectRow redirectRows[] = {
    {"Whole", "http://HOST/to.asp?x=%41%d6", "/to.asp?x=%41%d6"},
    {"WithoutHost", "/to.asp?x=1", "/to.asp?x=1"},
    {"WithoutScheme", "//HOST/to", "/to"},
    {"RelativeToThePage", "../to.asp", "/to.asp"},
    {"FragmentIsCut", "/to?x#y", "/to?x"},
    {"BlanksAndBytesAreEscaped", "/to \xD6\xD0", "/to%20%d6%d0"},
};
INSTANTIATE_TEST_SUITE_P(Inet, RedirectTargets, testing::ValuesIn(redirectRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Redirects, ARelativePlaceIsBesideThePage) {
  server.setHandler([](const QByteArray& request) {
    Reply reply;
    reply.bytes = request.contains("/from.asp")
                      ? "HTTP/1.1 301 Moved\r\nLocation: to.asp\r\nContent-Length: 0\r\n\r\n"
                      : ScriptedServer::ok("there");
    return reply;
  });
  EXPECT_EQ(inet.OpenURL(url(u"dir/from.asp?a=/b/c"_s)), u"there"_s);
  EXPECT_EQ(server.requestTargets().value(1), "/dir/to.asp");
}

TEST_F(Redirects, APostGoesOnAsAReadOrAsThePostItWas) {
  for (const QByteArray status : {"301", "302", "303", "307", "308"}) {
    server.clear();
    redirect(status, "/to");
    inet.Execute(url(u"from"_s), u"POST"_s, u"a=1"_s, u""_s);
    ASSERT_TRUE(inet.waitUntilFree(60s));
    const bool again = status.startsWith("307") || status.startsWith("308");
    EXPECT_EQ(requestLine(server, 1), again ? "POST /to HTTP/1.1" : "GET /to HTTP/1.1");
    EXPECT_EQ(server.body(1), again ? "a=1" : "");
  }
}

TEST_F(Redirects, ANotModifiedIsNoRedirect) {
  answer("HTTP/1.1 304 Not Modified\r\nLocation: /to\r\n\r\n");
  EXPECT_EQ(inet.OpenURL(url(u"from"_s)), u""_s);
  EXPECT_EQ(server.requests().size(), 1);
}

}  // namespace
