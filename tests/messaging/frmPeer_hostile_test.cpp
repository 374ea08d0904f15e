#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTimer>
#include <algorithm>

#include "messaging/PeerFixture.h"
#include "messaging/rules/peer_log.h"
#include "support/cpu_time.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PeerHostile : public PeerFixture {
 protected:
  /// From now on, behind the window's own handler.
  void countArrivals() {
    QObject::connect(&socket(1), &PeerSocket::DataArrival, &socket(1), [this](qint64 total) {
      arrived += total;
      largest = qMax(largest, total);
    });
  }
  qint64 arrived = 0;
  qint64 largest = 0;

  /// The most milliseconds of work for which the window did nothing else.
  double longestPauseWhile(const std::function<bool()>& done) {
    double since = workedMilliseconds();
    double longest = 0;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] {
      longest = qMax(longest, workedMilliseconds() - since);
      since = workedMilliseconds();
    });
    ticks.start(10);
    EXPECT_TRUE(QTest::qWaitFor(done, 60'000));
    return longest;
  }
};

TEST_F(PeerHostile, AFloodOfFramesNeitherBlocksTheWindowNorGrowsItsLogBeyondTheLimit) {
  const auto peer = inbound();
  const QByteArray message = "77@Li," + QByteArray(20'000, 'x') + "\r\n";
  const qint64 total = qint64{6} << 20;
  qint64 sent = 0;
  countArrivals();
  const auto feed = [&] {
    while (sent < total && peer->socket().bytesToWrite() < 500'000) {
      peer->send(message);
      sent += message.size();
    }
  };
  QObject::connect(&peer->socket(), &QTcpSocket::bytesWritten, &peer->socket(), feed);
  feed();
  const double pause = longestPauseWhile([&] { return sent >= total && arrived == sent; });
  EXPECT_LT(pause, 2000);
  auto* memo = qobject_cast<QPlainTextEdit*>(screen().txtReceive(1)->editor());
  EXPECT_LE(memo->document()->characterCount(), logLimit + 1);
  EXPECT_EQ(socket(1).State(), SocketState::Connected);
}

TEST_F(PeerHostile, AMegabyteInOneWriteIsReadInBoundedPieces) {
  const auto peer = inbound();
  countArrivals();
  const QByteArray whole = "77@Li," + QByteArray(qsizetype{1} << 20, 'x');
  peer->send(whole);
  ASSERT_TRUE(waitFor([&] { return arrived == whole.size(); }));
  EXPECT_LE(largest, frameLimit);
  ASSERT_EQ(rows().size(), 1) << "the other pieces are no frames";
  EXPECT_LE(store.value(u"SELECT length(content) FROM XIXI"_s).toInt(), frameLimit - 6);
}

TEST_F(PeerHostile, EveryByteValueIsSurvived) {
  const auto peer = inbound();
  QByteArray all;
  for (int byte = 0; byte < 256; ++byte) all.append(static_cast<char>(byte));
  peer->send("77@Li," + all + all);
  ASSERT_TRUE(comeRows(1));
  EXPECT_FALSE(rows()[0].contains(QChar(QChar::ReplacementCharacter)));
  EXPECT_TRUE(rows()[0].contains(u'?'));
}

TEST_F(PeerHostile, ANameOfManyLinesStaysOneLineInTheChooser) {
  const auto peer = inbound();
  peer->send("77@" + QByteArray("line\r\n").repeated(5000) + ",LINK");
  ASSERT_TRUE(waitFor([this] { return screen().ImageCombo1->itemCount() == 1; }));
  EXPECT_LE(screen().ImageCombo1->itemText(0).size(), 100);
  EXPECT_FALSE(screen().ImageCombo1->itemText(0).contains(u'\n'));
  EXPECT_EQ(screen().ImageCombo1->text(0).size(), 30'000);
  EXPECT_LT(screen().ImageCombo1->sizeHint().width(), 800);
}

TEST_F(PeerHostile, AnEndlessRunOfEmptyLinesIsBounded) {
  frmPeer& form = screen();
  const QString lines = QString(u"\r\n"_s).repeated(30'000);
  for (int i = 0; i < 12; ++i) form.txtReceive(0)->prepend(lines);
  auto* memo = qobject_cast<QPlainTextEdit*>(form.txtReceive(0)->editor());
  EXPECT_LE(memo->blockCount(), 200'000);
}

TEST_F(PeerHostile, AHalfOpenConnectionTakesTheOneSlotAndHindersNothingElse) {
  const auto silent = inbound();
  const auto partner = outbound();
  say(u"hi"_s);
  EXPECT_TRUE(partner->gets(frame(u"hi"_s)));
  ASSERT_TRUE(unload<frmPeer>());
  EXPECT_EQ(socket(1).State(), SocketState::Listening);
}

TEST_F(PeerHostile, AFloodOfConnectionsIsLetInOnce) {
  screen();
  std::vector<std::unique_ptr<RawPeer>> crowd;
  for (int i = 0; i < 200; ++i) {
    crowd.push_back(std::make_unique<RawPeer>());
    crowd.back()->socket().connectToHost(u"127.0.0.1"_s, static_cast<quint16>(state.peerPort));
  }
  const auto onlyOneIsUp = [&] {
    int up = 0;
    for (const auto& one : crowd) up += one->isUp() ? 1 : 0;
    const bool settled = std::none_of(crowd.begin(), crowd.end(), [](const auto& one) {
      return one->socket().state() == QAbstractSocket::ConnectingState;
    });
    return settled && up == 1;
  };
  ASSERT_TRUE(waitFor(onlyOneIsUp));
  EXPECT_EQ(screen().socketCount(), 2);
  EXPECT_EQ(screen().mPeerCount, 2);
}

TEST_F(PeerHostile, TheLogKeepsTheNewestAndTheTableKeepsAll) {
  const auto peer = inbound();
  const QByteArray filler(60'000, 'x');
  const int count = 20;
  for (int i = 0; i < count; ++i) {
    peer->send("77@Li," + QByteArray::number(i) + ":" + filler);
    ASSERT_TRUE(comeRows(i + 1)) << i;
  }
  EXPECT_EQ(store.value(u"SELECT count(*) FROM XIXI WHERE length(content)>60000"_s).toInt(), count);
  EXPECT_TRUE(log(1).contains(u"\r\n19:xxx"_s));
  EXPECT_FALSE(log(1).contains(u"\r\n0:xxx"_s));
  EXPECT_LE(log(1).size(), logLimit + 1000);
}

TEST_F(PeerHostile, AStoreThatCannotBeWrittenLosesOnlyTheRow) {
  const auto peer = inbound();
  store.exec(
      u"CREATE TRIGGER no BEFORE INSERT ON XIXI BEGIN SELECT RAISE(ABORT,'disk full'); END"_s);
  peer->send("77@Li,one");
  ASSERT_TRUE(waitFor([this] { return !log(1).isEmpty(); }));
  EXPECT_TRUE(rows().isEmpty());
  store.exec(u"DROP TRIGGER no"_s);
  peer->send("77@Li,two");
  ASSERT_TRUE(comeRows(1));
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|Li|two"_s});
  EXPECT_TRUE(boxes->asked.isEmpty());
}

}  // namespace
