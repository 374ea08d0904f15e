#include <QContextMenuEvent>

#include "OrderListFixture.h"
#include "messaging/frmPeer.h"
#include "support/cpu_time.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString newOrderText = u"添加新订单"_s;
const QString listText = u"查看订单列表"_s;
const QString detailText = u"查看订单明细"_s;
const QString messageText = u"发送消息"_s;

class OrderListRows : public OrderListFixture {
 protected:
  static QStringList withNew(const OrderListCase& list, QStringList entries) {
    if (!list.newEntry.isEmpty()) entries.prepend(newOrderText);
    return entries;
  }
  static void menuKey(ListView& list) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                            list.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&list, &event);
  }
};

TEST_F(OrderListRows, APressMakesTheOrderAndItsPartnerTheCurrentOnes) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withOrders(list);
    click(*form.ListView1, placeOf(*form.ListView1, 1));
    EXPECT_EQ(state.*list.orderId, 88);
    EXPECT_EQ(state.gPartnerId, 8);
    EXPECT_EQ(state.gPartnerName, threeOrders[1][3]);
    click(*form.ListView1, emptySpace(*form.ListView1));
    EXPECT_EQ(state.*list.orderId, 88) << "empty space changes nothing";
    EXPECT_EQ(state.gPartnerId, 8);
    EXPECT_EQ(openScreen(list.orderScreen), nullptr);
  }
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(OrderListRows, APressOnAPartnerMakesItTheCurrentOne) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withPartners(list);
    state.*list.orderId = 5;
    click(*form.ListView2, placeOf(*form.ListView2, 1), Qt::MiddleButton);
    EXPECT_EQ(state.gPartnerId, 9);
    EXPECT_EQ(state.gPartnerName, u"墨香书局"_s);
    EXPECT_EQ(state.*list.orderId, 5);
    EXPECT_EQ(form.txtFields->text(), QString()) << "only the left button picks";
    click(*form.ListView2, emptySpace(*form.ListView2));
    EXPECT_EQ(state.gPartnerId, 9);
    EXPECT_EQ(form.txtFields->text(), QString());
  }
}

TEST_F(OrderListRows, RightOnAnOrderOffersItAndANewOneWhereThereIsOne) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withOrders(list);
    click(*form.ListView1, placeOf(*form.ListView1, 1), Qt::RightButton);
    EXPECT_EQ(popup(form), withNew(list, {detailText, messageText}));
    EXPECT_EQ(state.gPartnerId, 8) << "a new order is for that row's partner";
    EXPECT_EQ(state.gPartnerName, threeOrders[1][3]);
    form.mnuGetx->close();
  }
}

TEST_F(OrderListRows, RightOnAPartnerOffersItsOrders) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withPartners(list);
    click(*form.ListView2, placeOf(*form.ListView2, 0), Qt::RightButton);
    EXPECT_EQ(popup(form), withNew(list, {listText, messageText}));
    EXPECT_EQ(state.gPartnerId, 7);
    EXPECT_EQ(form.txtFields->text(), QString());
    form.mnuGetx->close();
  }
}

TEST_F(OrderListRows, RightOnEmptySpaceOpensNoMenu) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withOrders(list);
    click(*form.ListView1, placeOf(*form.ListView1, 0));
    click(*form.ListView1, emptySpace(*form.ListView1), Qt::RightButton);
    EXPECT_FALSE(form.mnuGetx->isVisible());
    withPartners(list);
    click(*form.ListView2, placeOf(*form.ListView2, 0));
    click(*form.ListView2, emptySpace(*form.ListView2), Qt::RightButton);
    EXPECT_FALSE(form.mnuGetx->isVisible());
  }
}

TEST_F(OrderListRows, ADoubleClickOnAnOrderOpensIt) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withOrders(list);
    doubleClick(*form.ListView1, emptySpace(*form.ListView1));
    EXPECT_EQ(openScreen(list.orderScreen), nullptr);
    EXPECT_TRUE(portal.requests().isEmpty());
    doubleClick(*form.ListView1, placeOf(*form.ListView1, 0));
    Form* order = openScreen(list.orderScreen);
    ASSERT_NE(order, nullptr) << list.name.toStdString();
    EXPECT_TRUE(order->isVisible());
    ASSERT_FALSE(targets().isEmpty());
    EXPECT_TRUE(targets().first().contains(u"&STOTHER="_s + UrlEncodeField(u"id=417"_s)))
        << targets().first().toStdString();
    EXPECT_EQ(state.*list.orderId, 417);
    EXPECT_TRUE(list.isOpen()) << "the list stays behind it";
  }
}

