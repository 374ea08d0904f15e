#pragma once

#include <QList>
#include <memory>

#include "forms/Form.h"
#include "forms/FormTimer.h"
#include "forms/ImageCombo.h"
#include "forms/LogBox.h"
#include "messaging/PeerSocket.h"
#include "messaging/rules/ConnectWatch.h"
#include "messaging/rules/MessageRow.h"
#include "messaging/rules/PeerList.h"
#include "messaging/rules/peer_frame.h"
#include "store/GetData.h"

class QGridLayout;
class QPushButton;

namespace qinghe {

/// "消息": talks to other enterprises, straight over TCP where a line is up and through the portal
/// otherwise, and keeps every message in `XIXI`. It is loaded once and then hidden and shown.
///
/// Slot 0 is the one outgoing line, always that of the partner looked up last. Slot 1 listens, and
/// the first who comes takes it over: nothing listens from then on until the window is loaded anew.
///
/// In its handlers a step that fails is skipped and the next one runs.
class frmPeer : public Form {
  Q_OBJECT

 public:
  frmPeer();

  /// Both throw `InvalidCall` for an index that is not there.
  PeerSocket* TcpPeer(int index) const;
  LogBox* txtReceive(int index) const;
  int socketCount() const { return static_cast<int>(sockets_.size()); }

  /// Asks the portal for `gPartnerId` and writes the answer into slot 0.
  bool LookupPartner();
  /// Leaves a message for a slot's partner with the portal.
  bool RelayMessage(int index, const QString& text);
  /// Shows and keeps all that waits at the portal.
  bool FetchRelayedMessages();
  /// Lists the slots that have a name. The last one listed is selected, whatever was before.
  void RefreshPeerList();

  ImageCombo* ImageCombo1;
  TextBox* txtSend;
  QPushButton* command1;
  QPushButton* Command2;
  FormTimer* Timer1;
  FormTimer* Timer2;
  FormTimer* Timer3;

  qint32 mPort = 0;
  qint16 mPeerCount = 0;  ///< the index that the next accepted connection takes
  ConnectWatch mConnectTicks;
  RecordsetPtr mMessages;

 protected:
  void onLoad() override;
  void onActivate() override;
  void onQueryUnload(Cancel& cancel) override;
  void onUnload() override;

 private:
  void layOut();
  void addSocket();
  void addLog();
  PeerList peers() const;

  void connectionRequest(int index, PeerRequest& request);
  void dataArrival(int index);
  void takeSender(int index, const PeerFrame& frame) const;
  int selectSender(int index);
  void takeBody(int index, int place, const QString& body);
  void error(int index);

  void send();
  void sendDirect(int index, const QString& text);
  void sendByRelay(int index, const QString& text);
  void noteSent(int index, const QString& text, Road road);
  void connectSlot0();
  void watchConnection();
  void pollInbox();

  qint16 selectedSlot() const;
  void bringToTop(int index);
  void showLog(int index);
  void setSelectedImage(bool linked);
  void addRow(const MessageRow& row);

  QList<PeerSocket*> sockets_;
  QList<LogBox*> logs_;
  QGridLayout* logPlace_;
  std::unique_ptr<GetData> store_;
  bool telling_ = false;  ///< the error box stands, and the window goes behind it
};

}  // namespace qinghe
