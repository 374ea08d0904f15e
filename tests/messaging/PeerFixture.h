#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include "messaging/RawPeer.h"
#include "messaging/free_port.h"
#include "messaging/frmPeer.h"
#include "portal/url_encode.h"
#include "support/ClientFixture.h"
#include "values/code_page.h"
#include "values/dates.h"

namespace qinghe {

/// The messenger of company 25, 青禾书店, at 127.0.0.1 and a port of its own. Partners live at
/// 127.0.0.2 and the same port.
class PeerFixture : public ClientFixture {
 protected:
  PeerFixture() : usualPort(state.peerPort) {
    beCompany(1, 1);
    state.peerPort = freePort();
    state.peerAddress = QStringLiteral("127.0.0.1");
    portal.answerWith({page({})});
  }

  /// Its inbox is not read by itself, however long a test takes on a busy machine.
  frmPeer& screen() {
    auto& form = defaultInstance<frmPeer>();
    if (form.Timer3->interval() == usualInboxInterval) form.Timer3->setInterval(never);
    return form;
  }
  PeerSocket& socket(int index) { return *screen().TcpPeer(index); }
  QString log(int index) { return screen().txtReceive(index)->text(); }

  /// Somebody who has connected to this messenger and was let in.
  std::unique_ptr<RawPeer> inbound() {
    screen();
    auto peer = std::make_unique<RawPeer>();
    EXPECT_TRUE(peer->connectTo(state.peerPort));
    EXPECT_TRUE(waitFor([this] { return screen().mPeerCount == 2; }));
    return peer;
  }

  /// What a portal answers about the partner at 127.0.0.2.
  QByteArray partnerPage(const QString& name = QStringLiteral("云集书社"),
                         const QString& online = QStringLiteral("True")) {
    return page({{name, QStringLiteral("127.0.0.2"), online}});
  }

  /// Slot 0 with a line up to the partner 77, greeted.
  std::unique_ptr<RawPeer> outbound() {
    RawListener listener(state.peerPort);
    portal.answerWith({partnerPage()});
    state.gPartnerId = 77;
    screen().Timer1->setInterval(never);
    screen().showForm();
    auto peer = listener.take();
    EXPECT_NE(peer, nullptr);
    findLineUp();
    EXPECT_TRUE(peer->gets(frame(QStringLiteral("LINK"))));
    screen().Timer1->setInterval(1000);
    portal.clear();
    return peer;
  }

  /// The tick at which slot 0 is connected.
  void findLineUp() {
    EXPECT_TRUE(becomes(0, SocketState::Connected));
    emit screen().Timer1->timer();
  }

  /// A frame as this company writes it.
  static QByteArray frame(const QString& body) {
    return toCodePage(QStringLiteral("25@青禾书店,") + body);
  }

  void type(const QString& text) { screen().txtSend->setText(text); }
  void clickSend() { QTest::mouseClick(screen().command1, Qt::LeftButton); }
  void say(const QString& text) {
    type(text);
    clickSend();
  }

  /// Whether the log's newest entry is `head`, the date and time of now, and `behind`, on top of
  /// `rest`.
  testing::AssertionResult onTop(int slot, const QString& head, const QString& behind,
                                 const QString& rest = {}) {
    const QString lineBreak = QStringLiteral("\r\n");
    const QString shown = log(slot);
    const QString line = shown.section(lineBreak, 1, 1);
    const auto when = readDate(line);
    const QDateTime now = QDateTime::currentDateTime();
    const QDateTime wall(now.date(), now.time(), Qt::UTC);
    if (!when || qAbs(when->secsTo(wall)) > 60) {
      return testing::AssertionFailure() << "no date of now in " << shown.toStdString();
    }
    const QString expected = head + lineBreak + line + lineBreak + behind + rest;
    if (shown == expected) return testing::AssertionSuccess();
    return testing::AssertionFailure() << shown.toStdString() << "\nand not\n"
                                       << expected.toStdString();
  }

  /// The chooser's lines as "key|text|image", the selected one with a star.
  QStringList chooser() {
    QStringList result;
    const ImageCombo& combo = *screen().ImageCombo1;
    for (int row = 0; row < combo.itemCount(); ++row) {
      const QString star = row == combo.selectedRow() ? QStringLiteral("*") : QString();
      result.append(QStringList{combo.key(row), combo.text(row), combo.image(row)}.join(u'|') +
                    star);
    }
    return result;
  }

  /// The table's rows as "qyxx_id|user_id|qyxx|UserName|content".
  QStringList rows() const {
    QStringList result;
    const QString sql =
        QStringLiteral("SELECT qyxx_id,user_id,qyxx,UserName,content FROM XIXI ORDER BY id");
    for (const QVariantList& row : store.rows(sql)) {
      QStringList cells;
      for (const QVariant& cell : row) cells.append(cell.toString());
      result.append(cells.join(u'|'));
    }
    return result;
  }
  bool comeRows(int count) {
    const QString sql = QStringLiteral("SELECT count(*) FROM XIXI");
    return waitFor([&] { return store.value(sql).toInt() >= count; });
  }
  bool becomes(int index, SocketState wanted) {
    return waitFor([&] { return socket(index).State() == wanted; });
  }

  /// Whether this slot's log is the one to be seen.
  bool isOnTop(int index) {
    const LogBox* box = screen().txtReceive(index);
    const QWidget* seen = screen().childAt(box->geometry().center());
    return seen != nullptr && (seen == box || box->isAncestorOf(seen));
  }

  static constexpr int usualInboxInterval = 5000;
  static constexpr int never = 3'600'000;
  const qint32 usualPort;
};

}  // namespace qinghe
