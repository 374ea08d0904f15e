#include <QFile>
#include <QProcess>
#include <QSet>

#include "OrderFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

constexpr int requestsOfLoad = 2;
constexpr int requestsOfSave = 4;

/// The local copy of order 88 is an old one with two lines; the portal's has three, all changed.
class KilledSave : public ClientFixture {
 protected:
  KilledSave() {
    store.exec(
        u"DELETE FROM GOHU; DELETE FROM GOKU;"
        "INSERT INTO GOHU (id,R_ID,gohu_no,kehu,HEJI) VALUES (1,88,'old','old',1);"
        "INSERT INTO GOKU (R_ID,GOHU_ID,XIMU_ID,XIMU,SHLI,JINE,LEBI) VALUES "
        "(88,1,501,'old',1,1,'old'),(88,1,502,'old',2,2,'old')"_s);
    QFile file(store.path());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    before_ = file.readAll();
    portal.setHandler([](const QByteArray& request) { return answer(request); });
  }

  void restore() {
    QFile::remove(store.path() + u"-journal"_s);
    QFile file(store.path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(before_);
  }

  static ScriptedServer::Reply answer(const QByteArray& request) {
    const QByteArray target = request.split(' ').value(1);
    QList<QStringList> rows;
    if (target.contains("STABLE=%47%4F%48%55&")) {
      rows = purchaseHeader();
    } else if (target.contains("STABLE=%47%4F%4B%55&")) {
      rows = twoLines();
      rows.append(rows.last());
      rows.last()[0] = u"419"_s;
      rows.last()[1] = u"503"_s;
    } else if (target.contains("stable=%67%6F%68%75&")) {
      rows = {{u"88"_s}};
    } else {
      rows = {{u"417"_s}};
    }
    return {.bytes = ScriptedServer::ok(page(rows))};
  }

  void start(QProcess& saver, int step) {
    saver.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    saver.start(QStringLiteral(QINGHE_ORDER_SAVER),
                {store.directory(), portal.host(), QString::number(step)});
    ASSERT_TRUE(saver.waitForStarted());
  }

  /// Each row of the local copy in a word of its own. What a killed process left half is undone by
  /// the first who opens the file for writing.
  QString localCopy() {
    store.exec(u"BEGIN IMMEDIATE; COMMIT"_s);
    QStringList words;
    for (const QVariantList& row :
         store.rows(u"SELECT gohu_no||'/'||kehu||'/'||HEJI FROM GOHU WHERE R_ID=88 UNION ALL "
                    "SELECT XIMU_ID||'/'||XIMU||'/'||SHLI||'/'||JINE||'/'||LEBI FROM GOKU "
                    "WHERE R_ID=88"_s)) {
      words << row.first().toString();
    }
    EXPECT_EQ(store.value(u"PRAGMA integrity_check"_s).toString(), u"ok"_s);
    return words.join(u' ');
  }

  void expectTheNextSaveToRepair() {
    QProcess saver;
    start(saver, 0);
    ASSERT_TRUE(saver.waitForFinished(60'000));
    EXPECT_EQ(saver.exitCode(), 0);
    EXPECT_EQ(localCopy(), whole.last());
  }

  /// The local copies that may be left behind: the rows before the kill new, those behind it old.
  const QStringList whole{
      u"old/old/1.0 501/old/1.0/1.0/old 502/old/2.0/2.0/old"_s,
      u"G2003115-7/青禾书店/855.5 501/old/1.0/1.0/old 502/old/2.0/2.0/old"_s,
      u"G2003115-7/青禾书店/855.5 501/大学语文/25.0/312.5/教材 502/old/2.0/2.0/old"_s,
      u"G2003115-7/青禾书店/855.5 501/大学语文/25.0/312.5/教材 502/高等数学/10.0/300.0/教材"_s,
      u"G2003115-7/青禾书店/855.5 501/大学语文/25.0/312.5/教材 502/高等数学/10.0/300.0/教材 "
      "503/高等数学/10.0/300.0/教材"_s};

 private:
  QByteArray before_;
};

}  // namespace

TEST_F(KilledSave, AtEveryStepOnTheDiskLeavesWholeRowsAndTheNextSaveRepairsThem) {
  QSet<QString> seen;
  int step = 0;
  bool killed = true;
  while (killed && step < 200) {
    restore();
    QProcess saver;
    start(saver, ++step);
    ASSERT_TRUE(saver.waitForFinished(60'000));
    killed = saver.exitStatus() == QProcess::CrashExit;
    const QString left = localCopy();
    EXPECT_TRUE(whole.contains(left)) << "step " << step << ": " << left.toStdString();
    // The half that was written is undone by now, so equal copies are repaired alike.
    if (!seen.contains(left)) expectTheNextSaveToRepair();
    seen.insert(left);
  }
  EXPECT_FALSE(killed);
  EXPECT_GT(step, 4 * 4) << "a commit takes more than four steps";
  EXPECT_EQ(seen.size(), whole.size()) << "it was killed between any two rows";
}

TEST_F(KilledSave, AtEveryRequestLeavesTheOldCopyWholeAndTheNextSaveRepairsIt) {
  for (int request = 0; request < requestsOfSave; ++request) {
    restore();
    portal.clear();
    const int last = requestsOfLoad + request;
    portal.setHandler([count = 0, last](const QByteArray& bytes) mutable {
      return count++ == last ? ScriptedServer::Reply{.hang = true} : answer(bytes);
    });
    QProcess saver;
    start(saver, 0);
    ASSERT_TRUE(portal.waitForRequests(last + 1));
    saver.kill();
    ASSERT_TRUE(saver.waitForFinished(60'000));
    EXPECT_EQ(localCopy(), whole.first());
    expectTheNextSaveToRepair();
  }
}
