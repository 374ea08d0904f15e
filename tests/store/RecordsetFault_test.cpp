#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>

#include "store/ConnectionPrivate.h"
#include "store_test_tools.h"
#include "support/system_faults.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

/// What the engine asks of the folder meanwhile: "unlink" takes a file out of it, "openDirectory"
/// makes its entries last.
class FolderCalls {
 public:
  FolderCalls() {
    calls.clear();
    unlink_ = replace("unlink", reinterpret_cast<sqlite3_syscall_ptr>(&FolderCalls::unlink));
    open_ = replace("openDirectory", reinterpret_cast<sqlite3_syscall_ptr>(&FolderCalls::open));
  }
  ~FolderCalls() {
    replace("unlink", unlink_);
    replace("openDirectory", open_);
  }
  FolderCalls(const FolderCalls&) = delete;
  FolderCalls& operator=(const FolderCalls&) = delete;

  static inline QStringList calls;

 private:
  static sqlite3_syscall_ptr replace(const char* name, sqlite3_syscall_ptr by) {
    sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
    const sqlite3_syscall_ptr before = system->xGetSystemCall(system, name);
    EXPECT_EQ(system->xSetSystemCall(system, name, by), SQLITE_OK);
    return before;
  }
  static int unlink(const char* path) {
    calls.append(u"unlink"_s);
    return reinterpret_cast<int (*)(const char*)>(unlink_)(path);
  }
  static int open(const char* path, int* file) {
    calls.append(u"openDirectory"_s);
    return reinterpret_cast<int (*)(const char*, int*)>(open_)(path, file);
  }

  static inline sqlite3_syscall_ptr unlink_ = nullptr;
  static inline sqlite3_syscall_ptr open_ = nullptr;
};

class RecordsetFault : public testing::Test {
 public:
  RecordsetFault() {
    store.exec(u"INSERT INTO XIMU (id,XIMU,JISH) VALUES (3,'old','old'),(5,'old','old')"_s);
    connection = std::make_shared<Connection>(store.path(), std::chrono::milliseconds(20));
    goods = std::make_unique<Recordset>(connection, u"SELECT * FROM XIMU"_s);
  }

  int failureOfUpdate(const QString& introduction) {
    int number = 0;
    storeErrorOf(
        [&] {
          goods->setValue(u"XIMU"_s, u"new"_s);
          goods->setValue(u"JISH"_s, introduction);
          goods->Update();
        },
        &number);
    return number;
  }
  int failureOfAdding(const QString& introduction) {
    goods->AddNew();
    return failureOfUpdate(introduction);
  }
  QStringList onDisk() const {
    QStringList names;
    for (const auto& row : store.rows(u"SELECT XIMU FROM XIMU ORDER BY id"_s)) {
      names.append(row.first().toString());
    }
    return names;
  }
  /// After a failed change the rows are the old ones, and the set shows, changes and adds.
  void expectOldAndUsable() {
    EXPECT_EQ(onDisk(), (QStringList{u"old"_s, u"old"_s}));
    EXPECT_EQ(store.value(u"PRAGMA integrity_check"_s).toString(), u"ok"_s);
    EXPECT_EQ(goods->RecordCount(), 2);
    EXPECT_EQ(column(*goods, u"XIMU"_s), (QStringList{u"old"_s, u"old"_s}));
    goods->MoveFirst();
    EXPECT_EQ(failureOfUpdate(u"short"_s), 0);
    EXPECT_EQ(failureOfAdding(u"short"_s), 0);
    EXPECT_EQ(onDisk(), (QStringList{u"new"_s, u"old"_s, u"new"_s}));
    EXPECT_EQ(goods->text(u"id"_s), u"6"_s);
  }

  TempStore store;
  std::shared_ptr<Connection> connection;
  std::unique_ptr<Recordset> goods;
};

TEST_F(RecordsetFault, WhatIsSavedLastsAsTheJournalsEndIsOnDiskToo) {
  const FolderCalls folder;
  EXPECT_EQ(failureOfUpdate(u"x"_s), 0);
  ASSERT_GE(folder.calls.size(), 2);
  EXPECT_EQ(folder.calls.mid(folder.calls.size() - 2),
            (QStringList{u"unlink"_s, u"openDirectory"_s}));
}

TEST_F(RecordsetFault, FileHeldByAnotherProcessFailsAfterTheWaitAndWorksLater) {
  SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
  other.exec("BEGIN EXCLUSIVE");
  EXPECT_EQ(failureOfUpdate(u"x"_s), SQLITE_BUSY);
  EXPECT_EQ(failureOfAdding(u"x"_s), SQLITE_BUSY);
  int number = 0;
  storeErrorOf([&] { goods->text(u"XIMU"_s); }, &number);
  EXPECT_EQ(number, SQLITE_BUSY);
  other.exec("ROLLBACK");
  expectOldAndUsable();
}

TEST_F(RecordsetFault, ReaderInTheWayFailsTheWriteAsAWhole) {
  SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READONLY);
  SQLite::Statement reading(other, "SELECT * FROM XIMU");
  ASSERT_TRUE(reading.executeStep());
  EXPECT_EQ(failureOfUpdate(u"x"_s), SQLITE_BUSY);
  EXPECT_EQ(failureOfAdding(u"x"_s), SQLITE_BUSY);
  reading.reset();
  expectOldAndUsable();
}

