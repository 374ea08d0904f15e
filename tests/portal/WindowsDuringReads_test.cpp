#include <qpa/qwindowsysteminterface.h>
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include "TransportFixture.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Asks to be painted again and again, and counts what it gets.
class Window : public QWidget {
 public:
  int paints = 0;
  int keys = 0;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
  void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
};

class WindowsDuringReads : public TransportFixture {
 protected:
  WindowsDuringReads() {
    window.show();
    window.activateWindow();
    QApplication::processEvents();
  }
  Window window;
};

TEST_F(WindowsDuringReads, GoOnPainting) {
  answer(delayed(300ms, "page"));
  const int before = window.paints;
  window.update();
  EXPECT_EQ(inet.OpenURL(url(u"x"_s)), u"page"_s);
  EXPECT_GT(window.paints, before);
}

TEST_F(WindowsDuringReads, GetNoKeysUntilTheReadIsOver) {
  answer(delayed(300ms, "page"));
  const auto press = [this](QEvent::Type type) {
    QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::AsynchronousDelivery>(
        window.windowHandle(), type, Qt::Key_A, Qt::NoModifier, u"a"_s);
  };
  press(QEvent::KeyPress);
  press(QEvent::KeyRelease);
  EXPECT_EQ(inet.OpenURL(url(u"x"_s)), u"page"_s);
  EXPECT_EQ(window.keys, 0);
  QApplication::processEvents();
  EXPECT_EQ(window.keys, 1);
}

}  // namespace
