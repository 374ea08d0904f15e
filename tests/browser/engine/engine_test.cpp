#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMap>
#include <QTcpSocket>
#include <QTest>

#include "browser/engine/EngineFixture.h"
#include "values/code_page.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

class BrowserEngineTest : public EngineFixture {
 protected:
  ScriptedServer elsewhere;
};

TEST_F(BrowserEngineTest, ShowsAPageOfThePortalAndReportsItsAddressAndTitle) {
  serve(pages, {{"/a?x=1", reply(toCodePage(u"<title>青禾</title><p id=p>图书目录</p>"_s),
                                 "text/html; charset=GBK")}});
  open(at(pages, u"/a?x=1"_s));
  EXPECT_EQ(reached, QStringList{at(pages, u"/a?x=1"_s)});
  EXPECT_TRUE(waitFor([&] { return browser->title() == u"青禾"_s; }));
  EXPECT_EQ(js(u"document.getElementById('p').textContent"_s), u"图书目录"_s);
}

TEST_F(BrowserEngineTest, APageThatDeclaresNoCharsetIsReadInTheCodePage) {
  serve(pages, {{"/a", reply(toCodePage(u"<p id=p>图书目录</p>"_s), "text/html")}});
  open(at(pages, u"/a"_s));
  EXPECT_EQ(js(u"document.getElementById('p').textContent"_s), u"图书目录"_s);
}

TEST_F(BrowserEngineTest, TheUsersStepsAreReportedToo) {
  serve(pages, {{"/a", reply("<a id=go href='/b'>b</a>")}, {"/b", reply("b")}});
  open(at(pages, u"/a"_s));
  click(u"#go"_s);
  EXPECT_TRUE(waitFor([&] { return reached.size() == 2; }));
  EXPECT_EQ(reached.constLast(), at(pages, u"/b"_s));
}

TEST_F(BrowserEngineTest, AServersOwnErrorPageIsAPage) {
  serve(pages, {{"/a", reply("<p id=p>gone</p>", "text/html", {}, "404 Not Found")}});
  open(at(pages, u"/a"_s));
  EXPECT_EQ(words(), QString());
  EXPECT_EQ(js(u"document.getElementById('p').textContent"_s), u"gone"_s);
}

TEST_F(BrowserEngineTest, ADeadPortalGivesAPlainPageAndTheNextOneComesAllTheSame) {
  QTcpSocket closed;  // holds a port, so that nobody else listens there meanwhile
  ASSERT_TRUE(closed.bind(QHostAddress(QHostAddress::LocalHost)));
  window.show();
  browser->Navigate(u"http://127.0.0.1:%1/x"_s.arg(closed.localPort()));
  ASSERT_TRUE(waitFor([&] { return !words().isEmpty(); }));
  EXPECT_EQ(words(), u"网页打不开。"_s);
  EXPECT_EQ(reached, QStringList());
  serve(pages, {{"/a", reply("a")}});
  open(at(pages, u"/a"_s));
  EXPECT_EQ(words(), QString());
}

TEST_F(BrowserEngineTest, APortalThatAnswersNothingIsGivenUp) {
  pages.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.hang = true}; });
  browser->timeLimit = std::chrono::milliseconds(1500);
  window.show();
  browser->Navigate(at(pages, u"/x"_s));
  ASSERT_TRUE(waitFor([&] { return !words().isEmpty(); }));
  EXPECT_EQ(words(), u"网页打不开。"_s);
}

TEST_F(BrowserEngineTest, WhileAPortalAnswersNothingTheWindowGoesOn) {
  pages.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.hang = true}; });
  browser->timeLimit = std::chrono::minutes(10);
  window.show();
  browser->Navigate(at(pages, u"/x"_s));
  ASSERT_TRUE(waitFor([&] { return !pages.requests().isEmpty(); }));
  int ticks = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, &clock, [&] { ++ticks; });
  clock.start(20);
  EXPECT_TRUE(waitFor([&] { return ticks > 10; })) << "the window stood still";
  EXPECT_EQ(words(), QString()) << "and the page is still waited for";
}

TEST_F(BrowserEngineTest, OnOneHostALinkAwayIsNotFollowed) {
  serve(elsewhere, {{"/", reply("away")}});
  serve(pages, {{"/a", reply("<a id=go href='" + at(elsewhere, u"/"_s).toLatin1() +
                             "'>go</a> <a id=stay href='/b'>stay</a>")},
                {"/b", reply("b")}});
  browser->setStaysOnHost(true);
  open(at(pages, u"/a"_s));
  click(u"#go"_s);
  click(u"#stay"_s);
  ASSERT_TRUE(waitFor([&] { return reached.size() == 2; }));
  EXPECT_EQ(reached.constLast(), at(pages, u"/b"_s));
  EXPECT_TRUE(elsewhere.requests().isEmpty());
}

TEST_F(BrowserEngineTest, OnOneHostNothingIsFetchedFromElsewhere) {
  serve(elsewhere, {{"/i.png", reply("x", "image/png")}, {"/", reply("away")}});
  const QByteArray away = at(elsewhere, u""_s).toLatin1();
  serve(pages, {{"/a", reply("<img src='" + away + "/i.png'><iframe src='" + away +
                             "/'></iframe><script src='" + away +
                             "/s.js'></script><img id=own src='/own.png'>")},
                {"/own.png", reply("x", "image/png")},
                {"/r", reply("", "text/html", "Location: " + away + "/\r\n", "302 Found")}});
  browser->setStaysOnHost(true);
  open(at(pages, u"/a"_s));
  EXPECT_TRUE(waitFor([&] { return pages.requestTargets().contains("/own.png"); }));
  browser->Navigate(at(pages, u"/r"_s));
  EXPECT_TRUE(waitFor([&] { return words() == u"网页打不开。"_s; }));
  open(at(pages, u"/a"_s));
  EXPECT_TRUE(elsewhere.requests().isEmpty());
}