TEST_F(OrderListRows, TheMenuOpensTheOrder) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withOrders(list);
    click(*form.ListView1, placeOf(*form.ListView1, 2), Qt::RightButton);
    entry(form, list.detailEntry)->trigger();
    ASSERT_NE(openScreen(list.orderScreen), nullptr);
    EXPECT_TRUE(targets().first().contains(UrlEncodeField(u"id=12"_s)));
  }
}

TEST_F(OrderListRows, OnlyTheBuyerBeginsANewOrderForTheCurrentPartner) {
  const QList<OrderListCase> lists = orderLists();
  OrderList& form = withOrders(lists[0]);
  click(*form.ListView1, placeOf(*form.ListView1, 0), Qt::RightButton);
  QAction* add = entry(form, u"mnuGOHU_JH"_s);
  ASSERT_NE(add, nullptr);
  EXPECT_EQ(add->text(), newOrderText);
  add->trigger();
  EXPECT_EQ(state.gCurrentOrderId, 0);
  EXPECT_EQ(state.gPartnerId, 7);
  ASSERT_NE(openScreen(u"FrmGOHU_JH"_s), nullptr);
  EXPECT_TRUE(openScreen(u"FrmGOHU_JH"_s)->isVisible());
  for (const OrderListCase& list : {lists[1], lists[2]}) {
    EXPECT_EQ(entry(list.open(), u"mnuGOHU_JH"_s), nullptr);
  }
}

TEST_F(OrderListRows, APartnersOrdersAreListedByMenuAndDoubleClick) {
  for (const OrderListCase& list : orderLists()) {
    withOrders(list);
    OrderList& form = withPartners(list);
    const QString wanted = ordersTarget(list, u"%1=25 and %2=9"_s.arg(list.own, list.partnerId));
    portal.answerWith({page({threeOrders[2]})});
    click(*form.ListView2, placeOf(*form.ListView2, 1), Qt::RightButton);
    entry(form, list.listEntry)->trigger();
    EXPECT_EQ(targets(), QStringList{wanted});
    EXPECT_EQ(form.ListView1->itemCount(), 1) << "the list was emptied first";
    form.mnuGetx->close();
    doubleClick(*form.ListView2, placeOf(*form.ListView2, 1));
    EXPECT_EQ(targets(), QStringList({wanted, wanted}));
    EXPECT_EQ(form.txtFields->text(), u"墨香书局"_s);
    EXPECT_EQ(form.txtFields->Tag, u"9 ID"_s);
    doubleClick(*form.ListView2, emptySpace(*form.ListView2));
    EXPECT_EQ(targets(), QStringList({wanted, wanted, wanted})) << "for the current partner";
  }
}

TEST_F(OrderListRows, TheMessengerIsShownForTheRowsPartner) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = withOrders(list);
    click(*form.ListView1, placeOf(*form.ListView1, 2), Qt::RightButton);
    entry(form, u"mnuPEER"_s)->trigger();
    ASSERT_TRUE(isLoaded<frmPeer>());
    EXPECT_TRUE(defaultInstance<frmPeer>().isVisible());
    EXPECT_EQ(state.gPartnerId, 9);
    defaultInstance<frmPeer>().hideForm();
  }
}

TEST_F(OrderListRows, AnIdThatNoRowCanHaveIsNoHit) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    portal.answerWith({page({{u"99999999999"_s, u"G1"_s, u"2024-1-1"_s, u"甲"_s, u"7"_s, u""_s},
                             {u"5"_s, u"G2"_s, u"2024-1-1"_s, u"乙"_s, u"1e300"_s, u""_s}})});
    press(form.Command1);
    portal.answerWith({page({{u"99999999999"_s, u"丙"_s}})});
    press(form.Command2);
    portal.clear();
    state.*list.orderId = 3;
    state.gPartnerId = 4;
    state.gPartnerName = u"丁"_s;
    for (const int row : {0, 1}) {
      doubleClick(*form.ListView1, placeOf(*form.ListView1, row));
      click(*form.ListView1, placeOf(*form.ListView1, row), Qt::RightButton);
    }
    click(*form.ListView2, placeOf(*form.ListView2, 0));
    EXPECT_EQ(state.*list.orderId, 3);
    EXPECT_EQ(state.gPartnerId, 4);
    EXPECT_EQ(state.gPartnerName, u"丁"_s);
    EXPECT_EQ(form.txtFields->text(), QString());
    EXPECT_FALSE(form.mnuGetx->isVisible());
    EXPECT_EQ(openScreen(list.orderScreen), nullptr);
    EXPECT_TRUE(portal.requests().isEmpty());
  }
}

