#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>

#include "OrderListFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class OrderListSearch : public OrderListFixture {
 protected:
  static QString title(const ListView& list, int column) {
    return list.model()->headerData(column, Qt::Horizontal).toString();
  }
  static void type(OrderList& form, const QString& text) {
    auto* line = qobject_cast<QLineEdit*>(form.txtFields->editor());
    line->selectAll();
    line->insert(text);
  }
  static QStringList cells(const ListItem* item) {
    return {item->key(),      item->text(),     item->subItem(1),
            item->subItem(2), item->subItem(3), item->isChecked() ? u"x"_s : u"-"_s};
  }
};

TEST_F(OrderListSearch, OpensWithTodayItsColumnsAndNoRequest) {
  const QDate before = QDate::currentDate();
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.objectName(), list.name);
    EXPECT_EQ(form.windowTitle(), list.caption);
    for (const DatePicker* picker : {form.DTPickerFrom, form.DTPickerTo}) {
      ASSERT_TRUE(picker->value().has_value());
      EXPECT_GE(*picker->value(), before);
      EXPECT_LE(*picker->value(), QDate::currentDate());
    }
    EXPECT_EQ(form.txtFields->text(), QString());
    EXPECT_EQ(form.txtFields->Tag, u"0"_s);
    ListView& orders = *form.ListView1;
    QTRY_COMPARE(orders.header()->length(), orders.viewport()->width());
    orders.setSpreadsColumns(false);
    ASSERT_EQ(orders.model()->columnCount(), 4);
    EXPECT_EQ(title(orders, 0), u"订单号"_s);
    EXPECT_EQ(title(orders, 1), u"日期"_s);
    EXPECT_EQ(title(orders, 2), list.partnerTitle);
    EXPECT_EQ(title(orders, 3), QString());
    EXPECT_EQ(orders.columnWidth(1), 1000 / 15);
    EXPECT_EQ(orders.columnWidth(2), 4000 / 15);
    EXPECT_EQ(orders.columnWidth(3), 0);
    EXPECT_TRUE(orders.hasCheckBoxes());
    const ListView& partners = *form.ListView2;
    ASSERT_EQ(partners.model()->columnCount(), 1);
    EXPECT_EQ(title(partners, 0), QString());
    EXPECT_EQ(partners.columnWidth(0), partners.width() - 4);
    EXPECT_EQ(form.Command1->text(), u"搜索"_s);
    EXPECT_EQ(form.Toolbar1->actions().size(), 1);
    QStringList labels;
    for (const QLabel* label : form.SSTab1->findChildren<QLabel*>()) labels << label->text();
    EXPECT_TRUE(labels.contains(list.partnerTitle));
  }
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(OrderListSearch, AllColumnsAreInSightAtFirst) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    const ListView& orders = *form.ListView1;
    QTRY_VERIFY(orders.header()->length() <= orders.viewport()->width());
    EXPECT_GT(orders.columnWidth(0), 150);
  }
}

TEST_F(OrderListSearch, WholeDatesAreInSightWhateverTheFont) {
  const OrderListCase list = orderLists().first();
  OrderList& form = list.open();
  QFont large = form.font();
  large.setPixelSize(24);
  form.ListView1->setFont(large);
  portal.answerWith({page({{u"1"_s, u"G1"_s, u"2024-12-28"_s, u"甲"_s, u"7"_s, u""_s}})});
  press(form.Command1);
  const int text = QFontMetrics(large).horizontalAdvance(u"2024-12-28"_s);
  EXPECT_GT(form.ListView1->columnWidth(1), text);
}

TEST_F(OrderListSearch, AnEndlessDateLeavesThePartnerInSight) {
  OrderList& form = orderLists().first().open();
  const auto find = [&](const QString& date) {
    portal.answerWith({page({{u"1"_s, u"G1"_s, date, u"甲"_s, u"7"_s, u""_s}})});
    press(form.Command1);
    ASSERT_EQ(form.ListView1->itemCount(), 1);
  };
  const QString longest = u"2024-12-28 23:59:59"_s;
  find(longest);
  const int width = form.ListView1->columnWidth(1);
  EXPECT_GT(width, form.ListView1->fontMetrics().horizontalAdvance(longest)) << "with its time";
  find(QString(2000, u'8'));
  EXPECT_LT(form.ListView1->columnWidth(1), width + width / 4);
}

