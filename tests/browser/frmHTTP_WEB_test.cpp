#include "content/views/frmHTTP_WEB.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "browser/FakeEngine.h"
#include "browser/WebBrowser.h"
#include "forms/TextBox.h"
#include "support/ClientFixture.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

class FrmHTTPWEB : public ClientFixture {
 protected:
  FrmHTTPWEB() {
    form.WebBrowser1->engine = [this]() -> BrowserEngine* { return &engine; };
    form.showForm();
    QApplication::setActiveWindow(form.window());
  }

  QLineEdit* line() { return qobject_cast<QLineEdit*>(form.txtInput->editor()); }
  void type(const QString& text) {
    line()->setFocus();
    line()->selectAll();
    line()->insert(text);
  }
  void leave() { form.WebBrowser1->findChild<QWidget*>(u"page"_s)->setFocus(); }
  /// Opens a page first, so that there is something else to take the focus.
  void openFirst() {
    form.WebBrowser1->Navigate(u"http://first.example/"_s);
    engine.went.clear();
  }

  FakeEngine engine;
  frmHTTP_WEB& form = defaultInstance<frmHTTP_WEB>();
};

TEST_F(FrmHTTPWEB, ComesUpBlankUnderItsCaptionWithAnAddressBoxAndAPage) {
  EXPECT_EQ(form.windowTitle(), u"查看企业网页"_s);
  EXPECT_EQ(form.objectName(), u"frmHTTP_WEB"_s);
  EXPECT_EQ(form.findChild<TextBox*>(u"txtInput"_s), form.txtInput);
  EXPECT_EQ(form.findChild<WebBrowser*>(u"WebBrowser1"_s), form.WebBrowser1);
  EXPECT_EQ(form.txtInput->text(), QString());
  EXPECT_EQ(form.WebBrowser1->asked(), u"about:blank"_s);
  EXPECT_FALSE(form.WebBrowser1->staysOnHost());
  EXPECT_EQ(engine.pages, 0);
}

TEST_F(FrmHTTPWEB, TheAddressBoxSelectsAllItsTextOnFocus) {
  openFirst();
  form.txtInput->setText(u"http://a.example/"_s);
  leave();
  line()->deselect();
  line()->setFocus();
  EXPECT_EQ(line()->selectedText(), u"http://a.example/"_s);
}

TEST_F(FrmHTTPWEB, LeavingTheBoxCompletesTheAddressAndGoesNowhere) {
  openFirst();
  const struct {
    QString typed, left;
  } table[] = {{u""_s, u""_s},
               {u"a.example"_s, u"http://a.example"_s},
               {u"http://a.example"_s, u"http://a.example"_s},
               {u"HtTp://a.example"_s, u"HtTp://a.example"_s},
               {u"ftp://a.example"_s, u"ftp://a.example"_s},
               {u"FTP://a.example"_s, u"FTP://a.example"_s},
               {u"https://a.example"_s, u"https://a.example"_s},
               {u"HTTPS://a.example"_s, u"HTTPS://a.example"_s},
               {u"http:/a.example"_s, u"http://http:/a.example"_s},
               {u" http://a.example"_s, u"http:// http://a.example"_s},
               {u"ftp.a.example"_s, u"http://ftp.a.example"_s}};
  for (const auto& row : table) {
    type(row.typed);
    leave();
    EXPECT_EQ(form.txtInput->text(), row.left) << row.typed.toStdString();
  }
  EXPECT_EQ(engine.went, QStringList());
}

TEST_F(FrmHTTPWEB, EnterOpensTheAddress) {
  type(u"a.example/shop"_s);
  QTest::keyClick(line(), Qt::Key_Return);
  EXPECT_EQ(form.WebBrowser1->asked(), u"http://a.example/shop"_s);
  EXPECT_EQ(engine.went, QStringList{u"http://a.example/shop"_s});
  EXPECT_EQ(form.txtInput->text(), u"http://a.example/shop"_s);
  type(u"https://b.example/"_s);
  QTest::keyClick(line(), Qt::Key_Enter);
  EXPECT_EQ(engine.went.constLast(), u"https://b.example/"_s);
}

TEST_F(FrmHTTPWEB, EnterInAnEmptyBoxDoesNothing) {
  openFirst();
  type(u""_s);
  QTest::keyClick(line(), Qt::Key_Return);
  EXPECT_EQ(engine.went, QStringList());
  EXPECT_EQ(form.WebBrowser1->asked(), u"http://first.example/"_s);
}

TEST_F(FrmHTTPWEB, APageThatWasReachedPutsItsAddressIntoTheBoxSelected) {
  openFirst();
  type(u"half an addr"_s);
  engine.owner->pageReached(QUrl(u"http://b.example/2?x=1"_s));
  EXPECT_EQ(form.txtInput->text(), u"http://b.example/2?x=1"_s);
  EXPECT_EQ(line()->selectedText(), u"http://b.example/2?x=1"_s);
}

TEST_F(FrmHTTPWEB, APageThatFailedLeavesTheTypedAddress) {
  type(u"dead.example"_s);
  QTest::keyClick(line(), Qt::Key_Return);
  engine.owner->pageFailed(QUrl(u"http://dead.example/"_s));
  EXPECT_EQ(form.txtInput->text(), u"http://dead.example"_s);
}

TEST_F(FrmHTTPWEB, UnloadingItEndsItsPage) {
  openFirst();
  EXPECT_TRUE(form.unload());
  EXPECT_FALSE(isLoaded<frmHTTP_WEB>());
  ASSERT_TRUE(QTest::qWaitFor([&] { return engine.owner == nullptr; }));
}

}  // namespace
}  // namespace qinghe
