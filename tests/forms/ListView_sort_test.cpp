#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QPersistentModelIndex>

#include "forms/FormsFixture.h"
#include "forms/ListView.h"

using namespace Qt::StringLiterals;
using qinghe::ListItem;
using qinghe::ListView;

namespace {

class SortedList : public testing::Test {
 protected:
  SortedList() : tester_(list_.model(), QAbstractItemModelTester::FailureReportingMode::Fatal) {
    list_.addColumn(u"书名"_s, 120);
    list_.addColumn(u"价格"_s, 80);
    list_.resize(300, 200);
    QObject::connect(&list_, &ListView::columnClick, &list_, &ListView::sortByColumn);
    list_.show();
  }

  void fill(const QList<QStringList>& rows) {
    for (const auto& row : rows) list_.addItem(row[0] + u" ID"_s, row[0])->setSubItem(1, row[1]);
  }

  void clickTitle(int column) {
    auto* header = list_.header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(column) + 20, header->height() / 2));
  }

  QStringList texts() const {
    QStringList result;
    for (int row = 0; row < list_.itemCount(); ++row) {
      result << list_.itemAt(row)->text();
      EXPECT_EQ(list_.itemAt(row)->row(), row);
      EXPECT_EQ(list_.model()->index(row, 0).data().toString(), result.last());
    }
    return result;
  }

  ListView list_{u"ListView1"_s};
  QAbstractItemModelTester tester_;
};

}  // namespace

TEST_F(SortedList, TheFirstClickSortsUpwardsAndTheSecondTheOtherWayRound) {
  fill({{u"b"_s, {}}, {u"c"_s, {}}, {u"a"_s, {}}});
  clickTitle(0);
  EXPECT_EQ(texts(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
  clickTitle(0);
  EXPECT_EQ(texts(), (QStringList{u"c"_s, u"b"_s, u"a"_s}));
  clickTitle(0);
  EXPECT_EQ(texts(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

TEST_F(SortedList, AnotherColumnBeginsUpwardsAgain) {
  fill({{u"b"_s, u"1"_s}, {u"c"_s, u"3"_s}, {u"a"_s, u"2"_s}});
  clickTitle(0);
  clickTitle(1);
  EXPECT_EQ(texts(), (QStringList{u"b"_s, u"a"_s, u"c"_s}));
  clickTitle(0);
  EXPECT_EQ(texts(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

TEST_F(SortedList, NumbersAreTextsAndCaseDoesNotCount) {
  fill({{u"Beta"_s, u"9"_s}, {u"alpha"_s, u"10"_s}, {u"Alpha"_s, u"100"_s}, {u"beta"_s, {}}});
  clickTitle(1);
  EXPECT_EQ(texts(), (QStringList{u"beta"_s, u"alpha"_s, u"Alpha"_s, u"Beta"_s}));
  clickTitle(0);
  EXPECT_EQ(texts(), (QStringList{u"alpha"_s, u"Alpha"_s, u"beta"_s, u"Beta"_s}));
  clickTitle(0);
  EXPECT_EQ(texts(), (QStringList{u"beta"_s, u"Beta"_s, u"alpha"_s, u"Alpha"_s}));
}

TEST_F(SortedList, TheSelectionStaysWithItsRow) {
  fill({{u"c"_s, {}}, {u"b"_s, {}}, {u"a"_s, {}}});
  ListItem* selected = list_.selectedItem();
  const QPersistentModelIndex cell = list_.model()->index(1, 1);
  clickTitle(0);
  EXPECT_EQ(list_.selectedItem(), selected);
  EXPECT_EQ(selected->row(), 2);
  EXPECT_EQ(list_.selectionModel()->selectedRows().first().row(), 2);
  EXPECT_EQ(cell.row(), 1);
  EXPECT_EQ(cell.column(), 1);
}

TEST_F(SortedList, ItemsCanBeRemovedAndChangedBehindASort) {
  fill({{u"c"_s, {}}, {u"b"_s, {}}, {u"a"_s, {}}});
  clickTitle(0);
  list_.removeItem(list_.itemAt(0));
  list_.itemAt(0)->setText(u"B"_s);
  EXPECT_EQ(texts(), (QStringList{u"B"_s, u"c"_s}));
}

TEST_F(SortedList, RowsThatTheViewHasNotSeenYetAreSortedToo) {
  for (int row = 0; row < 1000; ++row)
    list_.addItem({}, u"%1"_s.arg(999 - row, 4, 10, QChar(u'0')));
  list_.sortByColumn(0);
  EXPECT_EQ(list_.itemAt(0)->text(), u"0000"_s);
  EXPECT_EQ(list_.itemAt(999)->text(), u"0999"_s);
  EXPECT_EQ(list_.itemAt(999)->row(), 999);
}

TEST_F(SortedList, TheMarkStandsOnlyWhileTheRowsAreInItsOrder) {
  fill({{u"b"_s, {}}, {u"a"_s, {}}});
  EXPECT_FALSE(list_.header()->isSortIndicatorShown());
  clickTitle(1);
  clickTitle(1);
  EXPECT_TRUE(list_.header()->isSortIndicatorShown());
  EXPECT_EQ(list_.header()->sortIndicatorSection(), 1);
  EXPECT_EQ(list_.header()->sortIndicatorOrder(), Qt::DescendingOrder);
  fill({{u"c"_s, {}}});
  EXPECT_FALSE(list_.header()->isSortIndicatorShown());
  EXPECT_EQ(texts().last(), u"c"_s);
}

TEST_F(SortedList, AClickThatNobodySortsByLeavesTheMark) {
  fill({{u"b"_s, {}}, {u"a"_s, {}}});
  clickTitle(0);
  QObject::disconnect(&list_, &ListView::columnClick, nullptr, nullptr);
  clickTitle(1);
  EXPECT_TRUE(list_.header()->isSortIndicatorShown());
  EXPECT_EQ(list_.header()->sortIndicatorSection(), 0);
}

TEST_F(SortedList, AnEmptyListCanBeSorted) {
  clickTitle(0);
  EXPECT_EQ(texts(), QStringList{});
}
