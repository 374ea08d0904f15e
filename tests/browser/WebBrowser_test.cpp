#include "browser/WebBrowser.h"

#include <QDesktopServices>
#include <QLabel>
#include <QNetworkProxy>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "browser/FakeEngine.h"
#include "support/ClientFixture.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

/// Takes the place of the system's browser.
class SystemBrowser : public QObject {
  Q_OBJECT

 public:
  SystemBrowser() {
    for (const auto& scheme : {u"http"_s, u"ftp"_s})
      QDesktopServices::setUrlHandler(scheme, this, "open");
  }
  ~SystemBrowser() override {
    for (const auto& scheme : {u"http"_s, u"ftp"_s}) QDesktopServices::unsetUrlHandler(scheme);
  }
  QStringList opened;

 public slots:
  void open(const QUrl& address) { opened << address.toString(); }
};

class WebBrowserTest : public ClientFixture {
 protected:
  WebBrowserTest() {
    browser.engine = [this]() -> BrowserEngine* {
      ++engineAsked;
      return hasEngine ? &engine : nullptr;
    };
    QObject::connect(&browser, &WebBrowser::reached, &browser,
                     [this](const QString& address) { reached << address; });
  }

  QLabel* label(const QString& name) { return browser.findChild<QLabel*>(name); }
  QString words() {
    auto* shown = label(u"pageWords"_s);
    return shown->isVisible() ? shown->text() : QString();
  }
  bool isPageShown() {
    auto* page = browser.findChild<QWidget*>(u"page"_s);
    return page != nullptr && page->isVisible();
  }
  void press(const QString& name) {
    auto* button = browser.findChild<QPushButton*>(name);
    ASSERT_TRUE(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
  }
  /// For pages with a limit of 20 ms.
  static void waitBeyondTheLimit() {
    QTimer later;
    later.setSingleShot(true);
    later.start(60);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !later.isActive(); }));
  }
  void showOn(const QString& address) {
    browser.show();
    browser.Navigate(address);
    ASSERT_NE(engine.owner, nullptr);
  }

  const QUrl home{u"http://a.example/"_s};
  FakeEngine engine;
  bool hasEngine = true;
  int engineAsked = 0;
  QStringList reached;
  WebBrowser browser{u"WebBrowser1"_s};
};

TEST_F(WebBrowserTest, AHiddenOrBlankViewLoadsNoEngine) {
  EXPECT_EQ(browser.asked(), u"about:blank"_s);
  browser.Navigate(u"http://a.example/1"_s);
  QApplication::processEvents();
  EXPECT_EQ(engineAsked, 0) << "not shown";
  browser.Navigate(u"about:blank"_s);
  browser.show();
  QApplication::processEvents();
  browser.Navigate(u"about:blank"_s);
  browser.Navigate(u""_s);
  EXPECT_EQ(engineAsked, 0) << "blank";
  EXPECT_EQ(browser.asked(), u""_s);
}

TEST_F(WebBrowserTest, ShowingAViewGoesToTheLastAddressItWasGiven) {
  browser.Navigate(u"http://a.example/1"_s);
  browser.Navigate(u"http://a.example/2"_s);
  browser.show();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !engine.went.isEmpty(); }));
  EXPECT_EQ(engine.went, QStringList{u"http://a.example/2"_s});
  EXPECT_TRUE(isPageShown());
  browser.hide();
  browser.show();
  QApplication::processEvents();
  EXPECT_EQ(engine.went.size(), 1) << "shown again it stays where it is";
}

TEST_F(WebBrowserTest, AViewThatWasHiddenDoesNotFlashItsOldPage) {
  showOn(u"http://a.example/1"_s);
  browser.hide();
  browser.Navigate(u"http://a.example/2"_s);
  browser.show();
  EXPECT_FALSE(isPageShown());
  ASSERT_TRUE(QTest::qWaitFor([&] { return isPageShown(); }));
  EXPECT_EQ(engine.went.constLast(), u"http://a.example/2"_s);
  EXPECT_EQ(engine.pages, 1);
}

