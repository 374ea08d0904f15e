#pragma once

#include <QObject>
#include <QTimer>

namespace qinghe {

/// A form's timer. It does not fire while a portal read runs; what came due meanwhile fires once,
/// behind it.
class FormTimer : public QObject {
  Q_OBJECT

 public:
  FormTimer(const QString& name, int intervalMs, QObject* parent);

  void setEnabled(bool enabled);
  bool isEnabled() const;
  void setInterval(int ms);
  int interval() const;

 signals:
  void timer();

 private:
  void fire();

  QTimer timer_;
  bool due_ = false;
};

}  // namespace qinghe
