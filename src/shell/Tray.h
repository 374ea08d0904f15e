#pragma once

#include <QObject>
#include <QSystemTrayIcon>
#include <memory>

namespace qinghe {

/// The tray icon with its three states. Works as a record where the desktop has no tray. The tip is
/// cut at 63 characters.
class Tray : public QObject {
  Q_OBJECT

 public:
  enum class State { None, Connected, Offline, Waiting };

  explicit Tray(QObject* parent = nullptr);
  ~Tray() override;

  void add();            ///< "…初始化"
  void showConnected();  ///< "…已经连网：" + user name
  void showOffline();    ///< "…尚未连网：" + user name
  void showWaiting();    ///< "…正在等待：" + user name
  void remove();

  State state() const { return state_; }
  bool isAdded() const { return added_; }
  QString tip() const { return tip_; }

 public slots:
  /// A press of the left button on the icon: nothing while waiting or during a portal read.
  void press();

 signals:
  /// A left press that counts: bring the commands up to date and pop up the menu.
  void leftPressed();

 private:
  void show(State state, const QString& words);

  QSystemTrayIcon* icon_ = nullptr;
  State state_ = State::None;
  bool added_ = false;
  QString tip_;
};

void TrayAdd();
void TrayShowConnected();
void TrayShowOffline();
void TrayShowWaiting();
void TrayRemove();

}  // namespace qinghe
