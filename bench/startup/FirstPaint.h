#pragma once

#include <QMainWindow>
#include <QPaintEvent>

/// Ends the process at the first paint of a main window, after printing how long that took since
/// the time in QINGHE_BENCH_START (monotonic nanoseconds) and the memory of its own by then (the
/// private and the shared part as the kernel divides it, KiB).
class FirstPaint : public QObject {
 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && qobject_cast<QMainWindow*>(watched) != nullptr) {
      // Behind the paint itself: what the event loop does next is the first thing after it.
      QMetaObject::invokeMethod(this, &FirstPaint::report, Qt::QueuedConnection);
    }
    return false;
  }

 private:
  static void report();
};
