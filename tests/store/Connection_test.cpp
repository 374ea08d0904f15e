#include "store/Connection.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::milliseconds impatient{20};

int openError(const QString& path) {
  int number = 0;
  storeErrorOf([&] { Connection connection(path, impatient); }, &number);
  return number;
}

void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(bytes);
}

TEST(Connection, NeverCreatesAFile) {
  const QTemporaryDir folder;
  EXPECT_EQ(openError(folder.filePath(u"DATA.MDB"_s)), StoreError::cannotOpen);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(Connection, CannotOpenAFolderOrAPathThroughAFile) {
  const TempStore store;
  EXPECT_EQ(openError(store.directory()), StoreError::cannotOpen);
  EXPECT_EQ(openError(store.path() + u"/DATA.MDB"_s), StoreError::cannotOpen);
  EXPECT_EQ(openError(u""_s), StoreError::cannotOpen);
  EXPECT_EQ(openError(u":memory:"_s), StoreError::cannotOpen);
}

TEST(Connection, TellsAFileThatIsNoDatabaseFromOneThatCannotBeOpened) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"DATA.MDB"_s);
  write(path, QByteArray(4096, 'x'));
  EXPECT_EQ(openError(path), SQLITE_NOTADB);
  write(path, "short");
  EXPECT_EQ(openError(path), SQLITE_NOTADB);
  write(path, "");
  EXPECT_EQ(openError(path), SQLITE_NOTADB);
}

TEST(Connection, FailsOnATruncatedFileOrAtItsFirstCommand) {
  for (const qint64 size : {50LL, 100LL, 1000LL, 5000LL, 20000LL}) {
    const TempStore store;
    QFile file(store.path());
    ASSERT_TRUE(file.resize(size));
    const QString words = storeErrorOf([&] {
      const auto connection = std::make_shared<Connection>(store.path(), impatient);
      Recordset(connection, u"SELECT * FROM XIMU"_s).RecordCount();
      Recordset(connection, u"SELECT * FROM XIXI"_s).RecordCount();
      Recordset(connection, u"SELECT lebi FROM vLEBI"_s).RecordCount();
    });
    EXPECT_NE(words, u"nothing thrown"_s) << size;
  }
}

TEST(Connection, FailsWhenAnotherProcessHoldsTheWholeFile) {
  const TempStore store;
  SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
  other.exec("BEGIN EXCLUSIVE");
  EXPECT_EQ(openError(store.path()), SQLITE_BUSY);
  other.exec("ROLLBACK");
  EXPECT_NO_THROW(Connection(store.path(), impatient));
}

TEST(Connection, TakesAFileBackFromWriteAheadLogging) {
  const TempStore store;
  store.exec(u"PRAGMA journal_mode = WAL"_s);
  const Connection connection(store.path());
  EXPECT_EQ(store.value(u"PRAGMA journal_mode"_s).toString(), u"delete"_s);
  EXPECT_FALSE(QFileInfo::exists(store.path() + u"-wal"_s));
}

TEST(Connection, OpensAPathWithChineseAndOddCharacters) {
  const TempStore store;
  const QString odd = store.directory() + u"/数据 ?#%41.MDB"_s;
  ASSERT_TRUE(QFile::copy(store.path(), odd));
  EXPECT_EQ(Connection(odd).path(), odd);
}

class Refused : public testing::TestWithParam<const char*> {};

TEST_P(Refused, CommandsOfARecordsetMayOnlyRead) {
  const StoreFixture f;
  f.store.exec(u"INSERT INTO XIMU (XIMU) VALUES ('书')"_s);
  const auto before = f.store.rows(u"SELECT * FROM sqlite_master, XIMU"_s);
  const QString command = QString::fromUtf8(GetParam());
  EXPECT_THROW(f.open(command), StoreError);
  EXPECT_THROW(f.shape(command), StoreError);
  EXPECT_THROW(f.shape(u"SHAPE {"_s + command + u"} AS a"_s), StoreError);
  EXPECT_EQ(f.store.rows(u"SELECT * FROM sqlite_master, XIMU"_s), before);
  EXPECT_EQ(f.open(u"SELECT * FROM XIMU"_s).RecordCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, Refused,
    testing::Values("DELETE FROM XIMU", "UPDATE XIMU SET XIMU='x'",
                    "INSERT INTO XIMU (XIMU) VALUES ('x') RETURNING *", "DROP TABLE XIMU",
                    "CREATE TABLE t (x)", "ATTACH 'other.db' AS o", "DETACH main",
                    "PRAGMA user_version = 7", "PRAGMA table_info(XIMU)",
                    "SELECT * FROM pragma_table_info('XIMU')", "VACUUM", "BEGIN", "COMMIT",
                    "SAVEPOINT s", "REINDEX", "ANALYZE", "EXPLAIN SELECT 1;DROP TABLE XIMU",
                    "SELECT load_extension('x')", "SELECT 1; DELETE FROM XIMU",
                    "SELECT * FROM XIMU; SELECT 1", "SELECT * FROM XIMU WHERE XIMU='O'Neil'",
                    "SELECT * FROM XIMU WHERE XIMU='x", "SELECT * FROM XIMU WHERE QIYE_ID=",
                    "SELECT * FROM missing", "SELECT missing FROM XIMU", "", "  ", ";", "{"));

TEST(Connection, TakesATrailingSemicolon) {
  const StoreFixture f;
  EXPECT_EQ(f.open(u"SELECT * FROM XIMU ; "_s).RecordCount(), 0);
}

TEST(Connection, RefusesACommandWithANulInIt) {
  const StoreFixture f;
  QString command = u"SELECT * FROM XIMU@WHERE nothing"_s;
  command.replace(u'@', QChar(0));
  EXPECT_THROW(f.open(command), StoreError);
}

TEST(Connection, SaysWhatFailedWithTheEnginesWordsAndTheCommand) {
  const StoreFixture f;
  int number = 0;
  const QString words = storeErrorOf([&] { f.open(u"SELECT * FROM missing"_s); }, &number);
  EXPECT_EQ(words, u"no such table: missing (SELECT * FROM missing)"_s);
  EXPECT_EQ(number, SQLITE_ERROR);
}

}  // namespace
}  // namespace qinghe
