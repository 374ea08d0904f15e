#include "messaging/frmPeer.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "forms/Prompts.h"
#include "messaging/peer_portal.h"
#include "messaging/rules/peer_log.h"
#include "messaging/step.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 520;
constexpr int firstHeight = 480;
constexpr int logShare = 3;  // of the room, against 1 for the text being typed
constexpr int secondInterval = 1000;
constexpr int inboxInterval = 5000;

/// Connections come in here and nowhere else.
constexpr int listeningIndex = 1;

}  // namespace

frmPeer::frmPeer()
    : Form(Kind::Window, u"frmPeer"_s, u"消息"_s),
      ImageCombo1(new ImageCombo(u"ImageCombo1"_s, this)),
      txtSend(new TextBox(u"txtSend"_s, TextBox::Lines::Many, this)),
      command1(new QPushButton(u"发送(&S)"_s, this)),
      Command2(new QPushButton(u"隐藏(&H)"_s, this)),
      logPlace_(new QGridLayout) {
  command1->setObjectName(u"command1"_s);
  Command2->setObjectName(u"Command2"_s);
  layOut();
  addLog();
  logs_[0]->show();
  // Before the timers: what both held back comes in this order.
  addSocket();
  Timer1 = new FormTimer(u"Timer1"_s, secondInterval, this);
  Timer2 = new FormTimer(u"Timer2"_s, secondInterval, this);
  Timer3 = new FormTimer(u"Timer3"_s, inboxInterval, this);
  Timer1->setEnabled(true);
  Timer3->setEnabled(true);

  connect(Timer1, &FormTimer::timer, this, &frmPeer::watchConnection);
  connect(Timer2, &FormTimer::timer, this, [this] {
    step([this] { setSelectedImage(TcpPeer(0)->State() == SocketState::Connected); });
  });
  connect(Timer3, &FormTimer::timer, this, &frmPeer::pollInbox);
  connect(command1, &QPushButton::clicked, this, &frmPeer::send);
  connect(Command2, &QPushButton::clicked, this, &frmPeer::hideForm);
  connect(ImageCombo1, &ImageCombo::itemClick, this,
          [this] { step([this] { bringToTop(selectedSlot()); }); });
}

void frmPeer::layOut() {
  auto* partner = new QLabel(u"联系人(&U)："_s, this);
  partner->setBuddy(ImageCombo1);
  auto* head = new QHBoxLayout;
  head->addWidget(partner);
  head->addWidget(ImageCombo1, 1);

  txtSend->editor()->setAccessibleName(u"要发送的内容"_s);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(command1);
  buttons->addWidget(Command2);
  // The mouse leaves the cursor where the next message is typed.
  for (QPushButton* button : {command1, Command2}) button->setFocusPolicy(Qt::TabFocus);

  auto* all = new QVBoxLayout(this);
  all->addLayout(head);
  all->addLayout(logPlace_, logShare);
  all->addWidget(txtSend, 1);
  all->addLayout(buttons);
  resize(firstWidth, firstHeight);

  command1->setToolTip(u"发送 (Ctrl+Enter)"_s);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(key)), this);
    connect(shortcut, &QShortcut::activated, command1, &QPushButton::click);
  }
}

void frmPeer::addSocket() {
  const int index = socketCount();
  auto* socket = new PeerSocket(u"TcpPeer(%1)"_s.arg(index), this);
  sockets_.append(socket);
  connect(socket, &PeerSocket::ConnectionRequest, this,
          [this, index](PeerRequest& request) { connectionRequest(index, request); });
  connect(socket, &PeerSocket::DataArrival, this, [this, index] { dataArrival(index); });
  connect(socket, &PeerSocket::Error, this, [this, index] { error(index); });
}

void frmPeer::addLog() {
  auto* log = new LogBox(u"txtReceive(%1)"_s.arg(logs_.size()), logLimit, this);
  log->editor()->setAccessibleName(u"消息记录"_s);
  log->hide();
  logPlace_->addWidget(log, 0, 0);
  logs_.append(log);
  if (logs_.size() == 1) {
    setTabOrder(ImageCombo1, log->editor());
  } else {
    setTabOrder(logs_[logs_.size() - 2]->editor(), log->editor());
  }
  setTabOrder(log->editor(), txtSend->editor());
}

PeerSocket* frmPeer::TcpPeer(int index) const {
  if (index < 0 || index >= sockets_.size()) throw InvalidCall(u"TcpPeer(%1)"_s.arg(index));
  return sockets_[index];
}

LogBox* frmPeer::txtReceive(int index) const {
  if (index < 0 || index >= logs_.size()) throw InvalidCall(u"txtReceive(%1)"_s.arg(index));
  return logs_[index];
}

