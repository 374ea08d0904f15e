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

/// Counts what it gets, and opens the gate once it paints.
class Window : public QWidget {
 public:
  AnswerGate* gate = nullptr;
  int paints = 0;
  int keys = 0;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    ++paints;
    if (gate != nullptr) gate->open();
  }
  void keyPressEvent(QKeyEvent* /*event*/) override { ++keys; }
};

class WindowsDuringReads : public TransportFixture {
 protected:
  WindowsDuringReads() {
    window.show();
    window.activateWindow();
    QApplication::processEvents();
  }
  /// A page that comes once the window has painted again.
  QString read() {
    AnswerGate gate;
    answerBehind(gate, "page");
    window.gate = &gate;
    window.update();
    const QString page = inet.OpenURL(url(u"x"_s));
    window.gate = nullptr;
    return page;
  }
  Window window;
};

TEST_F(WindowsDuringReads, GoOnPainting) {
  const int before = window.paints;
  EXPECT_EQ(read(), u"page"_s);
  EXPECT_GT(window.paints, before);
}

TEST_F(WindowsDuringReads, GetNoKeysUntilTheReadIsOver) {
  const auto press = [this](QEvent::Type type) {
    QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::AsynchronousDelivery>(
        window.windowHandle(), type, Qt::Key_A, Qt::NoModifier, u"a"_s);
  };
  press(QEvent::KeyPress);
  press(QEvent::KeyRelease);
  EXPECT_EQ(read(), u"page"_s);
  EXPECT_EQ(window.keys, 0);
  QApplication::processEvents();
  EXPECT_EQ(window.keys, 1);
}

}  // namespace
