#pragma once

#include <QObject>
#include <QTimer>

namespace qinghe {

/// A form's timer. It does not fire while a portal read runs; what came due meanwhile fires once,
/// behind it, when the reader's step is over. With an interval of 0 it never fires.
class FormTimer : public QObject {
  Q_OBJECT

 public:
  FormTimer(const QString& name, int intervalMs, QObject* parent);

  void setEnabled(bool enabled);
  bool isEnabled() const { return enabled_; }
  void setInterval(int ms);
  int interval() const { return interval_; }

 signals:
  void timer();

 private:
  void restart();
  void fire();

  QTimer timer_;
  int interval_;
  bool enabled_ = false;
  bool due_ = false;
};

}  // namespace qinghe