PeerList frmPeer::peers() const {
  return PeerList(app().gPeers);
}

void frmPeer::onLoad() {
  mPort = app().peerPort;
  mPeerCount = 1;
  Timer1->setEnabled(false);
  step([this] {
    store_ = std::make_unique<GetData>(app().store);
    mMessages = store_->GetXIXI(u"SELECT * FROM XIXI"_s);
  });
  peers().resize(listeningIndex);
  addSocket();
  addLog();
  txtSend->editor()->setFocus();
  step([this] {
    PeerSocket* listening = TcpPeer(listeningIndex);
    listening->LocalAddress = app().peerAddress;
    listening->LocalPort = mPort;
    listening->Listen();
  });
}

void frmPeer::onActivate() {
  showLog(0);
  const qint32 partner = app().gPartnerId;
  bool isInbound = false;
  step([&] { isInbound = partner != 0 && peers().isInbound(partner, socketCount()); });
  if (partner != 0 && !isInbound) {
    step([this] {
      if (!LookupPartner() || !peers().at(0).online) return;
      if (TcpPeer(0)->State() != SocketState::Connected) connectSlot0();
    });
  }
  RefreshPeerList();
}

void frmPeer::connectSlot0() {
  step([this] { TcpPeer(0)->RemoteHost = peers().at(0).ipurl; });
  step([this] { TcpPeer(0)->RemotePort = peers().at(0).port; });
  step([this] { TcpPeer(0)->Connect(); });
  Timer1->setEnabled(true);
}

bool frmPeer::LookupPartner() {
  return readPartner(app().gPartnerId, mPort, peers().at(0));
}

bool frmPeer::RelayMessage(int index, const QString& text) {
  const PeerEntry& peer = peers().at(index);
  return leaveMessage({peer.qyxx_id, peer.qyxx}, text);
}

bool frmPeer::FetchRelayedMessages() {
  return readInbox([this](const RelayedMessage& message) {
    txtReceive(0)->prepend(
        receivedLog(message.sender.name, message.dtime, message.content, Road::Relay));
    MessageRow row = messageRow(ownParty(), message.sender, message.content, Road::Relay);
    row.dtime = message.dtime;
    addRow(row);
  });
}

void frmPeer::RefreshPeerList() {
  QList<SocketState> states;
  for (const PeerSocket* socket : sockets_) states.append(socket->State());
  ImageCombo1->clearItems();
  step([&] {
    for (const PeerItem& item : peers().refresh(states)) {
      ImageCombo1->add(item.key, item.text, item.image);
      ImageCombo1->setSelectedRow(ImageCombo1->itemCount() - 1);
    }
  });
}

void frmPeer::watchConnection() {
  if (isLeaving()) return;
  const ConnectWatch::Verdict verdict = mConnectTicks.tick(TcpPeer(0)->State());
  if (verdict == ConnectWatch::Verdict::Wait) return;
  const bool linked = verdict == ConnectWatch::Verdict::SayHello;
  step([&] {
    if (linked) {
      TcpPeer(0)->SendData(writeFrame(app().gQiyeId, app().gUserName, helloBody.toString()));
    } else {
      TcpPeer(0)->Close();
    }
  });
  step([&] { setSelectedImage(linked); });
  Timer1->setEnabled(false);
}

void frmPeer::pollInbox() {
  if (isLeaving() || app().gQiyeId == 0) return;
  if (FetchRelayedMessages()) showForm();
  Timer3->setEnabled(false);
}

void frmPeer::connectionRequest(int index, PeerRequest& request) {
  if (isLeaving() || index != listeningIndex) return;
  const int taken = mPeerCount;
  if (taken > 1) {
    addSocket();
    step([&] { TcpPeer(taken)->LocalPort = 0; });
    peers().resize(taken);
    addLog();
    step([&] { txtReceive(taken)->show(); });
  }
  step([&] {
    if (TcpPeer(taken)->State() > SocketState::Closed) TcpPeer(taken)->Close();
  });
  step([&] { TcpPeer(taken)->Accept(request); });
  step([&] {
    PeerEntry& peer = peers().at(taken);
    peer.ipurl = TcpPeer(taken)->RemoteHost;
    peer.port = TcpPeer(taken)->RemotePort;
    peer.online = false;
  });
  ++mPeerCount;
}

void frmPeer::dataArrival(int index) {
  if (isLeaving()) return;
  PeerFrame frame;
  step([&] { frame = readFrame(TcpPeer(index)->GetData()); });
  step([&] { takeSender(index, frame); });
  showLog(index);
  int place = 0;
  step([&] { place = selectSender(index); });
  if (!frame.body.isEmpty()) takeBody(index, place, frame.body);
  showForm();
}

