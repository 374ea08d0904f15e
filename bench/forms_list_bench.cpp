// A list of 100,000 rows of 4 columns, filled and painted, against a QTreeWidget that is filled in
// one batch. Both sides run in turns in this one process; the middle of their processor times
// counts, which other programs on the machine disturb little.

#include <QApplication>
#include <QHeaderView>
#include <QTreeWidget>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

#include "forms/FormsState.h"
#include "forms/ListView.h"
#include "resources/resources.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int rowCount = 100'000;
constexpr int rounds = 11;
constexpr double bar = 5.0;

struct Row {
  QString key, name, price, code, unit;
};

std::vector<Row> makeRows() {
  std::vector<Row> rows;
  rows.reserve(rowCount);
  for (int i = 0; i < rowCount; ++i) {
    const auto number = QString::number(i);
    rows.push_back({number + u" ID"_s, u"商品"_s + number, number + u".50"_s, u"NO"_s + number,
                    QString::number(i % 12)});
  }
  return rows;
}

double millisecondsOf(const std::function<void()>& work) {
  const auto before = std::clock();
  work();
  return 1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}

double ourList(const std::vector<Row>& rows) {
  qinghe::ListView list(u"ListView1"_s);
  for (const auto& title : {u"名称"_s, u"单价"_s, u"编号"_s, u"数量"_s}) list.addColumn(title, 150);
  list.resize(700, 500);
  list.show();
  QCoreApplication::processEvents();
  return millisecondsOf([&] {
    for (const auto& row : rows) {
      auto* item = list.addItem(row.key, row.name);
      item->setSubItem(1, row.price);
      item->setSubItem(2, row.code);
      item->setSubItem(3, row.unit);
    }
    if (list.grab().isNull()) std::abort();
  });
}

double treeWidget(const std::vector<Row>& rows) {
  QTreeWidget list;
  list.setHeaderLabels({u"名称"_s, u"单价"_s, u"编号"_s, u"数量"_s});
  list.setRootIsDecorated(false);
  list.setUniformRowHeights(true);
  list.resize(700, 500);
  list.show();
  QCoreApplication::processEvents();
  return millisecondsOf([&] {
    QList<QTreeWidgetItem*> items;
    items.reserve(rowCount);
    for (const auto& row : rows) {
      auto* item = new QTreeWidgetItem({row.name, row.price, row.code, row.unit});
      item->setData(0, Qt::UserRole, row.key);
      items << item;
    }
    list.addTopLevelItems(items);
    if (list.grab().isNull()) std::abort();
  });
}

double middle(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  qinghe::initResources();
  const qinghe::FormsState state;
  const auto rows = makeRows();
  std::vector<double> ours, theirs;
  for (int round = 0; round < rounds; ++round) {
    ours.push_back(ourList(rows));
    theirs.push_back(treeWidget(rows));
  }
  const double ratio = middle(theirs) / middle(ours);
  std::printf("100,000 rows of 4 columns, filled and painted\n");
  std::printf("  QTreeWidget, one batch  %8.2f ms\n", middle(theirs));
  std::printf("  ListView                %8.2f ms\n", middle(ours));
  std::printf("  ratio                   %8.2f times faster (bar: %.0f)\n", ratio, bar);
  return ratio >= bar ? 0 : 1;
}
