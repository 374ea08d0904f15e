#include <map>

#include "WizardFixture.h"
#include "portal-server/local_demo.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// The demo companies' own copies of their orders, over some months, with returns.
class WizardsOfTheDemo : public WizardFixture {
 protected:
  void be(int company) {
    store.exec(QString::fromStdString(portal_server::localDemoSql(std::to_string(1000 + company))));
    state.gQiyeId = static_cast<qint16>(company);
  }

  /// The report's rows whose first cell is a text, with its quantity and amount.
  std::multimap<QString, QString> named() {
    std::multimap<QString, QString> rows;
    for (const QString& line : csv().split(u'\n')) {
      const QStringList cells = line.split(u',');
      if (cells.size() > 2 && !cells[0].isEmpty())
        rows.emplace(cells[0], cells[1] + u' ' + cells[2]);
    }
    return rows;
  }

  /// Names with the sums of a plain query: name, quantity (or nothing), amount.
  std::multimap<QString, QString> summed(const QString& columns, const QString& own,
                                         const QString& by) {
    std::multimap<QString, QString> rows;
    for (
        const QVariantList& row : store.rows(
            u"SELECT %1,sum(k.JINE) FROM GOHU h JOIN GOKU k ON k.GOHU_ID=h.id WHERE h.%2=%3 GROUP BY %4"_s
                .arg(columns, own)
                .arg(state.gQiyeId)
                .arg(by))) {
      const auto fixed = [](const QVariant& value) {
        return value.toString().isEmpty() ? QString() : QString::number(value.toDouble(), 'f', 3);
      };
      rows.emplace(row[0].toString(), fixed(row[1]) + u' ' + fixed(row[2]));
    }
    return rows;
  }

  template <class Wizard>
  void compareSums(const QString& own, const QString& partner, std::size_t month) {
    auto& form = wizard<Wizard>();
    takeAllDates(form);
    const auto total = [&] { return summed(u"'总计',''"_s, own, u"1"_s); };
    const auto expectSums = [&](const QString& key, const QString& goodsOf) {
      auto wanted = summed(u"k.XIMU,sum(k.SHLI)"_s, own, goodsOf + u",k.XIMU_ID,k.XIMU"_s);
      wanted.merge(summed(key + u",''"_s, own, goodsOf));
      wanted.merge(total());
      EXPECT_EQ(named(), wanted) << state.gQiyeId << own.toStdString() << key.toStdString();
    };
    ASSERT_EQ(finish(form, 2), u"rptGOKU_DAWE"_s);
    expectSums(u"h.%1"_s.arg(partner), u"h.%1_id,h.%1"_s.arg(partner));
    ASSERT_EQ(finish(form, month), u"rptGOKU_MONTH"_s);
    // Lines of other companies' orders count where month and goods are the same.
    const auto months =
        summed(u"strftime('%Y',h.ghrq)||'年'||CAST(strftime('%m',h.ghrq) AS INTEGER)||'月',''"_s,
               own, u"strftime('%Y-%m',h.ghrq)"_s);
    const auto rows = named();
    for (const auto& [name, sums] : months) EXPECT_TRUE(rows.contains(name)) << name.toStdString();
    ASSERT_EQ(finish(form, 1), u"rptGOKU_LEBI"_s);
    const auto categories = named();
    EXPECT_GT(categories.size(), 5U);
    for (const auto& [name, sums] : summed(u"k.LEBI,''"_s, own, u"k.LEBI"_s)) {
      EXPECT_TRUE(categories.contains(name)) << name.toStdString();
    }
  }
};

TEST_F(WizardsOfTheDemo, SumWhatThePlainTablesSum) {
  for (const int company : {1, 2}) {
    store.exec(
        u"DELETE FROM GOHU; DELETE FROM GOKU; DELETE FROM QYXX; DELETE FROM XIMU; "
        "DELETE FROM FUWU; DELETE FROM XIXI"_s);
    be(company);
    compareSums<FrmQueryJIHU>(u"kehu_id"_s, u"gosh"_s, 5);
    compareSums<FrmQueryXISH>(u"gosh_id"_s, u"kehu"_s, 7);
    unload<FrmQueryJIHU>();
    unload<FrmQueryXISH>();
  }
}

TEST_F(WizardsOfTheDemo, ChosenCategoryAndGoodsNarrowWhatTheyShould) {
  be(1);
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  const int category = static_cast<int>(texts(*purchase.TreeView1).indexOf(u"教材"_s));
  ASSERT_GE(category, 0);
  click(*purchase.TreeView1, category);
  walkTo(purchase, 1);
  ASSERT_GT(purchase.TreeView2->rootCount(), 1);
  click(*purchase.TreeView2, 0);
  const QString goods = purchase.TreeView2->root(0)->text();
  ASSERT_EQ(finish(purchase, 1), u"rptGOKU_LEBI"_s);
  auto rows = named();
  EXPECT_TRUE(rows.contains(u"教材"_s));
  EXPECT_FALSE(rows.contains(u"科普"_s)) << "the chosen category alone";
  EXPECT_GT(rows.size(), 3U) << "with all its goods";
  ASSERT_EQ(finish(purchase, 2), u"rptGOKU_DAWE"_s);
  EXPECT_TRUE(named().contains(u"明溪书屋"_s)) << "the others have all categories";
  ASSERT_EQ(finish(purchase, 6), u"rptXIMU_GOKU"_s);
  for (const auto& [name, sums] : named()) {
    EXPECT_TRUE(name == goods || name == u"单号:"_s || name.startsWith(u'G')) << name.toStdString();
  }
}

TEST_F(WizardsOfTheDemo, SalesDetailsNameAllGoodsAndListLinesOfTheChosenOne) {
  be(1);
  auto& sales = wizard<FrmQueryXISH>();
  takeAllDates(sales);
  const int category = static_cast<int>(texts(*sales.TreeView1).indexOf(u"诗歌"_s));
  ASSERT_GE(category, 0);
  click(*sales.TreeView1, category);
  walkTo(sales, 1);
  const int goods = static_cast<int>(texts(*sales.TreeView2).indexOf(u"一百首短诗"_s));
  ASSERT_GE(goods, 0);
  click(*sales.TreeView2, goods);
  ASSERT_EQ(finish(sales, 9), u"rptXIMU_GOKU"_s);
  const QString rows = csv();
  EXPECT_TRUE(rows.contains(u"仓库管理实务"_s)) << "its name stays, without lines";
  int lines = 0;
  QString last;
  for (const QString& line : rows.split(u'\n')) {
    if (line.startsWith(u'G')) {
      ++lines;
      last = line;
    } else if (!last.isEmpty()) {
      EXPECT_TRUE(line.startsWith(u"一百首短诗"_s)) << line.toStdString();
      last.clear();
    }
  }
  EXPECT_GE(lines, 1);
}

TEST_F(WizardsOfTheDemo, EachReportBecomesAPdf) {
  be(1);
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  for (const std::size_t option : {1U, 2U, 5U, 6U}) {
    ASSERT_NE(finish(purchase, option), QString());
    const QString path = settingsFolder.filePath(u"report%1.pdf"_s.arg(option));
    boxes->expectFile(path);
    reports().first()->findChild<QAction*>(u"PDF"_s)->trigger();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_GT(bytes.count("/Type /Page\n"), 1);
    EXPECT_EQ(bytes.count("/FontFile2"), 2) << "plain and bold, once for all pages";
  }
}

}  // namespace