TEST_F(RecordsetFault, FullDatabaseFailsTheWriteAsAWhole) {
  Connection::Private& inside = connection->internals();
  inside.run(u"PRAGMA max_page_count = %1"_s.arg(store.value(u"PRAGMA page_count"_s).toInt()));
  const QString large(200'000, u'x');
  EXPECT_EQ(failureOfUpdate(large), SQLITE_FULL);
  EXPECT_EQ(failureOfAdding(large), SQLITE_FULL);
  inside.run(u"PRAGMA max_page_count = 1000000"_s);
  expectOldAndUsable();
}

TEST_F(RecordsetFault, FullDiskFailsTheWriteAsAWhole) {
  {
    const SizeLimit limit(static_cast<rlim_t>(QFileInfo(store.path()).size()));
    const QString large(200'000, u'x');
    EXPECT_NE(failureOfUpdate(large), 0);
    EXPECT_NE(failureOfAdding(large), 0);
  }
  expectOldAndUsable();
}

TEST_F(RecordsetFault, DiskWithoutRoomForTheJournalFailsTheWriteAsAWhole) {
  {
    const SizeLimit limit(100);
    EXPECT_NE(failureOfUpdate(u"x"_s), 0);
    EXPECT_NE(failureOfAdding(u"x"_s), 0);
  }
  expectOldAndUsable();
}

TEST_F(RecordsetFault, ReadOnlyFileIsReadAndRefusesTheWrite) {
  goods.reset();
  connection.reset();
  QFile file(store.path());
  const auto readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
  ASSERT_TRUE(file.setPermissions(readable));
  QFile folder(store.directory());
  ASSERT_TRUE(folder.setPermissions(readable | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther |
                                    QFile::WriteOwner));
  {
    const OrdinaryUser user;
    connection = std::make_shared<Connection>(store.path());
    goods = std::make_unique<Recordset>(connection, u"SELECT * FROM XIMU"_s);
    EXPECT_EQ(goods->text(u"XIMU"_s), u"old"_s);
    EXPECT_EQ(failureOfUpdate(u"x"_s), SQLITE_READONLY);
    EXPECT_EQ(failureOfAdding(u"x"_s), SQLITE_READONLY);
    EXPECT_EQ(column(*goods, u"XIMU"_s), (QStringList{u"old"_s, u"old"_s}));
    goods.reset();
    connection.reset();
  }
  EXPECT_EQ(onDisk(), (QStringList{u"old"_s, u"old"_s}));
  ASSERT_TRUE(file.setPermissions(readable | QFile::WriteOwner));
  connection = std::make_shared<Connection>(store.path());
  goods = std::make_unique<Recordset>(connection, u"SELECT * FROM XIMU"_s);
  expectOldAndUsable();
}

TEST_F(RecordsetFault, UnreadableFileCannotBeOpened) {
  goods.reset();
  connection.reset();
  QFile file(store.path());
  ASSERT_TRUE(file.setPermissions(QFile::Permissions()));
  int number = 0;
  {
    const OrdinaryUser user;
    storeErrorOf([&] { Connection again(store.path()); }, &number);
  }
  EXPECT_EQ(number, StoreError::cannotOpen);
  ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
}

TEST_F(RecordsetFault, FileThatBreaksUnderTheProgramFailsItsCommands) {
  connection->internals().run(u"PRAGMA cache_size = 0"_s);
  const qint64 size = QFileInfo(store.path()).size();
  QFile file(store.path());
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.seek(24);
  file.write(QByteArray(4, '\x7f'));  // the change counter, so that nothing cached is used
  file.seek(4096);
  file.write(QByteArray(size - 4096, '\x7f'));
  file.close();
  int number = 0;
  storeErrorOf([&] { goods->text(u"XIMU"_s); }, &number);
  EXPECT_EQ(number, SQLITE_CORRUPT);
  EXPECT_EQ(failureOfUpdate(u"x"_s), SQLITE_CORRUPT);
  EXPECT_EQ(failureOfAdding(u"x"_s), SQLITE_CORRUPT);
  EXPECT_EQ(goods->RecordCount(), 2);
}

TEST_F(RecordsetFault, PowerCutInTheMiddleOfAWriteLeavesTheOldRows) {
  store.exec(
      u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<500) "
      u"INSERT INTO XIXI (content) SELECT 'old '||i||hex(zeroblob(500)) FROM n"_s);
  const TempStore copy;
  ASSERT_TRUE(QFile::remove(copy.path()));
  {
    SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
    other.exec("PRAGMA cache_size = 5; BEGIN IMMEDIATE; UPDATE XIXI SET content = 'new'||content");
    ASSERT_TRUE(QFile::copy(store.path(), copy.path()));
    ASSERT_TRUE(QFile::copy(store.path() + u"-journal"_s, copy.path() + u"-journal"_s));
    other.exec("ROLLBACK");
  }
  QFile half(copy.path());
  ASSERT_TRUE(half.open(QIODevice::ReadOnly));
  ASSERT_TRUE(half.readAll().contains("newold")) << "the copy was to be half written";
  const auto again = std::make_shared<Connection>(copy.path());
  Recordset messages(again, u"SELECT * FROM XIXI"_s);
  EXPECT_EQ(messages.RecordCount(), 500);
  for (; !messages.atEnd(); messages.MoveNext()) {
    ASSERT_TRUE(messages.text(u"content"_s).startsWith(u"old"_s));
  }
}

}  // namespace
}  // namespace qinghe
