#include "forms/ActiveForm.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "forms/EventGate.h"
#include "forms/Form.h"

namespace qinghe {

namespace {

/// The form in front of a window: itself, or the current child in its frame.
Form* frontForm(QWidget* window) {
  if (auto* form = qobject_cast<Form*>(window)) return form;
  auto* area = window->findChild<QMdiArea*>();
  auto* child = area == nullptr ? nullptr : area->currentSubWindow();
  return child == nullptr ? nullptr : qobject_cast<Form*>(child->widget());
}

/// Message boxes, menus and tips come and go over a form without taking its place.
bool takesNoPlace(const QWidget* window) {
  const auto type = window->windowType();
  return qobject_cast<const QDialog*>(window) != nullptr || type == Qt::Popup ||
         type == Qt::ToolTip || type == Qt::Tool;
}

}  // namespace

ActiveForm::ActiveForm(EventGate& gate) : gate_(gate) {
  if (qApp != nullptr) qApp->installEventFilter(this);
  // Queued: whoever reads from the portal reads the answer off first.
  connect(&gate_, &EventGate::opened, this, &ActiveForm::enterPending, Qt::QueuedConnection);
}

void ActiveForm::resume() {
  paused_ = false;
  QMetaObject::invokeMethod(this, &ActiveForm::enterPending, Qt::QueuedConnection);
}

bool ActiveForm::mustWait() const {
  return paused_ || gate_.isHeld();
}

void ActiveForm::enterPending() {
  if (mustWait()) return;
  auto* form = qobject_cast<Form*>(pending_);
  pending_ = nullptr;
  if (form != nullptr) enter(form);
}

Form* ActiveForm::current() const {
  return qobject_cast<Form*>(current_);
}

void ActiveForm::enter(Form* form) {
  if (form != nullptr && form->isLeaving()) return;
  if (form != nullptr && mustWait()) {
    pending_ = form;
    return;
  }
  if (form == current_) return;
  current_ = form;
  if (form != nullptr) form->becomeActive();
}

void ActiveForm::leave(const Form* form) {
  if (pending_ == form) pending_ = nullptr;
  if (current_ != form) return;
  current_ = nullptr;
  // The next one mostly comes by its window's activation, but a form that went before its own
  // window got that far leaves the old window active all along.
  QMetaObject::invokeMethod(
      this,
      [this] {
        auto* window = QApplication::activeWindow();
        if (current_ == nullptr && window != nullptr) lookAt(window);
      },
      Qt::QueuedConnection);
}

void ActiveForm::lookAt(QWidget* window) {
  if (window->isVisible() && !takesNoPlace(window)) enter(frontForm(window));
}

bool ActiveForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate && watched->isWidgetType()) {
    auto* window = static_cast<QWidget*>(watched);
    if (window->isWindow()) lookAt(window);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace qinghe
