#pragma once

#include <QHash>
#include <QMainWindow>

#include "forms/FormTimer.h"
#include "shell/main/CommandTable.h"

class QMdiArea;
class QMenu;

namespace qinghe {

class Form;
class SingleInstance;

/// Shows the login screen with the password focused.
void showLogin();

/// The frame of the program: one menu, a tool bar of its most used entries, the area of the child
/// screens, the tray's menu, and the order in which the program starts and stops.
class MDIFrmMAIN : public QMainWindow {
  Q_OBJECT

 public:
  MDIFrmMAIN();
  ~MDIFrmMAIN() override;

  /// Starts the program in its fixed order and shows the window. One second later the login comes
  /// up by itself.
  void load();

  /// Sets every entry of the command table by the login mode.
  void RefreshCommands();
  QAction* command(const QString& name) const;  ///< null for an unknown entry

  /// Gives the two goods entries the industry's own word, where the program's resources hold one
  /// under the industry's number * 1000 + 111 and + 112. They hold none, and nobody asks: here the
  /// word would change.
  void ApplyIndustryCaptions();

  /// Opens "help.chm" of the program directory with what the desktop has for it.
  void openHelp();

  QMenu* mnuSystem;
  FormTimer* Timer1;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void buildCommands();
  void attachChild(Form& form);
  void firstRun();
  void timerFired();
  void popUpMenu();
  bool unloadScreens();
  void stop();

  QList<Command> table_;
  QHash<QString, QAction*> actions_;
  QMdiArea* area_;
  bool stopped_ = false;
};

}  // namespace qinghe
