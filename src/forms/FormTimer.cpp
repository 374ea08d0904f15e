#include "forms/FormTimer.h"

#include "forms/FormsState.h"

namespace qinghe {

FormTimer::FormTimer(const QString& name, int intervalMs, QObject* parent)
    : QObject(parent), interval_(intervalMs) {
  setObjectName(name);
  connect(&timer_, &QTimer::timeout, this, &FormTimer::fire);
  // Queued: whoever held the gate is still at work with what came in.
  connect(
      &formsState().gate, &EventGate::opened, this,
      [this] {
        if (due_) fire();
      },
      Qt::QueuedConnection);
}

void FormTimer::setEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  restart();
}

void FormTimer::setInterval(int ms) {
  interval_ = ms;
  restart();
}

void FormTimer::restart() {
  due_ = false;
  if (enabled_ && interval_ > 0) {
    timer_.start(interval_);
  } else {
    timer_.stop();
  }
}

void FormTimer::fire() {
  due_ = enabled_ && formsState().gate.isHeld();
  if (enabled_ && !due_) emit timer();
}

}  // namespace qinghe