TEST_F(OrderListSearch, SendsDatesAndNameAndListsWhatComes) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    form.DTPickerFrom->setValue(QDate(2024, 3, 9));
    form.DTPickerTo->setValue(QDate(2024, 12, 31));
    type(form, u"云"_s);
    portal.clear();
    portal.answerWith({page(threeOrders)});
    press(form.Command1);
    EXPECT_EQ(targets(),
              QStringList{ordersTarget(
                  list, u"%1=25 and %2>=#3/9/2024# and %2<=#12/31/2024# and %3 like '%云%'"_s.arg(
                            list.own, list.date, list.partnerName))});
    ASSERT_EQ(form.ListView1->itemCount(), 3);
    EXPECT_EQ(cells(form.ListView1->itemAt(0)),
              QStringList({u"417 ID"_s, u"G2024311-3"_s, u"2024-3-11"_s, u"云帆图书发行"_s, u"7"_s,
                           u"x"_s}));
    EXPECT_EQ(form.ListView1->itemAt(0)->icon(), list.orderIcon);
    EXPECT_FALSE(form.ListView1->itemAt(1)->isChecked());
    EXPECT_FALSE(form.ListView1->itemAt(2)->isChecked()) << "only the word True is a mark";
    EXPECT_FALSE(QApplication::overrideCursor());
  }
}

TEST_F(OrderListSearch, WithAnEmptyNameAndNoDatesListsAllOrdersNewestFirst) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    takeAllDates(form);
    portal.clear();
    portal.answerWith({page(threeOrders)});
    press(form.Command1);
    EXPECT_EQ(targets(), QStringList{ordersTarget(list, list.own + u"=25"_s)});
    ASSERT_EQ(form.ListView1->itemCount(), 3);
    EXPECT_EQ(form.ListView1->itemAt(0)->key(), u"417 ID"_s) << "in the portal's order";
    EXPECT_EQ(form.ListView1->itemAt(2)->key(), u"12 ID"_s);
  }
}

TEST_F(OrderListSearch, AskedAgainEmptiesTheListFirst) {
  OrderList& form = withOrders(orderLists().first());
  portal.answerWith({page({threeOrders.last()})});
  press(form.Command1);
  ASSERT_EQ(form.ListView1->itemCount(), 1);
  EXPECT_EQ(form.ListView1->itemAt(0)->key(), u"12 ID"_s);
}

TEST_F(OrderListSearch, AnEmptyOrBrokenAnswerOrNoneLeavesAnEmptyList) {
  for (const QByteArray& answer : {page({}), emptyPage(), QByteArray(), QByteArray("start_pos")}) {
    OrderList& form = withOrders(orderLists().first());
    portal.answerWith({answer});
    press(form.Command1);
    EXPECT_EQ(form.ListView1->itemCount(), 0);
    EXPECT_FALSE(QApplication::overrideCursor());
  }
  OrderList& form = withOrders(orderLists().first());
  portal.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.reset = true}; });
  press(form.Command1);
  EXPECT_EQ(form.ListView1->itemCount(), 0);
  EXPECT_FALSE(QApplication::overrideCursor());
  press(form.Command2);
  EXPECT_EQ(form.ListView2->itemCount(), 0);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(OrderListSearch, AnAnswerThatBreaksOffKeepsTheWholeRows) {
  OrderList& form = orderLists().first().open();
  portal.answerWith({page({threeOrders[0], {u"88"_s, u"G1"_s}})});
  press(form.Command1);
  EXPECT_EQ(form.ListView1->itemCount(), 1);
  EXPECT_FALSE(QApplication::overrideCursor());
}

TEST_F(OrderListSearch, ListsThePartnersAnew) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    portal.clear();
    portal.answerWith({page(twoPartners)});
    press(form.Command2);
    press(form.Command2);
    EXPECT_EQ(targets(), QStringList({partnersTarget(list), partnersTarget(list)}));
    ASSERT_EQ(form.ListView2->itemCount(), 2) << "emptied first";
    EXPECT_EQ(form.ListView2->itemAt(1)->key(), u"9 ID"_s);
    EXPECT_EQ(form.ListView2->itemAt(1)->text(), u"墨香书局"_s);
    EXPECT_EQ(form.ListView2->itemAt(1)->icon(), list.partnerIcon);
  }
}

TEST_F(OrderListSearch, APickedPartnerIsSearchedByIdAndName) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withPartners(list);
    takeAllDates(form);
    click(*form.ListView2, placeOf(*form.ListView2, 1));
    EXPECT_EQ(form.txtFields->text(), u"墨香书局"_s);
    EXPECT_EQ(form.txtFields->Tag, u"9 ID"_s) << "behind the text, which would forget it";
    press(form.Command1);
    EXPECT_EQ(targets(),
              QStringList{ordersTarget(list, u"%1=25 and %2=9 and %3 like '%墨香书局%'"_s.arg(
                                                 list.own, list.partnerId, list.partnerName))});
  }
}