void frmPeer::takeSender(int index, const PeerFrame& frame) const {
  PeerEntry& peer = peers().at(index);
  if (frame.id) peer.qyxx_id = *frame.id;
  if (frame.name) peer.qyxx = *frame.name;
}

int frmPeer::selectSender(int index) {
  const int place = placeOfKey(ImageCombo1->keys(), peers().at(index).qyxx_id);
  if (place <= ImageCombo1->itemCount()) ImageCombo1->setSelectedRow(place - 1);
  return place;
}

void frmPeer::takeBody(int index, int place, const QString& body) {
  if (body == helloBody) {
    RefreshPeerList();
  } else if (body == goodbyeBody) {
    // The place in the chooser is taken for a socket's index, which it is only by chance.
    step([&] { TcpPeer(place)->Close(); });
    step([&] { peers().at(place).online = false; });
    RefreshPeerList();
  } else {
    step([&] {
      txtReceive(index)->prepend(
          receivedLog(peers().at(index).qyxx, QDateTime::currentDateTime(), body, Road::Direct));
    });
    step([&] {
      const PeerEntry& sender = peers().at(index);
      addRow(messageRow(ownParty(), {sender.qyxx_id, sender.qyxx}, body, Road::Direct));
    });
  }
}

void frmPeer::error(int index) {
  if (isLeaving()) return;
  step([&] { TcpPeer(index)->Close(); });
  step([&] { peers().at(index).online = false; });
  if (telling_) return;
  telling_ = true;
  const QPointer<frmPeer> self(this);
  prompts().ask(isVisible() ? this : nullptr, {u"网络访问错误"_s});
  if (self != nullptr) unload();
}

void frmPeer::send() {
  if (isLeaving()) return;
  const QString text = txtSend->text();
  if (text.isEmpty()) return;
  int index = 0;
  step([&] { index = selectedSlot(); });
  bool isLinked = false;
  step([&] { isLinked = TcpPeer(index)->State() == SocketState::Connected; });
  if (isLinked) {
    sendDirect(index, text);
  } else {
    sendByRelay(index, text);
  }
  showLog(index);
  txtSend->setText({});
}

void frmPeer::sendDirect(int index, const QString& text) {
  step([&] { TcpPeer(index)->SendData(writeFrame(app().gQiyeId, app().gUserName, text)); });
  noteSent(index, text, Road::Direct);
}

void frmPeer::sendByRelay(int index, const QString& text) {
  step([&] { RelayMessage(index, text); });
  noteSent(index, text, Road::Relay);
  // Always the outgoing line, also when the message was for another slot.
  connectSlot0();
}

void frmPeer::noteSent(int index, const QString& text, Road road) {
  Party partner;
  step([&] { partner = {peers().at(index).qyxx_id, peers().at(index).qyxx}; });
  step([&] {
    const QString entry = sentLog(partner.name, QDateTime::currentDateTime(), text, road);
    txtReceive(index)->prepend(entry);
  });
  step([&] { addRow(messageRow(partner, ownParty(), text, road)); });
}

qint16 frmPeer::selectedSlot() const {
  const int row = ImageCombo1->selectedRow();
  if (row < 0) throw InvalidCall(u"SelectedItem"_s);
  return slotOfKey(ImageCombo1->key(row));
}

void frmPeer::bringToTop(int index) {
  txtReceive(index)->raise();
}

void frmPeer::showLog(int index) {
  step([&] {
    txtReceive(index)->show();
    bringToTop(index);
  });
}

void frmPeer::setSelectedImage(bool linked) {
  const int row = ImageCombo1->selectedRow();
  if (row < 0) throw InvalidCall(u"SelectedItem"_s);
  ImageCombo1->setImage(row, linkImage(linked));
}

void frmPeer::addRow(const MessageRow& row) {
  if (mMessages == nullptr) throw InvalidCall(u"XIXI"_s);
  mMessages->AddNew();
  for (const auto& [field, value] : row.fields()) mMessages->setValue(field, value);
  mMessages->Update();
}

void frmPeer::onQueryUnload(Cancel& /*cancel*/) {
  const QByteArray goodbye = writeFrame(app().gQiyeId, app().gUserName, goodbyeBody.toString());
  for (PeerSocket* socket : std::as_const(sockets_)) {
    if (socket->State() == SocketState::Connected) step([&] { socket->SendData(goodbye); });
    step([&] { socket->Close(); });
  }
}

void frmPeer::onUnload() {
  mMessages.reset();
  store_.reset();
}

}  // namespace qinghe