TEST_F(WebBrowserTest, APageIsReportedWithItsAddressAndTitle) {
  showOn(u"a.example/1"_s);
  QSignalSpy titles(&browser, &WebBrowser::titleChanged);
  engine.owner->pageTitled(u"标题"_s);
  engine.owner->pageReached(QUrl(u"http://a.example/1"_s));
  engine.owner->pageReached(QUrl(u"http://a.example/书"_s));
  EXPECT_EQ(reached, (QStringList{u"http://a.example/1"_s, u"http://a.example/%E4%B9%A6"_s}));
  EXPECT_EQ(browser.title(), u"标题"_s);
  EXPECT_EQ(titles.count(), 1);
}

TEST_F(WebBrowserTest, ABlankPageShowsNothingAndReportsNothing) {
  showOn(u"http://a.example/1"_s);
  engine.owner->pageTitled(u"标题"_s);
  browser.Navigate(u"about:blank"_s);
  EXPECT_EQ(engine.went.constLast(), u"about:blank"_s);
  EXPECT_FALSE(isPageShown());
  EXPECT_EQ(browser.title(), QString());
  engine.owner->pageReached(QUrl(u"about:blank"_s));
  engine.owner->pageReached(QUrl(u"http://a.example/1"_s));
  engine.owner->pageFailed(QUrl(u"http://a.example/1"_s));
  engine.owner->pageTitled(u"late"_s);
  engine.owner->tell(home, u"late"_s);
  EXPECT_EQ(reached, QStringList());
  EXPECT_EQ(browser.title(), QString());
  EXPECT_EQ(words(), QString());
  EXPECT_FALSE(isPageShown());
  EXPECT_FALSE(engine.owner->mayFetch(QUrl(u"http://a.example/"_s)));
}

TEST_F(WebBrowserTest, ADeadPageIsSaidInWordsAndCanBeTriedAgain) {
  showOn(u"http://a.example/1"_s);
  engine.owner->pageFailed(QUrl(u"http://a.example/1"_s));
  EXPECT_EQ(words(), u"网页打不开。"_s);
  EXPECT_EQ(label(u"pageAddress"_s)->text(), u"http://a.example/1"_s);
  press(u"pageRetry"_s);
  EXPECT_EQ(engine.went, (QStringList{u"http://a.example/1"_s, u"http://a.example/1"_s}));
  EXPECT_TRUE(isPageShown());
  EXPECT_EQ(reached, QStringList());
}

TEST_F(WebBrowserTest, APageThatALinkLedToIsTheOneThatIsTriedAgain) {
  showOn(u"http://a.example/1"_s);
  engine.owner->pageReached(QUrl(u"http://a.example/1"_s));
  engine.owner->pageFailed(QUrl(u"http://b.example/2"_s));
  press(u"pageRetry"_s);
  EXPECT_EQ(engine.went.constLast(), u"http://b.example/2"_s);
  EXPECT_EQ(browser.asked(), u"http://a.example/1"_s);
}

TEST_F(WebBrowserTest, AViewThatStaysOnItsHostTriesItsOwnPageAgain) {
  browser.setStaysOnHost(true);
  showOn(u"http://a.example/1"_s);
  engine.owner->pageFailed(QUrl(u"http://b.example/2"_s));
  press(u"pageRetry"_s);
  EXPECT_EQ(engine.went.constLast(), u"http://a.example/1"_s);
  EXPECT_TRUE(engine.owner->mayFetch(QUrl(u"http://a.example/2"_s)));
  engine.owner->pageFailed(QUrl(u"http://a.example/2"_s));
  press(u"pageRetry"_s);
  EXPECT_EQ(engine.went.constLast(), u"http://a.example/2"_s);
}

TEST_F(WebBrowserTest, APageThatNeverComesIsGivenUp) {
  browser.timeLimit = std::chrono::milliseconds(20);
  showOn(u"http://a.example/1"_s);
  ASSERT_TRUE(QTest::qWaitFor([&] { return words() == u"网页打不开。"_s; }));
  EXPECT_EQ(engine.stops, 1);
}

TEST_F(WebBrowserTest, ABlankOrAFailedPageIsNotGivenUpOnceMore) {
  browser.timeLimit = std::chrono::milliseconds(20);
  showOn(u"http://a.example/1"_s);
  browser.Navigate(u"about:blank"_s);
  waitBeyondTheLimit();
  EXPECT_EQ(words(), QString());
  browser.Navigate(u"http://a.example/1"_s);
  engine.owner->pageFailed(QUrl(u"http://a.example/2"_s));
  waitBeyondTheLimit();
  EXPECT_EQ(label(u"pageAddress"_s)->text(), u"http://a.example/2"_s);
  EXPECT_EQ(engine.stops, 0);
}