TEST_F(BrowserEngineTest, WithoutThatOptionARedirectLeadsAway) {
  serve(elsewhere, {{"/", reply("away")}});
  serve(pages,
        {{"/r", reply("", "text/html", "Location: " + at(elsewhere, u"/"_s).toLatin1() + "\r\n",
                      "302 Found")}});
  open(at(pages, u"/r"_s));
  EXPECT_EQ(reached, QStringList{at(elsewhere, u"/"_s)});
}

TEST_F(BrowserEngineTest, APopUpIsAskedForAndShownInItsPlace) {
  serve(pages, {{"/a", reply("<a id=go target=_blank href='/b'>b</a>")}, {"/b", reply("b")}});
  open(at(pages, u"/a"_s));
  boxes->expect(Answer::No);
  click(u"#go"_s);
  ASSERT_TRUE(waitFor([&] { return boxes->asked.size() == 1; }));
  EXPECT_TRUE(boxes->asked[0].text.contains(at(pages, u"/b"_s)));
  boxes->expect(Answer::Yes);
  click(u"#go"_s);
  ASSERT_TRUE(waitFor([&] { return reached.size() == 2; }));
  EXPECT_EQ(reached.constLast(), at(pages, u"/b"_s));
  EXPECT_EQ(pages.requestTargets().count("/b"), 1) << "not fetched before the answer";
}

TEST_F(BrowserEngineTest, AScriptsWindowIsAskedForToo) {
  serve(pages, {{"/a", reply("<button id=go onclick=\"window.open('/b')\">b</button>")},
                {"/b", reply("b")}});
  open(at(pages, u"/a"_s));
  boxes->expect(Answer::No);
  click(u"#go"_s);
  ASSERT_TRUE(waitFor([&] { return boxes->asked.size() == 1; }));
  EXPECT_EQ(pages.requestTargets().count("/b"), 0);
}

TEST_F(BrowserEngineTest, ADownloadGoesToTheChosenFileAndNowhereElse) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"price.csv"_s);
  serve(pages, {{"/a", reply("<a id=go href='/f'>f</a>")},
                {"/f", reply("1,2", "text/csv",
                             "Content-Disposition: attachment; filename=\"f.csv\"\r\n")}});
  open(at(pages, u"/a"_s));
  boxes->expectFile(std::nullopt);
  click(u"#go"_s);
  ASSERT_TRUE(waitFor([&] { return boxes->filesAsked.size() == 1; }));
  EXPECT_EQ(boxes->filesAsked[0].fileName, u"f.csv"_s);
  boxes->expectFile(path);
  boxes->expect(Answer::Ok);
  click(u"#go"_s);
  ASSERT_TRUE(waitFor([&] { return boxes->asked.size() == 1; }));
  EXPECT_EQ(boxes->texts(), QStringList{u"下载完成：\n"_s + path});
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "1,2");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
  EXPECT_EQ(words(), QString()) << "a download is no dead page";
}

TEST_F(BrowserEngineTest, APagesOwnBoxesComeAsPlainWords) {
  serve(pages, {{"/a", reply("a")}});
  open(at(pages, u"/a"_s));
  boxes->expect(Answer::Ok);
  js(u"alert('<b>x</b>')"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"<b>x</b>"_s});
  EXPECT_EQ(boxes->asked[0].title, u"127.0.0.1"_s);
  boxes->expect(Answer::Yes);
  EXPECT_EQ(js(u"confirm('?')"_s), true);
  EXPECT_TRUE(js(u"prompt('?', 'x')"_s).isNull());
}

TEST_F(BrowserEngineTest, APageThatALinkLedToSpeaksUnderItsOwnName) {
  QString away = at(pages, u"/b"_s);
  away.replace(u"127.0.0.1"_s, u"localhost"_s);
  serve(pages,
        {{"/a", reply("<a id=go href='" + away.toLatin1() + "'>b</a>")}, {"/b", reply("b")}});
  open(at(pages, u"/a"_s));
  click(u"#go"_s);
  ASSERT_TRUE(waitFor([&] { return reached.size() == 2; }));
  boxes->expect(Answer::Ok);
  js(u"alert('x')"_s);
  ASSERT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(boxes->asked[0].title, u"localhost"_s);
}

TEST_F(BrowserEngineTest, PagesGoThroughTheNamedProxy) {
  serve(pages, {{"http://shop.example/a", reply("<title>via</title>")}});
  state.inetQuotes.AccessType = 2;
  state.inetQuotes.Proxy = u"HTTP="_s + pages.host();
  open(u"http://shop.example/a"_s);
  EXPECT_EQ(pages.requestTargets().value(0), "http://shop.example/a");
}

TEST_F(BrowserEngineTest, ABlankPageFollowsAPageAndThePageIsGone) {
  serve(pages, {{"/a", reply("a")}});
  open(at(pages, u"/a"_s));
  browser->Navigate(u"about:blank"_s);
  ASSERT_TRUE(waitFor([&] { return js(u"location.href"_s) == u"about:blank"_s; }));
  EXPECT_EQ(reached.size(), 1);
}

}  // namespace
}  // namespace qinghe
