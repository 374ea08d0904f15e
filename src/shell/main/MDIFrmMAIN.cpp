#include "shell/main/MDIFrmMAIN.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QToolBar>
#include <QUrl>
#include <algorithm>

#include "account/frmLogin_qy.h"
#include "forms/Form.h"
#include "forms/Icons.h"
#include "forms/StatusBar.h"
#include "messaging/frmPeer.h"
#include "shell/AppState.h"
#include "shell/FrmINTERNET.h"
#include "shell/frmSplash.h"
#include "shell/main/LogoutPortal.h"
#include "shell/main/own_window.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 1180;
constexpr int firstHeight = 760;
constexpr double shareOfScreen = 0.95;
constexpr int loginDelay = 1000;
constexpr int cascadeStep = 30;
constexpr int cascadeLength = 6;

void giveDigit(QAction& action, int digit) {
  const QKeySequence keys(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + digit));
  action.setShortcut(keys);
  action.setToolTip(u"%1 (%2)"_s.arg(action.text(), keys.toString(QKeySequence::NativeText)));
}

}  // namespace

MDIFrmMAIN::MDIFrmMAIN()
    : mnuSystem(new QMenu(u"系统(&S)"_s, this)),
      Timer1(new FormTimer(u"Timer1"_s, loginDelay, this)),
      table_(commandTable(*this)),
      area_(new QMdiArea(this)) {
  setObjectName(u"MDIFrmMAIN"_s);
  setWindowTitle(productTitle());
  mnuSystem->setObjectName(u"mnuSystem"_s);
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setBackground(palette().brush(QPalette::Mid));
  setCentralWidget(area_);
  setStatusBar(new StatusBar(u"StatusBar1"_s, this));
  buildCommands();
  // Small screens keep room for the title, the edges and their own bars.
  resize(QSize(firstWidth, firstHeight).boundedTo(screen()->availableSize() * shareOfScreen));

  app().forms.attachChild = [this](Form& form) { attachChild(form); };
  offerScreensFromBelow();
  connect(Timer1, &FormTimer::timer, this, &MDIFrmMAIN::timerFired);
  connect(&app().tray, &Tray::leftPressed, this, [this] {
    RefreshCommands();
    popUpMenu();
  });
}

MDIFrmMAIN::~MDIFrmMAIN() {
  app().forms.attachChild = nullptr;
}

void MDIFrmMAIN::buildCommands() {
  menuBar()->addMenu(mnuSystem);
  auto* bar = addToolBar(u"工具栏"_s);
  bar->setObjectName(u"Toolbar1"_s);
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  bar->setMovable(false);
  int digit = 0;
  for (const Command& entry : table_) {
    QAction* action = qinghe::isSeparator(entry)
                          ? mnuSystem->addSeparator()
                          : mnuSystem->addAction(iconFor(entry.name), entry.caption);
    action->setObjectName(entry.name);
    actions_[entry.name] = action;
    if (entry.neverOffered) {
      action->setEnabled(false);
      action->setVisible(false);
    }
    if (entry.run) connect(action, &QAction::triggered, this, entry.run);
    if (!entry.onToolbar || !entry.run) continue;
    bar->addAction(action);
    // Screens have their own F1. The digits as they stand on the keyboard: 0 behind 9.
    if (entry.name != u"mnuHelp") giveDigit(*action, ++digit % 10);
  }
  command(u"mnuTempExit"_s)->setShortcut(QKeySequence::Quit);
}

QAction* MDIFrmMAIN::command(const QString& name) const {
  return actions_.value(name);
}

void MDIFrmMAIN::attachChild(Form& form) {
  const QSize wish = form.size();
  auto* window = area_->addSubWindow(&form);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowIcon(QApplication::windowIcon());
  const QSize room = area_->viewport()->size() - QSize(8, 8);
  window->resize(wish.boundedTo(room).expandedTo(window->minimumSizeHint()));
  // Each a step beside the one before, and never beyond the frame.
  const auto steps = static_cast<int>((area_->subWindowList().size() - 1) % cascadeLength);
  const QSize spare = room - window->size();
  window->move(std::clamp(steps * cascadeStep, 0, std::max(0, spare.width())),
               std::clamp(steps * cascadeStep, 0, std::max(0, spare.height())));
}

void MDIFrmMAIN::RefreshCommands() {
  const qint16 mode = app().gLoginMode;
  if (mode < 0 || mode > 2) return;
  for (const Command& entry : table_) {
    const Offer offer = entry.offers[static_cast<size_t>(mode)];
    if (offer == Offer::Untouched) continue;
    command(entry.name)->setEnabled(offer == Offer::On);
  }
}

void MDIFrmMAIN::ApplyIndustryCaptions() {
  const auto apply = [this](const QString& entry, int offset) {
    QFile word(u":/strings/%1"_s.arg(app().gHayeId * 1000 + offset));
    if (word.open(QIODevice::ReadOnly)) {
      command(entry)->setText(QString::fromUtf8(word.readAll()));
    }
  };
  apply(u"mnuXimu"_s, 111);
  apply(u"mnuXimu_WEB"_s, 112);
}

void MDIFrmMAIN::popUpMenu() {
  mnuSystem->popup(QCursor::pos());
}

void MDIFrmMAIN::load() {
  AppState& state = app();
  state.gQiyeId = 0;
  state.gLoggedIn = false;
  state.gLoginMode = 0;
  TrayAdd();
  firstRun();
  state.gWebServer = u"HTTP://"_s + state.settings.text(u"WebServer"_s) + u"/"_s;
  readSettingsIntoState();
  if (state.gAutoPeer == 1) defaultInstance<frmPeer>().Timer3->setEnabled(true);
  state.inetQuotes.AccessType = state.gAccessType;
  state.inetQuotes.Proxy = state.gProxy;
  Timer1->setEnabled(true);
  show();
}

void MDIFrmMAIN::firstRun() {
  if (!app().settings.text(u"WebServer"_s).isEmpty()) return;
  defaultInstance<FrmINTERNET>().showModal();
}

void MDIFrmMAIN::timerFired() {
  Timer1->setEnabled(false);
  showLogin();
  unload<frmSplash>();
}

void MDIFrmMAIN::openHelp() {
  const QString file = QDir(app().programDirectory).filePath(u"help.chm"_s);
  if (!QFileInfo::exists(file)) {
    prompts().ask(this, {u"找不到帮助文件："_s + QDir::toNativeSeparators(file)});
  } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
    prompts().ask(this, {u"无法打开帮助文件："_s + QDir::toNativeSeparators(file)});
  }
}

bool MDIFrmMAIN::unloadScreens() {
  for (Form* form : app().forms.registry.loaded()) {
    if (form->kind() == Form::Kind::Child && !form->unload()) return false;
  }
  return true;
}

void MDIFrmMAIN::closeEvent(QCloseEvent* event) {
  // A read under way, or the first close at work, lets no second one in.
  if (app().forms.gate.isHeld()) {
    event->ignore();
    return;
  }
  if (!stopped_) {
    if (!unloadScreens()) {
      event->ignore();
      return;
    }
    stopped_ = true;
    stop();
  }
  event->accept();
}

void MDIFrmMAIN::stop() {
  Timer1->setEnabled(false);
  LogoutPortal();
  app().inetQuotes.Cancel();
  unload<frmPeer>();
  TrayRemove();
  closeWindowTitled(productTitle());
  // What is still open, such as the login or a report, goes with the frame.
  for (Form* form : app().forms.registry.loaded()) form->unload();
  QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

}  // namespace qinghe
