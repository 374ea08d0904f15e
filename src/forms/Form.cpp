#include "forms/Form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWindow>

#include "forms/FormTimer.h"

namespace qinghe {

namespace {

Qt::WindowFlags flagsOf(Form::Kind kind) {
  switch (kind) {
    case Form::Kind::Dialog:
      return Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
             Qt::WindowCloseButtonHint;
    case Form::Kind::Window:
      return Qt::Window;
    case Form::Kind::Child:
      break;
  }
  return Qt::Widget;
}

/// Where a window can stand there with its title and edges, whose sizes are told only behind its
/// showing.
QRect roomOn(const QScreen& screen) {
  constexpr int edge = 8;
  constexpr int title = 36;
  return screen.availableGeometry().marginsRemoved({edge, title, edge, edge});
}

QRect movedInto(const QRect& room, QRect place) {
  place.moveLeft(qMax(room.left(), qMin(place.left(), room.right() + 1 - place.width())));
  place.moveTop(qMax(room.top(), qMin(place.top(), room.bottom() + 1 - place.height())));
  return place;
}

/// Keeps a form from being destroyed under a step that runs in it.
class Step {
 public:
  Step(Form* form, int& depth) : form_(form), depth_(depth) { ++depth_; }
  ~Step() {
    if (form_ != nullptr && --depth_ == 0) formsState().registry.sweep();
  }
  Step(const Step&) = delete;
  Step& operator=(const Step&) = delete;

 private:
  QPointer<Form> form_;
  int& depth_;
};

}  // namespace

Form::Form(Kind kind, const QString& name, const QString& caption)
    : QWidget(nullptr, flagsOf(kind)), kind_(kind) {
  setObjectName(name);
  setWindowTitle(caption);
  // The main window alone decides when the program ends.
  setAttribute(Qt::WA_QuitOnClose, false);
}

Form::~Form() {
  if (auto* state = livingFormsState()) {
    state->registry.remove(this);
    state->activeForm.leave(this);
  }
  if (modalLoop_ != nullptr) modalLoop_->quit();
}

void Form::onQueryUnload(Cancel& /*cancel*/) {}

void Form::setCaption(const QString& caption) {
  setWindowTitle(caption);
}

void Form::load() {
  if (loaded_) return;
  loaded_ = true;
  const Step step(this, busy_);
  onLoad();
  if (kind_ == Kind::Child && !unloaded_ && !attached_) showForm();
}

void Form::showForm() {
  if (unloaded_) return;
  const Step step(this, busy_);
  load();
  if (unloaded_) return;
  if (!isVisible()) formsState().activeForm.leave(this);
  if (kind_ == Kind::Child) attach();
  if (subWindow() != nullptr) {
    showChild();
  } else {
    showTopLevel();
  }
  if (isVisible()) formsState().activeForm.enter(this);
}

void Form::attach() {
  if (attached_) return;
  attached_ = true;
  if (!formsState().attachChild) return;
  formsState().attachChild(*this);
  auto* sub = subWindow();
  if (sub == nullptr || sub->mdiArea() == nullptr) return;
  connect(sub->mdiArea(), &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* front) {
    // Behind a dialog the frame may change its order; that is seen when the frame comes back.
    if (front != nullptr && front == subWindow() && window()->isActiveWindow()) {
      formsState().activeForm.enter(this);
    }
  });
  // The frame's own Ctrl+W would make the form's ambiguous.
  if (auto* menu = sub->systemMenu()) {
    for (auto* action : menu->actions()) {
      if (action->shortcut().matches(QKeySequence::Close) == QKeySequence::ExactMatch ||
          action->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_W))) {
        action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4));
      }
    }
  }
}

void Form::showChild() {
  auto* sub = subWindow();
  show();
  if (sub->isMinimized() || sub->isShaded()) sub->showNormal();
  sub->show();
  if (auto* area = sub->mdiArea()) area->setActiveSubWindow(sub);
  focusFirst();
  if (window()->isVisible() && QApplication::activeModalWidget() == nullptr) {
    window()->activateWindow();
  }
}

/// The frame gives the focus to what comes first, even if that is closed and does not take it.
void Form::focusFirst() {
  const auto takesFocus = [this](const QWidget* widget) {
    return widget != this && isAncestorOf(widget) && widget->isVisible() && widget->isEnabled() &&
           (widget->focusPolicy() & Qt::TabFocus) != 0;
  };
  QWidget* first = focusWidget();
  if (first != nullptr && takesFocus(first)) return;
  for (first = nextInFocusChain(); first != this; first = first->nextInFocusChain()) {
    if (!takesFocus(first)) continue;
    first->setFocus(Qt::ActiveWindowFocusReason);
    return;
  }
}