TEST_F(WebBrowserTest, AFailedPageHasNoTitleAndAPageThatComesAfterItIsShown) {
  showOn(u"http://a.example/1"_s);
  engine.owner->pageTitled(u"标题"_s);
  engine.owner->pageFailed(QUrl(u"http://a.example/1"_s));
  EXPECT_EQ(browser.title(), QString());
  engine.owner->pageTitled(QString(50'000, u'x'));
  engine.owner->pageReached(QUrl(u"http://a.example/1"_s));
  EXPECT_TRUE(isPageShown());
  EXPECT_LT(browser.title().size(), 2100);
}

TEST_F(WebBrowserTest, WhatIsNoAddressOfTheWebCannotBeTriedElsewhere) {
  showOn(u"http://a.example/1"_s);
  engine.owner->pageFailed(QUrl(u"about:blank"_s));
  EXPECT_EQ(words(), u"网页打不开。"_s);
  EXPECT_FALSE(browser.findChild<QPushButton*>(u"pageElsewhere"_s)->isVisible());
  EXPECT_FALSE(browser.findChild<QPushButton*>(u"pageRetry"_s)->isVisible());
}

TEST_F(WebBrowserTest, APageThatHasComeMayStay) {
  browser.timeLimit = std::chrono::milliseconds(20);
  showOn(u"http://a.example/1"_s);
  engine.owner->pageReached(QUrl(u"http://a.example/1"_s));
  waitBeyondTheLimit();
  EXPECT_TRUE(isPageShown());
  EXPECT_EQ(engine.stops, 0);
}

TEST_F(WebBrowserTest, WithoutAnEngineTheSystemsBrowserIsOffered) {
  SystemBrowser system;
  hasEngine = false;
  browser.show();
  browser.Navigate(u"http://a.example/1"_s);
  EXPECT_EQ(words(), u"这里不能直接显示网页。"_s);
  EXPECT_FALSE(browser.findChild<QPushButton*>(u"pageRetry"_s)->isVisible());
  press(u"pageElsewhere"_s);
  EXPECT_EQ(system.opened, QStringList{u"http://a.example/1"_s});
  browser.Navigate(u"about:blank"_s);
  EXPECT_EQ(words(), QString());
}

TEST_F(WebBrowserTest, WhereNoPluginLiesBesideTheProgramThereIsNoEngine) {
  qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
  EXPECT_EQ(loadBrowserEngine(), nullptr);
  qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
}

TEST_F(WebBrowserTest, AnAddressOfTheOldTransferProtocolGoesToTheSystemsBrowser) {
  SystemBrowser system;
  browser.show();
  browser.Navigate(u"ftp://a.example/pub"_s);
  EXPECT_EQ(words(), u"这里不能打开这个地址。"_s);
  press(u"pageElsewhere"_s);
  EXPECT_EQ(system.opened, QStringList{u"ftp://a.example/pub"_s});
  EXPECT_EQ(engineAsked, 0);
}

TEST_F(WebBrowserTest, LocalAndInnerAddressesAreRefusedInWords) {
  browser.show();
  for (const auto& address : {u"file:///etc/passwd"_s, u"qrc:///x"_s, u"chrome://version"_s,
                              u"http://"_s, u"javascript://a/%0a1"_s}) {
    browser.Navigate(u"about:blank"_s);
    browser.Navigate(address);
    EXPECT_EQ(words(), u"这里不能打开这个地址。"_s) << address.toStdString();
    EXPECT_EQ(label(u"pageDetail"_s)->text(), address);
    EXPECT_FALSE(browser.findChild<QPushButton*>(u"pageElsewhere"_s)->isVisible());
  }
  EXPECT_EQ(engineAsked, 0);
}

TEST_F(WebBrowserTest, WordsAboutAnAddressArePlainText) {
  browser.show();
  browser.Navigate(u"file://<b>x</b>"_s);
  EXPECT_EQ(label(u"pageDetail"_s)->textFormat(), Qt::PlainText);
  EXPECT_EQ(label(u"pageAddress"_s)->textFormat(), Qt::PlainText);
}

TEST_F(WebBrowserTest, PagesFetchFromTheWebAlone) {
  showOn(u"http://a.example/1"_s);
  EXPECT_TRUE(engine.owner->mayFetch(QUrl(u"http://b.example/"_s)));
  EXPECT_TRUE(engine.owner->mayFetch(QUrl(u"data:image/png;base64,AA"_s)));
  EXPECT_FALSE(engine.owner->mayFetch(QUrl(u"file:///etc/passwd"_s)));
  EXPECT_FALSE(engine.owner->mayFetch(QUrl(u"qrc:/x"_s)));
}

TEST_F(WebBrowserTest, AViewThatStaysOnItsHostFollowsNothingAwayFromIt) {
  browser.setStaysOnHost(true);
  showOn(u"http://a.example:81/1"_s);
  EXPECT_TRUE(engine.owner->mayFetch(QUrl(u"http://a.example:81/2?x"_s)));
  EXPECT_TRUE(engine.owner->mayFetch(QUrl(u"data:,x"_s)));
  for (const auto& away : {u"http://a.example/1"_s, u"https://a.example:81/"_s,
                           u"http://b.example:81/"_s, u"ws://b.example:81/"_s}) {
    EXPECT_FALSE(engine.owner->mayFetch(QUrl(away))) << away.toStdString();
    EXPECT_FALSE(engine.owner->mayReplacePage(QUrl(away)));
  }
  browser.Navigate(u"http://b.example/"_s);
  EXPECT_TRUE(engine.owner->mayFetch(QUrl(u"http://b.example/2"_s)))
      << "the screen may go anywhere";
}

TEST_F(WebBrowserTest, APopUpIsAskedFor) {
  showOn(u"http://a.example/1"_s);
  boxes->expect(Answer::No);
  EXPECT_FALSE(engine.owner->mayReplacePage(QUrl(u"http://b.example/2"_s)));
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(engine.owner->mayReplacePage(QUrl(u"http://b.example/2"_s)));
  EXPECT_EQ(boxes->asked.constFirst().buttons, Buttons::YesNo);
  EXPECT_TRUE(boxes->asked.constFirst().text.contains(u"http://b.example/2"_s));
  EXPECT_FALSE(engine.owner->mayReplacePage(QUrl(u"file:///etc/passwd"_s))) << "and not even asked";
}

TEST_F(WebBrowserTest, ADownloadGoesWhereTheUserSays) {
  showOn(u"http://a.example/1"_s);
  boxes->expectFile(u"/tmp/mine.csv"_s);
  EXPECT_EQ(engine.owner->downloadTo(QUrl(u"http://a.example/f"_s), u"../../.bashrc"_s),
            u"/tmp/mine.csv"_s);
  EXPECT_EQ(boxes->filesAsked.constLast().fileName, u"bashrc"_s) << "a name, never a way";
  boxes->expectFile(std::nullopt);
  EXPECT_EQ(engine.owner->downloadTo(QUrl(u"http://a.example/f"_s), u"..\\a.exe"_s), std::nullopt);
  EXPECT_EQ(boxes->filesAsked.constLast().fileName, u"a.exe"_s);
  boxes->expectFile(std::nullopt);
  (void)engine.owner->downloadTo(home, QString(5000, u'a'));
  EXPECT_EQ(boxes->filesAsked.constLast().fileName.size(), 120);
  boxes->expect(Answer::Ok);
  engine.owner->downloaded(u"/tmp/mine.csv"_s, true);
  boxes->expect(Answer::Ok);
  engine.owner->downloaded(u"/tmp/mine.csv"_s, false);
  EXPECT_EQ(boxes->texts(),
            (QStringList{u"下载完成：\n/tmp/mine.csv"_s, u"下载失败：\n/tmp/mine.csv"_s}));
}

TEST_F(WebBrowserTest, AnUploadIsTheFileThatTheUserChooses) {
  showOn(u"http://a.example/1"_s);
  boxes->expectFile(u"/tmp/a.png"_s);
  EXPECT_EQ(engine.owner->fileToUpload({u"image/png"_s, u".jpg"_s}), u"/tmp/a.png"_s);
  EXPECT_EQ(boxes->filesAsked.constLast().filter, u"可上传的文件 (*.png *.jpg)"_s);
  boxes->expectFile(std::nullopt);
  EXPECT_EQ(engine.owner->fileToUpload({u"x/unknown"_s}), std::nullopt);
  EXPECT_EQ(boxes->filesAsked.constLast().filter, QString());
}

TEST_F(WebBrowserTest, APagesWordsComeUnderItsOwnHostsName) {
  showOn(u"http://a.example/1"_s);
  boxes->expect(Answer::Ok);
  engine.owner->tell(QUrl(u"http://b.example:81/"_s), u"<b>hi</b>"_s);
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(engine.owner->confirm(QUrl(u"https://c.example/"_s), u"sure?"_s));
  boxes->expect(Answer::No);
  EXPECT_FALSE(engine.owner->confirm(QUrl(), QString(5000, u'x')));
  EXPECT_EQ(boxes->asked[0].title, u"b.example"_s) << "not that of where the program went";
  EXPECT_EQ(boxes->asked[1].title, u"c.example"_s);
  EXPECT_EQ(boxes->asked[2].title, u"网页"_s) << "nor the program's";
  EXPECT_EQ(boxes->asked.constFirst().text, u"<b>hi</b>"_s);
  EXPECT_LT(boxes->asked.constLast().text.size(), 2100);
}

TEST_F(WebBrowserTest, APageThatTalksOnAndOnIsSilenced) {
  showOn(u"http://a.example/1"_s);
  for (int i = 0; i < 20; ++i) boxes->expect(Answer::Ok);
  for (int i = 0; i < 30; ++i) engine.owner->tell(home, u"again"_s);
  EXPECT_EQ(boxes->asked.size(), 20);
  EXPECT_FALSE(engine.owner->confirm(home, u"again"_s));
  EXPECT_EQ(engine.owner->downloadTo(home, u"a.csv"_s), std::nullopt);
  EXPECT_EQ(engine.owner->fileToUpload({}), std::nullopt);
  EXPECT_TRUE(boxes->filesAsked.isEmpty());
  browser.Navigate(u"http://a.example/2"_s);
  boxes->expect(Answer::Ok);
  engine.owner->tell(home, u"new"_s);
}

TEST_F(WebBrowserTest, WhileAPortalReadRunsPagesWait) {
  showOn(u"http://a.example/1"_s);
  state.forms.gate.hold();
  engine.owner->pageReached(QUrl(u"http://a.example/1"_s));
  engine.owner->tell(home, u"now"_s);
  EXPECT_FALSE(engine.owner->confirm(home, u"now"_s));
  EXPECT_FALSE(engine.owner->mayReplacePage(QUrl(u"http://a.example/2"_s)));
  EXPECT_EQ(reached, QStringList());
  state.forms.gate.release();
  EXPECT_EQ(reached, QStringList{u"http://a.example/1"_s});
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(WebBrowserTest, AnAnswerThatWaitedIsDroppedWhenTheViewIsBlankByThen) {
  showOn(u"http://a.example/1"_s);
  state.forms.gate.hold();
  engine.owner->pageReached(QUrl(u"http://a.example/1"_s));
  browser.Navigate(u"about:blank"_s);
  state.forms.gate.release();
  EXPECT_EQ(reached, QStringList());
  EXPECT_FALSE(isPageShown());
  showOn(u"http://a.example/1"_s);
  state.forms.gate.hold();
  engine.owner->pageFailed(QUrl(u"http://a.example/1"_s));
  browser.Navigate(u"about:blank"_s);
  state.forms.gate.release();
  EXPECT_EQ(words(), QString());
}

TEST_F(WebBrowserTest, PagesTakeTheProxyOfTheProgramsSettings) {
  state.inetQuotes.AccessType = 2;
  state.inetQuotes.Proxy = u"HTTP=10.9.8.7:3128"_s;
  showOn(u"http://a.example/1"_s);
  EXPECT_EQ(QNetworkProxy::applicationProxy().hostName(), u"10.9.8.7"_s);
  EXPECT_EQ(QNetworkProxy::applicationProxy().port(), 3128);
  state.inetQuotes.AccessType = 1;
  browser.Navigate(u"http://a.example/2"_s);
  EXPECT_EQ(QNetworkProxy::applicationProxy().type(), QNetworkProxy::NoProxy);
}

TEST_F(WebBrowserTest, TheViewEndsItsPageBeforeItself) {
  auto other = std::make_unique<WebBrowser>(u"WebBrowser2"_s);
  other->engine = browser.engine;
  other->show();
  other->Navigate(u"http://a.example/1"_s);
  ASSERT_NE(engine.owner, nullptr);
  other.reset();
  EXPECT_EQ(engine.owner, nullptr);
}

}  // namespace
}  // namespace qinghe

#include "WebBrowser_test.moc"
