#include "store/GetData.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QStringList>

#include "store/StoreHost.h"
#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

struct Ended {};

/// The program around the store: answers the open dialog in turn and records the rest.
class FakeHost : public StoreHost {
 public:
  explicit FakeHost(QString directory) : directory_(std::move(directory)) {}
  ~FakeHost() override { EXPECT_TRUE(answers.isEmpty()) << "an answer was not used"; }

  QString programDirectory() const override { return directory_; }
  QString databaseSetting() const override { return setting; }
  void setDatabaseSetting(const QString& path) override { setting = path; }
  void removeDatabaseSetting() override {
    setting.clear();
    ++removals;
  }
  QString askForFile(const QString& fileName) override {
    asked.append(fileName);
    if (answers.isEmpty()) throw Failure(32755, u"已取消"_s);
    return answers.takeFirst();
  }
  void showMessage(const QString& text) override { messages.append(text); }
  [[noreturn]] void endProgram(const QString& title, const QString& text) override {
    ended = title + u'|' + text;
    throw Ended();
  }

  QString setting;
  QStringList answers;
  QStringList asked;
  QStringList messages;
  QString ended;
  int removals = 0;

 private:
  QString directory_;
};

struct Program {
  explicit Program(const QString& directory) : host(directory) {
    state.host = &host;
    state.busyTimeout = std::chrono::milliseconds(20);
  }
  FakeHost host;
  StoreState state;
};

TEST(GetData, FirstObjectOpensTwoConnectionsAndTheSecondNone) {
  const TempStore store;
  Program program(store.directory());
  const GetData first(program.state);
  const auto plain = program.state.gConn;
  const auto shape = program.state.gShapeConn;
  ASSERT_TRUE(plain);
  ASSERT_TRUE(shape);
  EXPECT_NE(plain, shape);
  EXPECT_EQ(plain->path(), store.path());
  const GetData second(program.state);
  EXPECT_EQ(program.state.gConn, plain);
  EXPECT_EQ(program.state.gShapeConn, shape);
  EXPECT_EQ(program.state.gDataUsers, 2);
  EXPECT_TRUE(program.host.messages.isEmpty());
  EXPECT_EQ(program.host.removals, 0);
}

TEST(GetData, ObjectAfterTheLastOneIsGoneOpensBothConnectionsAnew) {
  const TempStore store;
  Program program(store.directory());
  { const GetData first(program.state); }
  EXPECT_EQ(program.state.gDataUsers, 0);
  const auto plain = program.state.gConn;
  const auto shape = program.state.gShapeConn;
  EXPECT_TRUE(plain) << "connections live on without an object";
  const GetData second(program.state);
  EXPECT_NE(program.state.gConn, plain);
  EXPECT_NE(program.state.gShapeConn, shape);
}

TEST(GetData, SetsOutliveTheConnectionTheyWereOpenedOn) {
  const TempStore store;
  store.exec(u"INSERT INTO XIMU (XIMU) VALUES ('书')"_s);
  Program program(store.directory());
  RecordsetPtr goods;
  {
    GetData first(program.state);
    goods = first.GetXIMU(u"SELECT * FROM XIMU"_s);
  }
  const GetData second(program.state);
  EXPECT_EQ(goods->text(u"XIMU"_s), u"书"_s);
}

TEST(GetData, MissingFileBringsTheDialogTwiceAndKeepsTheChosenPath) {
  const TempStore elsewhere;
  const QTemporaryDir folder;
  Program program(folder.path());
  program.host.setting = u"/old/DATA.MDB"_s;
  program.host.answers = {u"  "_s + elsewhere.path() + u" "_s, elsewhere.path()};
  GetData data(program.state);
  EXPECT_EQ(program.host.asked, (QStringList{u"DATA.MDB"_s, u"DATA.MDB"_s}));
  EXPECT_EQ(program.host.messages, (QStringList{elsewhere.path(), elsewhere.path()}));
  EXPECT_EQ(program.host.setting, elsewhere.path());
  EXPECT_EQ(program.host.removals, 2);
  EXPECT_EQ(data.GetQYXX(u"SELECT *  FROM QYXX "_s)->RecordCount(), 0);
  EXPECT_FALSE(QFile::exists(folder.filePath(u"DATA.MDB"_s)));
}

TEST(GetData, CancelledDialogEndsTheProgramWithTheFailuresWords) {
  const QTemporaryDir folder;
  Program program(folder.path());
  EXPECT_THROW(GetData data(program.state), Ended);
  EXPECT_EQ(program.host.ended, u"服务器启动错误|已取消 - 32755"_s);
  EXPECT_EQ(program.state.gDataUsers, 0);
}

TEST(GetData, FileOfAnotherNameIsRefusedAndTheDialogReturns) {
  const TempStore elsewhere;
  const QTemporaryDir folder;
  const QString lower = elsewhere.directory() + u"/my-data.mdb"_s;
  ASSERT_TRUE(QFile::copy(elsewhere.path(), lower));
  Program program(folder.path());
  program.host.answers = {u"/x/OTHER.MDB"_s, u"MDB"_s, lower, lower};
  const GetData data(program.state);
  const QString refusal = u"不存在与 DATA.MDB 符合的文件名"_s;
  EXPECT_EQ(program.host.messages, (QStringList{refusal, refusal, lower, lower}))
      << "the right part of the path decides, without regard to case";
  EXPECT_EQ(program.state.gConn->path(), lower);
}