TEST_F(OrderListSearch, TypingBehindAPickedPartnerLeavesTheNameAlone) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withPartners(list);
    takeAllDates(form);
    click(*form.ListView2, placeOf(*form.ListView2, 0));
    ASSERT_EQ(form.txtFields->Tag, u"7 ID"_s);
    QTest::keyClick(form.txtFields->editor(), Qt::Key_Delete);
    EXPECT_EQ(form.txtFields->Tag, u"0"_s);
    press(form.Command1);
    EXPECT_EQ(targets().last(), ordersTarget(list, u"%1=25 and %2 like '%帆图书发行%'"_s.arg(
                                                       list.own, list.partnerName)));
    type(form, {});
    press(form.Command1);
    EXPECT_EQ(targets().last(), ordersTarget(list, list.own + u"=25"_s));
  }
}

TEST_F(OrderListSearch, PickingThePartnerWhoseNameStandsThereTakesItsKey) {
  OrderList& form = withPartners(orderLists().first());
  type(form, u"墨香书局"_s);
  ASSERT_EQ(form.txtFields->Tag, u"0"_s);
  click(*form.ListView2, placeOf(*form.ListView2, 1));
  EXPECT_EQ(form.txtFields->Tag, u"9 ID"_s);
}

TEST_F(OrderListSearch, AnApostropheIsSentAsItIs) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    takeAllDates(form);
    type(form, u"O'Neil"_s);
    portal.clear();
    press(form.Command1);
    EXPECT_EQ(targets(), QStringList{ordersTarget(list, u"%1=25 and %2 like '%O'Neil%'"_s.arg(
                                                            list.own, list.partnerName))});
  }
}

TEST_F(OrderListSearch, WithoutALinkNothingButTheCloseBoxWorks) {
  for (const OrderListCase& list : orderLists()) {
    links->connected = {u"eth0"_s};
    OrderList& form = withOrders(list);
    portal.answerWith({page(twoPartners)});
    press(form.Command2);
    portal.clear();
    goOffline();
    press(form.Command1);
    press(form.Command2);
    EXPECT_EQ(form.ListView1->itemCount(), 3) << "and the lists stay";
    EXPECT_EQ(form.ListView2->itemCount(), 2);
    click(*form.ListView1, placeOf(*form.ListView1, 0), Qt::RightButton);
    EXPECT_FALSE(form.mnuGetx->isVisible());
    click(*form.ListView2, placeOf(*form.ListView2, 0), Qt::RightButton);
    EXPECT_FALSE(form.mnuGetx->isVisible());
    pressExit(form);
    EXPECT_TRUE(list.isOpen());
    EXPECT_TRUE(portal.requests().isEmpty());
    form.close();
    EXPECT_FALSE(list.isOpen());
  }
}

TEST_F(OrderListSearch, ExitUnloads) {
  for (const OrderListCase& list : orderLists()) {
    pressExit(list.open());
    EXPECT_FALSE(list.isOpen());
  }
}

TEST_F(OrderListSearch, EnterInTheSearchPaneSearches) {
  OrderList& form = orderLists().first().open();
  takeAllDates(form);
  type(form, u"云"_s);
  form.txtFields->setFocus();
  QTest::keyClick(form.txtFields->editor(), Qt::Key_Return);
  EXPECT_EQ(targets(),
            QStringList{ordersTarget(orderLists().first(), u"kehu_id=25 and gosh like '%云%'"_s)});
  form.Command2->setFocus();
  QTest::keyClick(form.Command2, Qt::Key_Return);
  EXPECT_EQ(targets().last(), partnersTarget(orderLists().first()));
}

TEST_F(OrderListSearch, ItsBarKeepsBothPanesInSight) {
  OrderList& form = orderLists().first().open();
  auto* bar = form.findChild<QWidget*>(u"Splitter"_s);
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->width(), 5);
  const auto drag = [bar](int way) {
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(2, 50));
    QTest::mouseMove(bar, QPoint(2 + way, 50));
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(2 + way, 50));
  };
  const int before = bar->x();
  drag(30);
  EXPECT_EQ(bar->x(), before + 30);
  EXPECT_EQ(form.ListView2->columnWidth(0), form.ListView2->width() - 4);
  drag(-3000);
  EXPECT_EQ(bar->x(), 630 / 15);
  drag(3000);
  EXPECT_EQ(bar->parentWidget()->width() - bar->x(), 630 / 15);
}

}  // namespace
