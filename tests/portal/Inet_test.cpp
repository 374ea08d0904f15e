#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <thread>

#include "TransportFixture.h"

using namespace Qt::StringLiterals;
using namespace qinghe;
using namespace std::chrono_literals;

namespace {

class InetTest : public TransportFixture {};

struct TargetRow {
  const char* name;
  QString path;
  QByteArray target;
};
void PrintTo(const TargetRow& row, std::ostream* out) {
  *out << row.name;
}
class InetTargets : public InetTest, public testing::WithParamInterface<TargetRow> {};

TEST_P(InetTargets, GoOverTheWireByteForByte) {
  inet.OpenURL(u"HTTP://"_s + server.host() + GetParam().path);
  EXPECT_EQ(requestLine(server), "GET " + GetParam().target + " HTTP/1.1");
  EXPECT_TRUE(server.requests().at(0).contains("\r\nHost: " + server.host().toLatin1() + "\r\n"));
}

const TargetRow targets[] = {
    {"NoPath", u""_s, "/"},
    {"QueryWithoutPath", u"?a=1"_s, "/?a=1"},
    {"EscapesStay", u"/a?b=%41%9%d6%zz%"_s, "/a?b=%41%9%d6%zz%"},
    {"BlanksStay", u"/a b?c= d "_s, "/a b?c= d "},
    {"PunctuationStays", u"/?a+b&c==;'\"<>[]{}|\\^`~@:!$()*,"_s,
     "/?a+b&c==;'\"<>[]{}|\\^`~@:!$()*,"},
    {"CodePageBytesStay", u"/中?书"_s, "/\xD6\xD0?\xCA\xE9"},
    {"DotsStay", u"/a/../b/./c"_s, "/a/../b/./c"},
    {"SlashesStay", u"//a///b"_s, "//a///b"},
    {"ASecondQuestionMarkStays", u"/?a?b"_s, "/?a?b"},
    {"FragmentIsCut", u"/a?b#c"_s, "/a?b"},
    {"LineBreaksAreEscaped", u"/a\r\nX: y\r\n\r\n"_s, "/a%0D%0AX: y%0D%0A%0D%0A"},
    {"NulIsEscaped", u"/a"_s + QChar(0) + u"b"_s, "/a%00b"},
    {"OtherControlsAreEscaped", u"/\t\x1F\x7F"_s, "/%09%1F%7F"},
};
INSTANTIATE_TEST_SUITE_P(Inet, InetTargets, testing::ValuesIn(targets),
                         [](const auto& row) { return std::string(row.param.name); });

class UnusableAddress : public InetTest, public testing::WithParamInterface<QString> {};

TEST_P(UnusableAddress, IsAnErrorWithoutTraffic) {
  EXPECT_THROW(inet.OpenURL(GetParam().arg(server.host())), TransferError);
  EXPECT_THROW(inet.Execute(GetParam().arg(server.host()), u"POST"_s, u""_s, u""_s), TransferError);
  EXPECT_FALSE(inet.StillExecuting());
  EXPECT_EQ(server.connectionCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Inet, UnusableAddress,
                         testing::Values(u""_s, u"/"_s, u"HTTP://"_s, u"HTTP:///x"_s,
                                         u"HTTP://:80/"_s, u"%1/x"_s, u"ftp://%1/x"_s,
                                         u"file:///etc/hostname"_s, u"://%1/"_s, u" HTTP://%1/"_s,
                                         u"HTTP://%1\r\nX: y/"_s, u"HTTP:// %1/"_s,
                                         u"HTTP://[::1/"_s, u"gopher://%1/"_s));

TEST_F(InetTest, AnImpossibleHostIsAnErrorWithoutTraffic) {
  for (const auto& host : {u"a{b"_s, u"127.0.0.1:99999"_s, u"127.0.0.1:x"_s, u"a\\b"_s})
    EXPECT_THROW(inet.OpenURL(u"HTTP://"_s + host + u"/"_s), TransferError);
}

TEST_F(InetTest, ALongRequestLineGoesOutWhole) {
  const auto query = u"%41"_s.repeated(100'000);
  inet.OpenURL(url(u"?a="_s + query));
  EXPECT_EQ(server.requestTargets().value(0), "/?a=" + query.toLatin1());
}

TEST_F(InetTest, AnAnswerIsReadInTheCodePage) {
  server.answerWith({"\xA1\xB6\xB4\xF3\xD1\xA7\xA1\xB7|\xFF|\x80|"});
  const auto text = inet.OpenURL(url(u""_s));
  EXPECT_TRUE(text.startsWith(u"《大学》|\uFFFD|"_s)) << text.toStdString();
}

struct GoodRow {
  const char* name;
  QByteArray bytes;
  bool keepAlive;
  QString text;
};
void PrintTo(const GoodRow& row, std::ostream* out) {
  *out << row.name;
}
class WholeAnswer : public InetTest, public testing::WithParamInterface<GoodRow> {};

TEST_P(WholeAnswer, IsReturned) {
  answer(GetParam().bytes, GetParam().keepAlive);
  EXPECT_EQ(inet.OpenURL(url(u""_s)), GetParam().text);
  EXPECT_EQ(inet.OpenURL(url(u""_s)), GetParam().text);
}

const GoodRow goodRows[] = {
    {"WithLength", "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nab", true, u"ab"_s},
    {"OfNothing", "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n", true, u""_s},
    {"EndingWithTheConnection", "HTTP/1.1 200 OK\r\n\r\nabc", false, u"abc"_s},
    {"OfAnOldServer", "HTTP/1.0 200 OK\r\n\r\nabc", false, u"abc"_s},
    {"InChunks",
     "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n0\r\n\r\n", true,
     u"abc"_s},
    {"OfAnyStatus", "HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\nab", true, u"ab"_s},
    {"OfNoContent", "HTTP/1.1 204 No Content\r\n\r\n", true, u""_s},
    {"BehindAContinue",
     "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nab", true, u"ab"_s},
    {"WithARedirectToNowhere", "HTTP/1.1 302 Found\r\nContent-Length: 2\r\n\r\nab", true, u"ab"_s},
};
INSTANTIATE_TEST_SUITE_P(Inet, WholeAnswer, testing::ValuesIn(goodRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(InetTest, ManyReadsAndAPostGoOverOneConnection) {
  server.answerWith({"page"});
  for (int i = 0; i < 50; ++i) EXPECT_EQ(inet.OpenURL(url(u"?n=%1"_s.arg(i))), u"page"_s);
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
  ASSERT_TRUE(inet.waitUntilFree(60s));
  EXPECT_EQ(inet.OpenURL(url(u""_s)), u"page"_s);
  EXPECT_EQ(server.requests().size(), 52);
  EXPECT_EQ(server.connectionCount(), 1);
}

TEST_F(InetTest, AReadAfterAPostIsAPlainReadAgain) {
  server.answerWith({"page"});
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u"X-Note: 1\r\n"_s);
  ASSERT_TRUE(inet.waitUntilFree(60s));
  inet.OpenURL(url(u"g"_s));
  const auto read = server.requests().value(1);
  EXPECT_TRUE(read.startsWith("GET /g HTTP/1.1\r\n"));
  EXPECT_TRUE(read.endsWith("\r\n\r\n"));
  EXPECT_FALSE(read.contains("X-Note"));
  EXPECT_FALSE(read.contains("Content-"));
}

TEST_F(InetTest, APostEndsByItselfWithoutAnEventLoop) {
  AnswerGate gate;
  answerBehind(gate, "ok");
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
  EXPECT_TRUE(inet.StillExecuting());
  gate.open();
  EXPECT_TRUE(inet.waitUntilFree(60s));
  EXPECT_FALSE(inet.StillExecuting());
}

TEST_F(InetTest, AHangingPostEndsWithTheTimeLimit) {
  answer(hanging());
  inet.timeLimit = 200ms;
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
  EXPECT_TRUE(inet.waitUntilFree(60s));
}

TEST_F(InetTest, ASecondTransferIsRefusedWhileOneRuns) {
  answer(hanging());
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
  EXPECT_THROW(inet.OpenURL(url(u""_s)), TransferError);
  EXPECT_THROW(inet.Execute(url(u"p"_s), u"POST"_s, u"a=2"_s, u""_s), TransferError);
  EXPECT_FALSE(inet.waitUntilFree(1ms));
  EXPECT_TRUE(inet.StillExecuting());
}

TEST_F(InetTest, OnlyPostCanBeExecuted) {
  EXPECT_THROW(inet.Execute(url(u"p"_s), u"DELETE"_s, u""_s, u""_s), TransferError);
  EXPECT_THROW(inet.Execute(url(u"p"_s), u"POST / HTTP/1.1\r\n"_s, u""_s, u""_s), TransferError);
  EXPECT_FALSE(inet.StillExecuting());
}

TEST_F(InetTest, HeadersBringNoControlBytesIn) {
  server.answerWith({"ok"});
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s,
               u"A: 1\r\nB: 2"_s + QChar(0) + u"x\r\nC: 3\rD: 4\r\n\r\nE: 5"_s);
  ASSERT_TRUE(inet.waitUntilFree(60s));
  const auto raw = server.requests().value(0);
  EXPECT_TRUE(raw.contains("\r\nA: 1\r\n"));
  EXPECT_TRUE(raw.contains("\r\nE: 5\r\n"));
  EXPECT_FALSE(raw.contains("B:"));
  EXPECT_FALSE(raw.contains("D:"));
  EXPECT_EQ(server.body(0), "a=1");
}

TEST_F(InetTest, CancelEndsAHangingPostSoon) {
  answer(hanging());
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
  ASSERT_TRUE(server.waitForRequests(1));
  const auto start = Clock::now();
  inet.Cancel();
  EXPECT_LT(Clock::now() - start, 30s);
  EXPECT_FALSE(inet.StillExecuting());
  server.answerWith({"page"});
  EXPECT_EQ(inet.OpenURL(url(u""_s)), u"page"_s);
}

TEST_F(InetTest, CancelDoesNotWaitForThePostToLookUp) {
  server.setHandler([](const QByteArray& request) {
    return request.endsWith("hang") ? hanging() : delayed(0ms, "ok");
  });
  auto quickest = Clock::duration::max();
  for (int i = 1; i <= 10; ++i) {
    // On a connection that stands already, as a fresh one has timers that make the thread look up.
    inet.Execute(url(u"p"_s), u"POST"_s, u"answer"_s, u""_s);
    ASSERT_TRUE(inet.waitUntilFree(60s));
    inet.Execute(url(u"p"_s), u"POST"_s, u"hang"_s, u""_s);
    ASSERT_TRUE(server.waitForRequests(2 * i));
    const auto start = Clock::now();
    inet.Cancel();
    quickest = std::min(quickest, Clock::now() - start);
  }
  // It looks up once a second.
  EXPECT_LT(quickest, 500ms);
}

TEST_F(InetTest, CancelWithNothingRunningDoesNothing) {
  inet.Cancel();
  server.answerWith({"page"});
  EXPECT_EQ(inet.OpenURL(url(u""_s)), u"page"_s);
  inet.Cancel();
  inet.Cancel();
  EXPECT_EQ(inet.OpenURL(url(u""_s)), u"page"_s);
}

TEST_F(InetTest, CancelFromAHandlerEndsTheReadAndFreesTheControl) {
  answer(hanging());
  bool free = false;
  QObject context;
  QMetaObject::invokeMethod(
      &context,
      [&] {
        EXPECT_TRUE(inet.StillExecuting());
        inet.Cancel();
        free = !inet.StillExecuting();
      },
      Qt::QueuedConnection);
  EXPECT_THROW(inet.OpenURL(url(u""_s)), TransferError);
  EXPECT_TRUE(free);
  server.answerWith({"page"});
  EXPECT_EQ(inet.OpenURL(url(u""_s)), u"page"_s);
}

TEST_F(InetTest, APostMayFollowACancelWithinTheReadsOwnHandler) {
  server.setHandler([](const QByteArray& request) {
    return request.startsWith("GET") ? hanging() : delayed(100ms, "ok");
  });
  QObject context;
  QMetaObject::invokeMethod(
      &context,
      [&] {
        inet.Cancel();
        inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
      },
      Qt::QueuedConnection);
  EXPECT_THROW(inet.OpenURL(url(u""_s)), TransferError);
  EXPECT_TRUE(inet.waitUntilFree(60s));
  // On a busy machine the read may end before it has asked for anything.
  EXPECT_EQ(server.body(static_cast<int>(server.requests().size()) - 1), "a=1");
}

TEST_F(InetTest, TheControlMayBeDestroyedWhileAPostHangs) {
  answer(hanging());
  const auto start = Clock::now();
  {
    Inet other;
    other.AccessType = 1;
    other.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
    ASSERT_TRUE(server.waitForRequests(1));
  }
  EXPECT_LT(Clock::now() - start, 30s);
  EXPECT_TRUE(server.waitForNoConnection());
}

TEST_F(InetTest, TheControlMayBeDestroyedWithinItsOwnRead) {
  answer(hanging());
  auto other = std::make_unique<Inet>();
  other->AccessType = 1;
  QList<bool> told;
  other->onBlocking = [&](bool blocks) { told << blocks; };
  QObject context;
  QMetaObject::invokeMethod(
      &context, [&] { other.reset(); }, Qt::QueuedConnection);
  auto* const reading = other.get();
  EXPECT_THROW(reading->OpenURL(url(u""_s)), TransferError);
  EXPECT_EQ(told, (QList<bool>{true, false}));
}

/// Counts the requests to paint that reach it, and opens the gate behind the first.
class Receiver : public QObject {
 public:
  explicit Receiver(AnswerGate& gate) : gate_(gate) {}
  int updates = 0;

 protected:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest) {
      ++updates;
      gate_.open();
    }
    return QObject::event(event);
  }

 private:
  AnswerGate& gate_;
};

TEST_F(InetTest, WindowsPaintWhileAReadWaits) {
  AnswerGate gate;
  answerBehind(gate, "page");
  Receiver window(gate);
  QCoreApplication::postEvent(&window, new QEvent(QEvent::UpdateRequest));
  int updatesDuring = -1;
  inet.onBlocking = [&](bool blocks) {
    if (!blocks) updatesDuring = window.updates;
  };
  EXPECT_EQ(inet.OpenURL(url(u""_s)), u"page"_s);
  EXPECT_EQ(updatesDuring, 1);
}

TEST_F(InetTest, TellsThatAReadBlocksAndThatItIsOver) {
  QList<bool> told;
  inet.onBlocking = [&](bool blocks) { told << blocks; };
  server.answerWith({"page"});
  inet.OpenURL(url(u""_s));
  EXPECT_EQ(told, (QList<bool>{true, false}));

  told.clear();
  answer("garbage", false);
  EXPECT_THROW(inet.OpenURL(url(u""_s)), TransferError);
  EXPECT_EQ(told, (QList<bool>{true, false}));

  told.clear();
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
  EXPECT_TRUE(inet.waitUntilFree(60s));
  EXPECT_TRUE(told.isEmpty());
}

TEST_F(InetTest, ReadsWithinAReadAreRefused) {
  AnswerGate gate;
  answerBehind(gate, "page");
  QString nested = u"untouched"_s;
  QObject context;
  QMetaObject::invokeMethod(
      &context,
      [&] {
        EXPECT_THROW(inet.OpenURL(url(u"nested"_s)), TransferError);
        nested = html.GetUrl(2, url(u"nested"_s));
        gate.open();
      },
      Qt::QueuedConnection);
  EXPECT_EQ(inet.OpenURL(url(u"outer"_s)), u"page"_s);
  EXPECT_EQ(nested, u""_s);
  EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(InetTest, TheFlagMayBeAskedFromAnotherThread) {
  answer(hanging());
  inet.Execute(url(u"p"_s), u"POST"_s, u"a=1"_s, u""_s);
  bool running = false;
  std::thread([&] { running = inet.StillExecuting(); }).join();
  EXPECT_TRUE(running);
}

}  // namespace
