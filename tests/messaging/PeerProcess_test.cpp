#include <gtest/gtest.h>

#include <QProcess>

#include "messaging/PeerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// Company 77, 云集书社, with its messenger in another process at 127.0.0.2.
class SecondMessenger {
 public:
  void start(const QString& portal, int port) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(
        QStringLiteral(QINGHE_SECOND_MESSENGER),
        {store.directory(), portal, u"127.0.0.2"_s, QString::number(port), u"77"_s, u"云集书社"_s});
    ASSERT_TRUE(process_.waitForStarted());
    ASSERT_TRUE(says(u"ready"_s));
  }
  ~SecondMessenger() {
    process_.kill();
    process_.waitForFinished();
  }

  /// Sends a line and waits until it has been obeyed.
  bool tell(const QString& line) {
    process_.write(line.toUtf8() + '\n');
    return says(u"done"_s);
  }
  bool says(const QString& line) {
    return waitFor([&] {
      while (process_.canReadLine())
        lines_.append(QString::fromUtf8(process_.readLine()).trimmed());
      return lines_.removeOne(line);
    });
  }
  /// Whether it comes to list this partner.
  bool lists(const QString& item) {
    return waitFor([&] { return tell(u"list"_s) && lines_.removeAll(u"listed "_s + item) > 0; });
  }
  bool ends() {
    process_.write("quit\n");
    return process_.waitForFinished(peerPatience) && process_.exitCode() == 0;
  }
  void kill() {
    process_.kill();
    process_.waitForFinished();
  }
  QStringList unreadLines() const { return lines_; }

  TempStore store;

 private:
  QProcess process_;
  QStringList lines_;
};

class TwoMessengers : public PeerFixture {
 protected:
  TwoMessengers() {
    // The directory of both: who is where. Everything else is taken as it comes.
    portal.setHandler([](const QByteArray& request) {
      QList<QStringList> rows{{u"1"_s}};
      if (request.contains("STOTHER=%49%44%3D%32%35")) {
        rows = {{u"青禾书店"_s, u"127.0.0.1"_s, u"True"_s}};
      } else if (request.contains("STOTHER=%49%44%3D%37%37")) {
        rows = {{u"云集书社"_s, u"127.0.0.2"_s, u"True"_s}};
      }
      return ScriptedServer::Reply{.bytes = ScriptedServer::ok(ScriptedServer::table(rows))};
    });
    screen().Timer3->setEnabled(false);
    second.start(portal.host(), state.peerPort);
  }

  static int count(const TempStore& table) {
    return table.value(u"SELECT count(*) FROM XIXI"_s).toInt();
  }
  static QStringList contents(const TempStore& table, const QString& condition) {
    QStringList result;
    const QString sql = u"SELECT content FROM XIXI WHERE %1 ORDER BY id"_s.arg(condition);
    for (const QVariantList& row : table.rows(sql)) result.append(row[0].toString());
    return result;
  }

  /// Looks the other up, connects and greets it.
  void connectToSecond() {
    state.gPartnerId = 77;
    screen().Timer1->setInterval(100);
    screen().showForm();
    ASSERT_TRUE(waitFor([this] { return chooser() == connected; }));
    // What is sent before the greeting has been read would be read as a part of it.
    ASSERT_TRUE(second.lists(u"1 ID|青禾书店"_s));
    screen().Timer1->setInterval(1000);
  }
  const QStringList connected{u"0 ID|云集书社|LK*"_s};

  SecondMessenger second;
};

TEST_F(TwoMessengers, TalkBothWaysAndEachKeepsTheWholeConversation) {
  connectToSecond();
  QStringList said;
  QStringList answered;
  for (int i = 0; i < 25; ++i) {
    said.append(u"第%1句，你好"_s.arg(i));
    say(said.last());
    ASSERT_TRUE(waitFor([&] { return count(second.store) == 2 * i + 1; })) << i;
    answered.append(u"答%1"_s.arg(i));
    ASSERT_TRUE(second.tell(u"say "_s + answered.last()));
    ASSERT_TRUE(comeRows(2 * i + 2)) << i;
  }
  EXPECT_EQ(contents(store, u"user_id=25 AND qyxx_id=77"_s), said);
  EXPECT_EQ(contents(store, u"user_id=77 AND qyxx_id=25"_s), answered);
  EXPECT_EQ(contents(second.store, u"user_id=25 AND qyxx_id=77"_s), said);
  EXPECT_EQ(contents(second.store, u"user_id=77 AND qyxx_id=25"_s), answered);
  EXPECT_EQ(second.store.value(u"SELECT UserName FROM XIXI WHERE user_id=25"_s), u"青禾书店"_s);
  EXPECT_EQ(second.store.value(u"SELECT qyxx FROM XIXI WHERE user_id=25"_s), u"云集书社"_s);
}

TEST_F(TwoMessengers, WhenOneEndsTheOtherRelaysAndSaysThatNobodyAnswers) {
  connectToSecond();
  ASSERT_TRUE(second.ends());
  ASSERT_TRUE(waitFor([this] { return socket(0).State() != SocketState::Connected; }));
  EXPECT_TRUE(isLoaded<frmPeer>());
  EXPECT_TRUE(rows().isEmpty()) << "a goodbye is no message";
  boxes->expect(Answer::Ok);
  say(u"还在吗"_s);
  EXPECT_EQ(rows(), QStringList{u"77|25|云集书社|青禾书店|（由服务器中转）还在吗"_s});
  ASSERT_TRUE(waitFor([] { return !isLoaded<frmPeer>(); }));
  EXPECT_EQ(boxes->texts(), QStringList{u"网络访问错误"_s});
}

TEST_F(TwoMessengers, WhenOneIsKilledTheOtherGoesOn) {
  connectToSecond();
  second.kill();
  ASSERT_TRUE(waitFor([this] { return socket(0).State() != SocketState::Connected; }));
  EXPECT_TRUE(isLoaded<frmPeer>());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(TwoMessengers, EachCanCallTheOtherAtTheSameTime) {
  connectToSecond();
  // The other looks for a line of its own: it knows the caller as inbound and looks no further.
  portal.clear();
  ASSERT_TRUE(second.tell(u"show 25"_s));
  EXPECT_TRUE(portal.requests().isEmpty());
  ASSERT_TRUE(second.tell(u"say 你好"_s));
  ASSERT_TRUE(comeRows(1));
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|云集书社|你好"_s});
  EXPECT_TRUE(onTop(0, u"接收：云集书社"_s, u"你好\r\n\r\n"_s));
}

TEST_F(TwoMessengers, TheGoodbyeOfAClosingWindowReachesTheOther) {
  connectToSecond();
  ASSERT_TRUE(second.tell(u"show 0"_s));
  ASSERT_TRUE(unload<frmPeer>());
  // With the line gone the other's next message goes through the portal.
  EXPECT_TRUE(waitFor([this] {
    second.tell(u"say 人呢"_s);
    return !contents(second.store, u"content LIKE '（由服务器中转）%'"_s).isEmpty();
  }));
}

}  // namespace
