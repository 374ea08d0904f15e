#pragma once

#include <QObject>

namespace qinghe {

/// Shut while a portal read blocks the program: timers, sockets and the tray hold their events back
/// until it opens again. Holds nest.
class EventGate : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  void hold();
  void release();
  bool isHeld() const { return depth_ > 0; }

 signals:
  void opened();

 private:
  int depth_ = 0;
};

}  // namespace qinghe
