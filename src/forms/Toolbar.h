#pragma once

#include <QString>
#include <QToolBar>

namespace qinghe {

/// A tool bar whose buttons are told apart by a text key. It takes no focus, so pressing a button
/// validates no text box. Each button is an action named like its key.
class Toolbar : public QToolBar {
  Q_OBJECT

 public:
  explicit Toolbar(const QString& name, QWidget* parent = nullptr);

  /// The icon is that of `imageKey`, of the key itself when that is empty. Keys known to everybody
  /// (Save, Add, Print, Exit, ...) get their usual shortcut, which works while the focus is in the
  /// bar's own form.
  QAction* addButton(const QString& key, const QString& caption, const QString& toolTip,
                     const QString& imageKey = {});
  QAction* button(const QString& key) const;  ///< null when there is none
  void setButtonEnabled(const QString& key, bool enabled);

 signals:
  void buttonClick(const QString& key);

 protected:
  bool event(QEvent* event) override;

 private:
  void lendShortcuts();
};

}  // namespace qinghe
