#include "browser/engine/EngineFixture.h"

#include <unistd.h>

#include <QLabel>
#include <QMap>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace qinghe {

using namespace Qt::StringLiterals;

ScriptedServer::Reply EngineFixture::reply(const QByteArray& body, const QByteArray& type,
                                           const QByteArray& head, const QByteArray& status) {
  return {.bytes = "HTTP/1.1 " + status + "\r\nContent-Type: " + type + "\r\n" + head +
                   "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body};
}

void EngineFixture::serve(ScriptedServer& server, QMap<QByteArray, ScriptedServer::Reply> pages) {
  server.setHandler([pages = std::move(pages)](const QByteArray& request) {
    const QByteArray target = request.split(' ').value(1);
    const auto found = pages.constFind(target);
    return found == pages.cend() ? reply("<title>none</title>", "text/html", {}, "404 Not Found")
                                 : *found;
  });
}

EngineFixture::EngineFixture() : browser(new WebBrowser(u"WebBrowser1"_s, &window)) {
  // The engine's sandbox cannot be had by the superuser, who runs the tests in a container.
  if (::geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
  state.inetQuotes.AccessType = 1;
  auto* rows = new QVBoxLayout(&window);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(browser);
  window.resize(640, 480);
  QObject::connect(browser, &WebBrowser::reached, browser,
                   [this](const QString& address) { reached << address; });
}

EngineFixture::~EngineFixture() {
  delete browser;
}

bool EngineFixture::waitFor(const std::function<bool()>& condition) {
  return QTest::qWaitFor(condition, 60'000);
}

void EngineFixture::open(const QString& address) {
  window.show();
  QApplication::setActiveWindow(&window);
  const auto before = reached.size();
  browser->Navigate(address);
  ASSERT_NE(view(), nullptr) << "no engine";
  ASSERT_TRUE(waitFor([&] { return reached.size() > before; })) << words().toStdString();
}

QWebEngineView* EngineFixture::view() {
  return browser->findChild<QWebEngineView*>();
}

QVariant EngineFixture::js(const QString& script) {
  QVariant result;
  bool done = false;
  if (view() == nullptr) {
    ADD_FAILURE() << "no engine";
    return result;
  }
  view()->page()->runJavaScript(script, 0, [&](const QVariant& value) {
    result = value;
    done = true;
  });
  EXPECT_TRUE(waitFor([&] { return done; })) << script.toStdString();
  return result;
}

void EngineFixture::click(const QString& selector) {
  js(u"window.drawn=0;requestAnimationFrame(()=>requestAnimationFrame(()=>window.drawn=1));0"_s);
  ASSERT_TRUE(waitFor([this] { return js(u"window.drawn"_s).toInt() == 1; }));
  const auto middle = js(u"(() => { const r = document.querySelector('%1').getBoundingClientRect();"
                         "return [r.x + r.width / 2, r.y + r.height / 2]; })()"_s.arg(selector))
                          .toList();
  ASSERT_EQ(middle.size(), 2) << selector.toStdString();
  const QPoint point(middle[0].toInt(), middle[1].toInt());
  QTest::mouseClick(view()->focusProxy(), Qt::LeftButton, Qt::NoModifier, point);
}

QString EngineFixture::words() {
  auto* label = browser->findChild<QLabel*>(u"pageWords"_s);
  return label->isVisible() ? label->text() : QString();
}

}  // namespace qinghe
