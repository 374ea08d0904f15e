#pragma once

#include <QPointer>
#include <QWidget>
#include <typeinfo>

#include "forms/FormsState.h"

class QEventLoop;
class QMdiSubWindow;

namespace qinghe {

/// Set by `onQueryUnload` to keep the form.
struct Cancel {
  bool value = false;
};

/// A screen: a widget with the life that screens are described in. Its `objectName` is its name,
/// and each control's `objectName` is the control's name ("txtFields(3)" for a member of an array).
///
/// A form is made, loaded once, shown and hidden any number of times, and unloaded; unloading
/// destroys it, later, so that a control of it may ask for it.
///
/// In a dialog Esc unloads, and Enter presses the button with the focus or else the default one.
class Form : public QWidget {
  Q_OBJECT

 public:
  enum class Kind {
    Child,   ///< lives in the frame of the main window and shows on load
    Dialog,  ///< a window above the main window, not resizable beyond its content's wish
    Window,  ///< a plain window of its own
  };

  Form(Kind kind, const QString& name, const QString& caption);
  ~Form() override;

  Kind kind() const { return kind_; }
  void setCaption(const QString& caption);

  /// Runs `onLoad` once; a child is shown behind it unless `onLoad` has shown it.
  void load();
  /// Loads if needed, shows, and brings to the front; `onActivate` has run when it comes back.
  void showForm();
  /// Shows and waits until the form is hidden or unloaded.
  void showModal();
  void hideForm();
  /// Asks `onQueryUnload`; false when that kept the form, or is still being asked. Closing the
  /// window comes here too.
  bool unload();
  bool isUnloaded() const { return unloaded_; }
  /// Whether it is unloaded or just being asked for it.
  bool isLeaving() const { return unloaded_ || asking_; }
  /// Whether one of its own steps is running.
  bool isBusy() const { return busy_ > 0; }

 protected:
  virtual void onLoad() {}
  virtual void onActivate() {}
  virtual void onQueryUnload(Cancel& cancel);
  virtual void onUnload() {}
  virtual void onResize() {}

  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  friend class ActiveForm;

  void becomeActive();
  QMdiSubWindow* subWindow() const;
  void attach();
  void showChild();
  void focusFirst();
  void showTopLevel();
  void leaveScreen();
  bool dialogKey(int key);

  Kind kind_;
  bool loaded_ = false;
  bool unloaded_ = false;
  bool asking_ = false;
  bool attached_ = false;
  int busy_ = 0;
  QEventLoop* modalLoop_ = nullptr;
  QPointer<QWidget> opener_;  ///< the window that was active when this one was shown
};

/// The default instance of a form class, made and loaded on first use.
template <class F>
F& defaultInstance() {
  auto& registry = formsState().registry;
  if (auto* form = registry.find(typeid(F))) return static_cast<F&>(*form);
  auto* form = new F;
  registry.insert(typeid(F), form);
  form->load();
  return *form;
}

/// Whether the default instance exists.
template <class F>
bool isLoaded() {
  return formsState().registry.find(typeid(F)) != nullptr;
}

/// Unloads the default instance if there is one; false when it kept itself.
template <class F>
bool unload() {
  auto* form = formsState().registry.find(typeid(F));
  return form == nullptr || form->unload();
}

}  // namespace qinghe