void Form::showTopLevel() {
  if (!isVisible()) {
    auto* active = QApplication::activeWindow();
    opener_ = active == this ? nullptr : active;
    if (kind_ == Kind::Dialog && layout() != nullptr &&
        layout()->sizeConstraint() == QLayout::SetDefaultConstraint) {
      layout()->setSizeConstraint(QLayout::SetMinAndMaxSize);
    }
    if (kind_ == Kind::Dialog && opener_ != nullptr) {
      winId();  // the native window must stand before it can be told what it belongs to
      windowHandle()->setTransientParent(opener_->windowHandle());
      if (!testAttribute(Qt::WA_Moved)) {
        if (!testAttribute(Qt::WA_Resized)) adjustSize();
        const QRect room = roomOn(*opener_->screen());
        resize(size().boundedTo(room.size()));
        auto place = QRect(QPoint(), size());
        place.moveCenter(opener_->frameGeometry().center());
        move(movedInto(room, place).topLeft());
      }
    }
  }
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void Form::showModal() {
  if (unloaded_ || modalLoop_ != nullptr) return;
  const Step step(this, busy_);
  load();
  if (unloaded_) return;
  hide();  // modality counts from the next showing on
  setWindowModality(QApplication::activeWindow() != nullptr ? Qt::WindowModal
                                                            : Qt::ApplicationModal);
  showForm();
  if (isVisible()) {
    QEventLoop loop;
    const QPointer<Form> self(this);
    modalLoop_ = &loop;
    loop.exec(QEventLoop::DialogExec);
    formsState().activeForm.resume();
    if (self == nullptr) return;
    modalLoop_ = nullptr;
  }
  setWindowModality(Qt::NonModal);
}

void Form::hideForm() {
  if (!unloaded_) leaveScreen();
}

bool Form::unload() {
  if (unloaded_) return true;
  if (asking_) return false;
  const Step step(this, busy_);
  {
    const QScopedValueRollback asking(asking_, true);
    Cancel cancel;
    onQueryUnload(cancel);
    if (unloaded_) return true;
    if (cancel.value) return false;
  }
  unloaded_ = true;
  onUnload();
  for (auto* timer : findChildren<FormTimer*>()) timer->setEnabled(false);
  leaveScreen();
  if (auto* sub = subWindow()) {
    // Out of the frame's window, which destroys itself on closing at a time of its own.
    sub->setWidget(nullptr);
    setParent(nullptr);
    sub->close();
  }
  formsState().registry.remove(this);
  formsState().registry.discard(this);
  return true;
}

void Form::leaveScreen() {
  // It may leave before its activation got round to it.
  const auto* active = QApplication::activeWindow();
  const bool wasInFront = active != nullptr && (active == this || active == opener_);
  auto* sub = subWindow();
  if (modalLoop_ != nullptr) formsState().activeForm.pause();
  hide();
  if (sub != nullptr) sub->hide();
  formsState().activeForm.leave(this);
  if (modalLoop_ != nullptr) modalLoop_->quit();
  // Not every window manager gives the focus back to where it was.
  if (isWindow() && wasInFront && opener_ != nullptr && opener_->isVisible()) {
    opener_->activateWindow();
  }
}

void Form::closeEvent(QCloseEvent* event) {
  // A close that the window manager asks for during a portal read is input, too.
  const bool held = !unloaded_ && formsState().gate.isHeld();
  event->setAccepted(!held && unload());
}

void Form::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!unloaded_) onResize();
}

bool Form::event(QEvent* event) {
  if (event->type() == QEvent::Hide && !event->spontaneous() && modalLoop_ != nullptr) {
    modalLoop_->quit();
  }
  if (event->type() == QEvent::KeyPress && kind_ == Kind::Dialog) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto modifiers = key->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::NoModifier && dialogKey(key->key())) {
      event->accept();
      return true;
    }
  }
  return QWidget::event(event);
}

bool Form::dialogKey(int key) {
  if (key == Qt::Key_Escape) {
    unload();
    return true;
  }
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  auto* button = qobject_cast<QPushButton*>(focusWidget());
  if (button == nullptr) {
    const auto buttons = findChildren<QPushButton*>();
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [](const QPushButton* one) { return one->isDefault(); });
    if (found == buttons.end()) return false;
    button = *found;
  }
  button->click();
  return true;
}

void Form::becomeActive() {
  const Step step(this, busy_);
  if (loaded_ && !unloaded_) onActivate();
}

QMdiSubWindow* Form::subWindow() const {
  return qobject_cast<QMdiSubWindow*>(parentWidget());
}

}  // namespace qinghe
