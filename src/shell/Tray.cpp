#include "shell/Tray.h"

#include <QGuiApplication>
#include <utility>

#include "forms/Icons.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype tipLength = 63;

QString cutTip(const QString& tip) {
  if (tip.size() <= tipLength) return tip;
  // Half a character is none.
  return tip.left(tip.at(tipLength - 1).isHighSurrogate() ? tipLength - 1 : tipLength);
}

// Some desktops guess at markup in a tip; behind a bracket or "&" that stands alone there is none.
QString asPlainTip(QString tip) {
  return tip.replace(u'<', u"<\u200B"_s).replace(u'&', u"&\u200B"_s);
}

// Under X11 a tray that starts later than the program still gets the icon.
bool hasTray() {
  return QSystemTrayIcon::isSystemTrayAvailable() || QGuiApplication::platformName() == u"xcb";
}

QString iconKeyOf(Tray::State state) {
  switch (state) {
    case Tray::State::Offline:
      return u"TrayOffline"_s;
    case Tray::State::Waiting:
      return u"TrayWaiting"_s;
    case Tray::State::None:
    case Tray::State::Connected:
      break;
  }
  return u"TrayConnected"_s;
}

}  // namespace

Tray::Tray(QObject* parent) : QObject(parent) {}

Tray::~Tray() = default;

void Tray::add() {
  added_ = true;
  if (icon_ == nullptr) {
    icon_ = new QSystemTrayIcon(this);
    connect(icon_, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
              if (reason == QSystemTrayIcon::Trigger) press();
            });
  }
  show(State::Connected, u"青禾云集电子商务系统初始化"_s);
  if (hasTray()) icon_->show();
}

void Tray::showConnected() {
  show(State::Connected, u"青禾云集电子商务系统已经连网："_s + app().gUserName);
}

void Tray::showOffline() {
  show(State::Offline, u"青禾云集电子商务系统尚未连网："_s + app().gUserName);
}

void Tray::showWaiting() {
  show(State::Waiting, u"青禾云集电子商务系统正在等待："_s + app().gUserName);
}

void Tray::remove() {
  delete std::exchange(icon_, nullptr);
  added_ = false;
}

void Tray::press() {
  if (state_ == State::Waiting || formsState().gate.isHeld()) return;
  emit leftPressed();
}

void Tray::show(State state, const QString& words) {
  const bool sameIcon = state == state_;
  const QString tip = cutTip(words);
  const bool sameTip = tip == tip_;
  state_ = state;
  tip_ = tip;
  if (icon_ == nullptr) return;
  // Asked for at every connection check: the desktop is told only what is new.
  if (!sameIcon || icon_->icon().isNull()) icon_->setIcon(iconFor(iconKeyOf(state)));
  if (!sameTip || icon_->toolTip().isEmpty()) icon_->setToolTip(asPlainTip(tip));
}

void TrayAdd() {
  app().tray.add();
}
void TrayShowConnected() {
  app().tray.showConnected();
}
void TrayShowOffline() {
  app().tray.showOffline();
}
void TrayShowWaiting() {
  app().tray.showWaiting();
}
void TrayRemove() {
  app().tray.remove();
}

}  // namespace qinghe
