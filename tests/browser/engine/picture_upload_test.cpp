// A picture goes from the user's disk to the portal through the portal's own page, on the screens.

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QMap>
#include <QTest>
#include <QWebEngineView>

#include "browser/engine/EngineFixture.h"
#include "catalogue/FrmTUPI_WEB.h"
#include "content/views/frmHTTP_WEB.h"
#include "forms/TabControl.h"
#include "forms/TextBox.h"
#include "portal/RequestBuilder.h"
#include "shell/PortalMethod.h"
#include "support/PortalProcess.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

class PictureUpload : public EngineFixture {
 protected:
  PictureUpload() {
    delete browser;
    browser = nullptr;
    state.gWebServer = u"HTTP://"_s + portalProcess.host() + u"/"_s;
    beCompany(1, 1);
    state.gQiyeId = 1;
    state.gUserNo = u"1001"_s;
    const QString url = RequestBuilder(state.gWebServer, paths::login)
                            .encoded(u"USER_NO"_s, u"1001"_s)
                            .encoded(u"USER_PASS"_s, u"123456"_s)
                            .encoded(u"SOFT_VER"_s, u"1.0"_s)
                            .url();
    EXPECT_TRUE(readPortal(url, EmptyAnswer::IsFailure,
                           [](GetHtml& html) { return html.GetRowItem().toInt() > 0; }));
  }
  ~PictureUpload() override { browser = nullptr; }

  /// The page view of a screen takes the place of the fixture's own.
  void use(WebBrowser* shown) {
    browser = shown;
    QObject::connect(browser, &WebBrowser::reached, browser,
                     [this](const QString& address) { reached << address; });
  }

  /// The picture tab of the first of the company's picture records.
  void openPictureTab() {
    auto& screen = defaultInstance<FrmTUPI_WEB>();
    screen.window()->resize(1000, 640);
    QApplication::setActiveWindow(screen.window());
    use(screen.WebBrowserPICT);
    QTest::mouseClick(screen.ListView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                      screen.ListView1->cellRect(screen.ListView1->itemAt(0), 0).center());
    ASSERT_TRUE(screen.WebBrowserPICT->asked().contains(u"_vti_image.asp?stable=tupi&id="_s));
    ASSERT_EQ(view(), nullptr) << "the page is not to be seen yet";
    screen.SSTab1->setTab(PictureTab);
    ASSERT_TRUE(waitFor([this] { return reached.size() == 1; })) << words().toStdString();
  }
  QString pictureFile(const QString& name, const QSize& size) {
    const QString path = files.filePath(name);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    EXPECT_TRUE(image.save(path));
    return path;
  }
  void choose(const QString& path) {
    boxes->expectFile(path);
    click(u"#picture"_s);
    ASSERT_TRUE(waitFor([this] { return js(u"picture.files.length"_s).toInt() == 1; }));
  }
  void press(const QString& selector) {
    const auto before = reached.size();
    click(selector);
    ASSERT_TRUE(waitFor([&] { return reached.size() > before; }));
  }
  int shownWidth() { return js(u"document.getElementById('shown')?.naturalWidth ?? 0"_s).toInt(); }

  const QTemporaryDir files;
  PortalProcess portalProcess;
};

TEST_F(PictureUpload, AChosenPictureIsOnThePortalAndShown) {
  openPictureTab();
  ASSERT_TRUE(js(u"document.body.textContent"_s).toString().contains(u"暂无图片"_s));
  choose(pictureFile(u"书店 门面.png"_s, {300, 200}));
  EXPECT_EQ(boxes->filesAsked.constLast().filter, u"可上传的文件 (*.jpg *.jpeg *.jpe *.png)"_s);
  press(u"#upload"_s);
  EXPECT_EQ(reached.constLast(), reached.constFirst()) << "it leads back to the record's page";
  EXPECT_TRUE(waitFor([this] { return shownWidth() == 300; }));
  EXPECT_TRUE(portalProcess.log().contains(u"_vti_image_add.asp"_s) ||
              waitFor([this] { return portalProcess.log().contains(u"_vti_image_add.asp"_s); }));
  press(u"#remove"_s);
  EXPECT_EQ(shownWidth(), 0);
}

TEST_F(PictureUpload, WhatIsNoPictureIsRefusedInThePage) {
  openPictureTab();
  QFile text(files.filePath(u"list.png"_s));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write("only a name says picture");
  text.close();
  choose(text.fileName());
  press(u"#upload"_s);
  EXPECT_TRUE(
      js(u"document.body.textContent"_s).toString().contains(u"只接受 JPEG 和 PNG 图片。"_s));
  choose(pictureFile(u"a.jpg"_s, {40, 30}));
  press(u"#upload"_s);
  EXPECT_TRUE(waitFor([this] { return shownWidth() == 40; })) << "and the next one goes";
}

TEST_F(PictureUpload, TooLargeAFileIsToldSoInThePage) {
  openPictureTab();
  QFile large(files.filePath(u"large.png"_s));
  ASSERT_TRUE(large.open(QIODevice::WriteOnly));
  large.write(QByteArray(6'000'000, 'x'));
  large.close();
  choose(large.fileName());
  press(u"#upload"_s);
  EXPECT_EQ(words(), QString());
  EXPECT_TRUE(js(u"document.body.textContent"_s).toString().contains(u"不能超过 4 MB"_s));
}

TEST_F(PictureUpload, WithoutAChosenFileNothingIsSent) {
  openPictureTab();
  boxes->expectFile(std::nullopt);
  click(u"#picture"_s);
  ASSERT_TRUE(waitFor([this] { return boxes->filesAsked.size() == 1; }));
  click(u"#upload"_s);
  EXPECT_EQ(js(u"document.querySelector(':invalid')?.tagName ?? ''"_s), u"FORM"_s);
  EXPECT_EQ(reached.size(), 1);
  EXPECT_FALSE(portalProcess.log().contains(u"_vti_image_add.asp"_s));
}

TEST_F(PictureUpload, APortalThatDiesGivesAPlainPageOnTheTab) {
  openPictureTab();
  portalProcess.kill();
  browser->Navigate(browser->asked());
  EXPECT_TRUE(waitFor([this] { return words() == u"网页打不开。"_s; }));
}

TEST_F(PictureUpload, TheCompanysPageAndTheHelpComeUpOnThePageScreen) {
  auto& screen = defaultInstance<frmHTTP_WEB>();
  QApplication::setActiveWindow(screen.window());
  use(screen.WebBrowser1);
  screen.WebBrowser1->Navigate(state.gWebServer + u"link/preview.asp?stuserno="_s + state.gUserNo);
  ASSERT_TRUE(waitFor([this] { return reached.size() == 1; }));
  EXPECT_EQ(screen.txtInput->text(),
            u"http://%1/link/preview.asp?stuserno=1001"_s.arg(portalProcess.host()));
  EXPECT_EQ(js(u"document.querySelector('h1').textContent"_s), u"青禾书店"_s);
  auto* line = qobject_cast<QLineEdit*>(screen.txtInput->editor());
  line->setFocus();
  line->selectAll();
  line->insert(portalProcess.host() + u"/link/help.asp"_s);
  QTest::keyClick(line, Qt::Key_Return);
  ASSERT_TRUE(waitFor([this] { return reached.size() == 2; }));
  click(u"nav li a"_s);
  ASSERT_TRUE(waitFor([this] { return reached.size() == 3; }));
  EXPECT_TRUE(screen.txtInput->text().endsWith(u"/link/help.asp?id=1"_s));
}

}  // namespace
}  // namespace qinghe
