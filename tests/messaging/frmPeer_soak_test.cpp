#include <gtest/gtest.h>

#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

#include "messaging/PeerFixture.h"
#include "messaging/rules/peer_frame.h"
#include "messaging/rules/peer_log.h"
#include "support/resident_memory.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

constexpr int messages = 10'000;
constexpr int warmUp = 3'000;
constexpr int patience = 30'000;  // milliseconds for one answer

/// Twenty thousand rows need no disk that can be pulled out.
struct StoreInMemory {
  StoreInMemory() {
    if (QFileInfo(folder).isWritable()) qputenv("TMPDIR", folder.toLocal8Bit());
  }
  ~StoreInMemory() { qunsetenv("TMPDIR"); }
  const QString folder = u"/dev/shm"_s;
};

class PeerSoak : public StoreInMemory, public PeerFixture {};

TEST_F(PeerSoak, TenThousandMessagesBothWaysAreAllKeptOnceAndInOrderInFlatMemory) {
  const auto partner = outbound();
  screen().Timer3->setEnabled(false);
  // A log that is full already: it stays as long as it is.
  const QString old = sentLog(u"云集书社"_s, QDateTime::currentDateTime(), u"旧"_s, Road::Direct);
  screen().txtReceive(0)->prepend(old.repeated(logLimit / old.size() + 1));
  int answered = 0;
  // The partner answers each message with one of its own: more than one under way could merge.
  QObject::connect(&partner->socket(), &QTcpSocket::readyRead, &partner->socket(), [&] {
    const PeerFrame frame = readFrame(partner->socket().readAll());
    ASSERT_EQ(frame.body, u"去%1"_s.arg(answered));
    partner->send(writeFrame(77, u"云集书社"_s, u"回%1"_s.arg(answered)));
    ++answered;
  });
  int kept = 0;
  QEventLoop arrival;
  QObject::connect(&socket(0), &PeerSocket::DataArrival, &arrival, [&] {
    ++kept;
    arrival.quit();
  });
  QTimer limit;
  QObject::connect(&limit, &QTimer::timeout, &arrival, [&] { arrival.exit(1); });
  qint64 before = 0;
  for (int i = 0; i < messages; ++i) {
    if (i == warmUp) before = residentMemory();
    say(u"去%1"_s.arg(i));
    limit.start(patience);
    ASSERT_EQ(arrival.exec(), 0) << i;
    ASSERT_EQ(kept, i + 1);
  }
  const qint64 grown = residentMemory() - before;
  if (memoryCanBeMeasured) {
    EXPECT_LT(grown, 8 * 1024) << "KiB over " << messages - warmUp << " messages each way";
  }
  RecordProperty("grown_kib", static_cast<int>(grown));
  const auto table = store.rows(u"SELECT user_id,qyxx_id,content FROM XIXI ORDER BY id"_s);
  ASSERT_EQ(table.size(), 2 * messages);
  for (int i = 0; i < messages; ++i) {
    ASSERT_EQ(table[2 * i], (QVariantList{25, 77, u"去%1"_s.arg(i)})) << i;
    ASSERT_EQ(table[2 * i + 1], (QVariantList{77, 25, u"回%1"_s.arg(i)})) << i;
  }
  EXPECT_EQ(socket(0).State(), SocketState::Connected);
  EXPECT_TRUE(portal.requests().isEmpty());
}

}  // namespace