TEST(GetData, DialogComesAgainAsLongAsTheChosenFileCannotBeOpened) {
  const TempStore elsewhere;
  const QTemporaryDir folder;
  const QString gone = folder.filePath(u"gone/DATA.MDB"_s);
  Program program(folder.path());
  program.host.answers = {gone, elsewhere.path(), elsewhere.path()};
  const GetData data(program.state);
  EXPECT_EQ(program.host.asked.size(), 3);
  EXPECT_EQ(program.host.removals, 3);
  EXPECT_EQ(program.host.setting, elsewhere.path());
}

TEST(GetData, FileThatIsNoDatabaseShowsNumberAndWordsAndLaterCommandsFail) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"DATA.MDB"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(4096, 'x'));
  file.close();
  Program program(folder.path());
  GetData data(program.state);
  const QString message = u"26: file is not a database ("_s + file.fileName() + u")"_s;
  EXPECT_EQ(program.host.messages, (QStringList{message, message}));
  EXPECT_EQ(program.host.asked.size(), 0);
  EXPECT_THROW(data.GetXIMU(u"SELECT * FROM XIMU"_s), StoreError);
  EXPECT_THROW(data.GetCmdXimu(u"SELECT * FROM XIMU"_s), StoreError);
  EXPECT_THROW(data.DBExec(u"DELETE FROM XIMU"_s), StoreError);
  EXPECT_EQ(program.state.gDataUsers, 1);
}

TEST(GetData, BusyFileShowsNumberAndWordsAndLaterCommandsFail) {
  const TempStore store;
  SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
  other.exec("BEGIN EXCLUSIVE");
  Program program(store.directory());
  GetData data(program.state);
  EXPECT_EQ(program.host.messages.value(0), u"5: database is locked ("_s + store.path() + u")"_s);
  EXPECT_THROW(data.GetQYXX(u"SELECT *  FROM QYXX "_s), StoreError);
}

TEST(GetData, FinderReturnsAPathThatIsSetWithoutAsking) {
  const TempStore store;
  Program program(store.directory());
  GetData data(program.state);
  program.host.setting = u"/kept/DATA.MDB"_s;
  EXPECT_EQ(data.FindDatabase(u"DATA.MDB"_s), u"/kept/DATA.MDB"_s);
  EXPECT_TRUE(program.host.asked.isEmpty());
}

TEST(GetData, EachOperationOpensItsOwnSet) {
  const TempStore store;
  store.exec(u"INSERT INTO XIMU (XIMU) VALUES ('a')"_s);
  Program program(store.directory());
  GetData data(program.state);
  const QString command = u"SELECT * FROM XIMU"_s;
  QList<RecordsetPtr> sets;
  for (const auto get : {&GetData::GetXIMU, &GetData::GetFUWU, &GetData::GetXIXI, &GetData::GetGOHU,
                         &GetData::GetGOKU, &GetData::GetQYXX, &GetData::GetCYXX, &GetData::GetYHXX,
                         &GetData::GetDBGROUP, &GetData::GetDBUSER}) {
    sets.append((data.*get)(command));
    EXPECT_EQ(sets.last()->RecordCount(), 1);
    EXPECT_EQ(sets.count(sets.last()), 1);
  }
  for (const auto get : {&GetData::GetCmdXimu, &GetData::GetCmdGohu, &GetData::GetCmdGoku}) {
    EXPECT_EQ((data.*get)(command)->rowCount(), 1);
  }
}

TEST(GetData, DataMemberUserIsTheSetOfUsersAndNothingElseIsOne) {
  const TempStore store;
  Program program(store.directory());
  GetData data(program.state);
  EXPECT_EQ(data.dataMember(u"User"_s), nullptr);
  const RecordsetPtr users = data.GetDBUSER(u"SELECT * FROM QYXX"_s);
  EXPECT_EQ(data.dataMember(u"User"_s), users);
  EXPECT_EQ(data.dataMember(u"Group"_s), nullptr);
}

TEST(GetData, DBExecWritesInATransactionOfItsOwnOrNotAtAll) {
  const TempStore store;
  store.exec(u"INSERT INTO XIMU (XIMU) VALUES ('a'),('b')"_s);
  Program program(store.directory());
  GetData data(program.state);
  EXPECT_EQ(data.DBExec(u"UPDATE XIMU SET GESH='1'"_s), 2);
  EXPECT_THROW(data.DBExec(u"UPDATE XIMU SET id=1"_s), StoreError);
  EXPECT_EQ(store.value(u"SELECT group_concat(id) FROM XIMU"_s).toString(), u"1,2"_s);
  for (const QString& command : {u"ATTACH 'x' AS y"_s, u"PRAGMA user_version=2"_s, u"COMMIT"_s,
                                 u"DROP TABLE XIMU"_s, u"DELETE FROM XIMU; SELECT 1"_s}) {
    EXPECT_THROW(data.DBExec(command), StoreError) << command.toStdString();
  }
  EXPECT_EQ(data.DBExec(u"DELETE FROM XIMU WHERE XIMU='A'"_s), 1);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM XIMU"_s), QVariant(1LL));
}

}  // namespace
}  // namespace qinghe
