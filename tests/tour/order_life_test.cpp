// An order's life between two companies: two client programs, each with its own file and settings,
// and one portal. Every step is done through the controls.

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "support/PortalProcess.h"
#include "support/TempStore.h"

using namespace Qt::StringLiterals;

namespace {

/// A company's machine: a program folder with its `DATA.MDB`, and the settings of its user.
class Desk {
 public:
  explicit Desk(const QString& host) {
    QFile::link(QStringLiteral(QINGHE_TOUR_PROGRAM), store.directory() + u"/qinghe-tour"_s);
    QDir().mkpath(folder_.filePath(u"qinghe"_s));
    QFile settings(folder_.filePath(u"qinghe/qinghe.ini"_s));
    if (!settings.open(QIODevice::WriteOnly)) throw std::runtime_error("no settings");
    settings.write("[config]\nWebServer=" + host.toUtf8() +
                   "\nAccessType=2\nUnicode=1\nAutoDial=0\nPageSize=10\nViewPict=1\n");
  }

  /// Plays an act of the tour to its end.
  void play(const QString& act) const {
    SCOPED_TRACE(act.toStdString());
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CONFIG_HOME"_s, folder_.path());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(store.directory() + u"/qinghe-tour"_s, {folder_.path(), act, u"--no-pictures"_s});
    ASSERT_TRUE(process.waitForFinished(600'000));
    ASSERT_EQ(process.exitStatus(), QProcess::NormalExit);
    ASSERT_EQ(process.exitCode(), 0);
  }

  QStringList printed() const { return QDir(folder_.path()).entryList({u"*.pdf"_s}, QDir::Files); }

  /// The one order that this company has: its header's columns.
  QStringList order(const QString& columns) const {
    QStringList texts;
    for (const QVariantList& row : store.rows(u"SELECT %1 FROM GOHU"_s.arg(columns))) {
      for (const QVariant& value : row) texts.append(value.toString());
    }
    return texts;
  }

  TempStore store;

 private:
  QTemporaryDir folder_;
};

class OrderLife : public testing::Test {
 protected:
  /// A row of the portal's own file.
  QStringList onPortal(const QString& sql) const {
    const SQLite::Database database = portal.database();
    SQLite::Statement statement(database, sql.toStdString());
    QStringList texts;
    if (!statement.executeStep()) return texts;
    for (int i = 0; i < statement.getColumnCount(); ++i) {
      texts.append(QString::fromStdString(statement.getColumn(i).getString()));
    }
    return texts;
  }
  QStringList flags() const {
    return onPortal(u"SELECT jhhs,xshs,fh,sh FROM gohu ORDER BY id DESC LIMIT 1"_s);
  }

  PortalProcess portal;
  const Desk buyer{portal.host()};
  const Desk seller{portal.host()};
};

TEST_F(OrderLife, GoesFromTheSearchToTheReceiptAndIntoBothCompaniesStatistics) {
  const QString counted = u"SELECT count(*) FROM gohu"_s;
  const int before = onPortal(counted).value(0).toInt();

  buyer.play(u"buy"_s);
  ASSERT_EQ(onPortal(counted).value(0).toInt(), before + 1);
  EXPECT_EQ(flags(), (QStringList{u"0"_s, u"0"_s, u"0"_s, u"0"_s}));
  const QString id = onPortal(u"SELECT max(id) FROM gohu"_s).value(0);
  EXPECT_EQ(buyer.order(u"R_ID,kehu,gosh"_s), (QStringList{id, u"明溪书屋"_s, u"青禾书店"_s}));
  // 20 * 72 * 0.8 + 12 * 80.80 + 36 * 52.80 + 8 * 24 - 2 * 22.50
  EXPECT_EQ(buyer.order(u"SHLI,YNSH"_s), (QStringList{u"74"_s, u"4169.4"_s}));
  EXPECT_EQ(buyer.store.value(u"SELECT count(*) FROM GOKU WHERE R_ID="_s + id).toInt(), 5);

  seller.play(u"sell"_s);
  EXPECT_EQ(flags(), (QStringList{u"0"_s, u"1"_s, u"0"_s, u"0"_s}));
  // The second line at 0.75 now, and 15 of other charges; 0.13 of it all is tax.
  EXPECT_EQ(seller.order(u"R_ID,YNSH,FEYO,HEJI,SHER"_s),
            (QStringList{id, u"3927"_s, u"15"_s, u"3942"_s, u"512.46"_s}));
  EXPECT_EQ(
      onPortal(u"SELECT zhko FROM goku WHERE gohu_id=%1 ORDER BY id LIMIT 1 OFFSET 1"_s.arg(id)),
      QStringList{u"0.75"_s});

  buyer.play(u"confirm"_s);
  EXPECT_EQ(flags(), (QStringList{u"1"_s, u"1"_s, u"0"_s, u"0"_s}));
  EXPECT_EQ(buyer.order(u"HEJI"_s), QStringList{u"3942"_s}) << "the seller's charges are seen";

  seller.play(u"ship"_s);
  EXPECT_EQ(flags(), (QStringList{u"1"_s, u"1"_s, u"1"_s, u"0"_s}));
  EXPECT_EQ(onPortal(u"SELECT fhfs FROM gohu WHERE id="_s + id), QStringList{u"快件"_s});

  buyer.play(u"receive"_s);
  EXPECT_EQ(flags(), (QStringList{u"1"_s, u"1"_s, u"1"_s, u"1"_s}));
  EXPECT_EQ(buyer.order(u"JHHS,XSHS,FH,SH,FHFS"_s),
            (QStringList{u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"快件"_s}));
  EXPECT_EQ(buyer.printed().size(), 1);
  EXPECT_EQ(seller.printed().size(), 1);

  seller.play(u"statistics"_s);
  EXPECT_EQ(seller.printed().size(), 5) << "four statistics beside the order";
}

}  // namespace
