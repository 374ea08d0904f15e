#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace qinghe {

class EventGate;
class Form;

/// Knows which form is the program's active one, and tells a form when it becomes that. A message
/// box, a popup or another program in front changes nothing, so coming back from them does not
/// either.
class ActiveForm : public QObject {
  Q_OBJECT

 public:
  explicit ActiveForm(EventGate& gate);

  Form* current() const;
  /// Makes it the active one; its `onActivate` runs unless it was that already. While a portal read
  /// runs this waits for its end.
  void enter(Form* form);
  /// A form that goes away or hides is no longer the active one.
  void leave(const Form* form);
  /// From the end of a modal form until its opener has the control again nobody becomes active.
  void pause() { paused_ = true; }
  void resume();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void lookAt(QWidget* window);
  bool mustWait() const;
  void enterPending();

  EventGate& gate_;
  QPointer<QWidget> current_;
  QPointer<QWidget> pending_;
  bool paused_ = false;
};

}  // namespace qinghe