TEST_F(OrderListRows, OfAHundredThousandOrdersEachCanBeOpened) {
  const OrderListCase list = orderLists()[1];
  OrderList& form = list.open();
  QByteArray rows("<table start_pos>");
  for (int id = 100'000; id >= 1; --id) {
    rows += "<tr><td>" + QByteArray::number(id) +
            "</td><td>G1</td><td>2024-1-1</td><td>n</td><td>7</td><td>True</td></tr>";
  }
  portal.answerWith({rows + "</table>"});
  const double begun = workedMilliseconds();
  press(form.Command1);
  ASSERT_EQ(form.ListView1->itemCount(), 100'000);
  const double listed = workedMilliseconds();
  form.ListView1->setSelectedItem(form.ListView1->itemAt(99'999));
  click(*form.ListView1, placeOf(*form.ListView1, 99'999));
  EXPECT_EQ(state.gCurrentOrderId, 1);
  EXPECT_LT(workedMilliseconds() - listed, std::max(listed - begun, 1000.0))
      << "a press looks at its row alone";
}

TEST_F(OrderListRows, TheMarkShowsWhatThePortalSaysWhateverIsClicked) {
  OrderList& form = withOrders(orderLists().first());
  for (const int row : {0, 1}) {
    const bool before = form.ListView1->itemAt(row)->isChecked();
    const QPoint box = form.ListView1->checkRect(form.ListView1->itemAt(row)).center();
    click(*form.ListView1, box);
    EXPECT_EQ(form.ListView1->itemAt(row)->isChecked(), before);
  }
  EXPECT_EQ(state.gCurrentOrderId, 88) << "a press it is";
}

TEST_F(OrderListRows, ARowThatWentWithItsListIsNoLongerHit) {
  OrderList& form = withOrders(orderLists().first());
  QTest::mousePress(form.ListView1->viewport(), Qt::RightButton, {}, placeOf(*form.ListView1, 0));
  form.txtFields->setFocus();
  QTest::keyClick(form.txtFields->editor(), Qt::Key_Return);
  ASSERT_EQ(form.ListView1->itemCount(), 0);
  QTest::mouseRelease(form.ListView1->viewport(), Qt::RightButton, {}, QPoint(10, 10));
  EXPECT_FALSE(form.mnuGetx->isVisible());
}

TEST_F(OrderListRows, TheKeyboardDoesWhatTheMouseDoes) {
  for (const OrderListCase& list : orderLists()) {
    withOrders(list);
    OrderList& form = withPartners(list);
    form.ListView1->setSelectedItem(form.ListView1->itemAt(1));
    menuKey(*form.ListView1);
    EXPECT_EQ(popup(form), withNew(list, {detailText, messageText}));
    EXPECT_EQ(state.*list.orderId, 88);
    form.mnuGetx->close();

    form.ListView2->setSelectedItem(form.ListView2->itemAt(1));
    QTest::keyClick(form.ListView2, Qt::Key_Space);
    EXPECT_EQ(form.txtFields->Tag, u"9 ID"_s);
    EXPECT_TRUE(portal.requests().isEmpty());
    menuKey(*form.ListView2);
    EXPECT_EQ(popup(form), withNew(list, {listText, messageText}));
    form.mnuGetx->close();

    QTest::keyClick(form.ListView1, Qt::Key_Return);
    EXPECT_NE(openScreen(list.orderScreen), nullptr);
    portal.clear();
    QTest::keyClick(form.ListView2, Qt::Key_Return);
    EXPECT_EQ(targets(),
              QStringList{ordersTarget(list, u"%1=25 and %2=9"_s.arg(list.own, list.partnerId))});
  }
}

}  // namespace
