#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <memory>

#include "forms/FormsState.h"
#include "portal/GetHtml.h"
#include "portal/Inet.h"
#include "portal/PortalState.h"
#include "shell/CalculatorOperands.h"
#include "shell/LinkMonitor.h"
#include "shell/PeerEntry.h"
#include "shell/Settings.h"
#include "shell/Tray.h"
#include "store/GetData.h"

namespace qinghe {

/// The application's state, one for the whole program, and afresh in each test. The names beginning
/// with "g" are the variables that screens share; the rest is what they stand on.
struct AppState : PortalState {
 private:
  // Makes this state the living one, before anything else of it lives and until all of it is gone.
  struct Seat {
    explicit Seat(AppState& state);
    ~Seat();
    AppState* previous;
  } seat_{*this};

 public:
  AppState();
  ~AppState();
  AppState(const AppState&) = delete;
  AppState& operator=(const AppState&) = delete;

  bool gLoggedIn = false;
  qint16 gAutoDial = 0;
  qint16 gAutoPeer = 0;
  qint16 gAccessType = 0;
  QString gProxy;
  qint16 gLoginMode = 0;  ///< 0 nobody, 1 online, 2 local only
  qint16 gShxiKind = 0;
  qint16 gPageSize = 0;
  qint16 gViewPict = 0;
  qint16 gHayeId = 0;
  QString gHayeName;
  qint16 gQiyeId = 0;   ///< the enterprise's id on the portal, 0 for none
  qint16 gLocalId = 0;  ///< the id of its row in the local `QYXX`
  QString gUserNo;
  QString gUserName;
  qint16 gUserLevel = 0;  ///< 0 free, 1 formal, 2 VIP
  qint32 gPartnerId = 0;  ///< the enterprise that the next screen is about
  QString gPartnerName;
  double gShenId = 0;            ///< the province chosen last, whose cities `frmGetAREA` lists
  qint32 gCurrentOrderId = 0;    ///< the order that the next order screen opens, 0 for a new one
  qint32 gRetailOrderId = 0;     ///< the retail order that the next screen opens
  qint32 gGoodsId = 0;           ///< the goods item that the next detail screen shows
  qint32 gBrandId = 0;           ///< the brand of the row that the goods search stands on
  qint32 gChosenProducerId = 0;  ///< the brand that the next detail screen shows; nobody sets it
  QList<PeerEntry> gPeers;       ///< the messenger's slots, one for each of its sockets

  qint32 peerPort = 8088;  ///< where the messenger listens, and where it looks for every partner
  QString peerAddress;     ///< the one address it listens at; empty for all of the machine

  std::function<void()> openHelp;          ///< shows the help window; set by the main window
  std::function<void()> openRegistration;  ///< shows `FrmRegister_OK`; set by the main window

  CalculatorOperands calculator;

  QString programDirectory;  ///< where `DATA.MDB` and the help file lie
  Settings settings;
  Inet inetQuotes;
  std::unique_ptr<LinkMonitor> links;  ///< the machine's network links
  std::unique_ptr<Dialer> dialer;
  std::unique_ptr<StoreHost> storeHost;
  StoreState store;
  FormsState forms;
  Tray tray;
};

/// The living application state.
AppState& app();

/// The product's title, which is also the main window's.
QString productTitle();

/// The program's version; the login tells the first two numbers.
struct Version {
  int major, minor, revision;
};
Version programVersion();
/// "版本 1.0.0", as the little windows of start-up show it.
QString versionText();

}  // namespace qinghe
