#include "OrderListFixture.h"
#include "orders/documents/FrmGOHU_JH.h"
#include "portal/RequestBuilder.h"
#include "shell/PortalMethod.h"
#include "support/PortalProcess.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// A demo company, logged in at a running portal with its demo trade.
class OrderListAtPortal : public OrderListFixture {
 protected:
  OrderListAtPortal() {
    state.gWebServer = u"HTTP://"_s + running.host() + u"/"_s;
    state.gQiyeId = 1;
    const QString login = RequestBuilder(state.gWebServer, paths::login)
                              .encoded(u"USER_NO"_s, u"1001"_s)
                              .encoded(u"USER_PASS"_s, u"123456"_s)
                              .encoded(u"SOFT_VER"_s, u"1.0"_s)
                              .url();
    EXPECT_TRUE(readPortal(login, EmptyAnswer::IsFailure, [](GetHtml& html) {
      html.GetRowItem();
      return true;
    }));
  }

  static QStringList dates(const ListView& list) {
    QStringList days;
    for (int row = 0; row < list.itemCount(); ++row) {
      const QStringList parts = list.itemAt(row)->subItem(1).split(u'-');
      days << parts.value(0) + parts.value(1).rightJustified(2, u'0') +
                  parts.value(2).rightJustified(2, u'0');
    }
    return days;
  }

  PortalProcess running;
};

TEST_F(OrderListAtPortal, FindsOrdersNewestFirstAndNarrowsThemByDateAndPartner) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    takeAllDates(form);
    press(form.Command1);
    const int all = form.ListView1->itemCount();
    EXPECT_GT(all, 5) << list.name.toStdString();
    QStringList found = dates(*form.ListView1);
    QStringList sorted = found;
    std::sort(sorted.begin(), sorted.end(), std::greater<>());
    EXPECT_EQ(found, sorted);

    press(form.Command2);
    ASSERT_GT(form.ListView2->itemCount(), 1);
    const QString partner = form.ListView2->itemAt(0)->text();
    click(*form.ListView2, placeOf(*form.ListView2, 0));
    press(form.Command1);
    const int ofPartner = form.ListView1->itemCount();
    EXPECT_GT(ofPartner, 0);
    EXPECT_LT(ofPartner, all);
    for (int row = 0; row < ofPartner; ++row) {
      EXPECT_EQ(form.ListView1->itemAt(row)->subItem(2), partner);
    }
    doubleClick(*form.ListView2, placeOf(*form.ListView2, 0));
    EXPECT_EQ(form.ListView1->itemCount(), ofPartner);

    form.txtFields->setText(partner.left(2));
    form.DTPickerFrom->setValue(QDate(2026, 1, 1));
    form.DTPickerTo->setValue(QDate(2026, 12, 31));
    press(form.Command1);
    EXPECT_GE(form.ListView1->itemCount(), ofPartner) << "by a part of the name";
    form.DTPickerFrom->setValue(QDate(2027, 1, 1));
    press(form.Command1);
    EXPECT_EQ(form.ListView1->itemCount(), 0);
  }
}

TEST_F(OrderListAtPortal, OpensAnOrderWithItsLines) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    takeAllDates(form);
    press(form.Command1);
    ASSERT_GT(form.ListView1->itemCount(), 3);
    const ListItem* row = form.ListView1->itemAt(3);
    const QString number = row->text();
    const QString partner = row->subItem(2);
    doubleClick(*form.ListView1, placeOf(*form.ListView1, 3));
    auto* order = dynamic_cast<OrderScreen*>(openScreen(list.orderScreen));
    ASSERT_NE(order, nullptr);
    EXPECT_EQ(order->txtFields(1)->text(), number);
    EXPECT_EQ(order->txtFields(list.newEntry.isEmpty() ? 3 : 2)->text(), partner);
    EXPECT_GT(order->ListView1->itemCount(), 0);
    EXPECT_TRUE(order->unload());
  }
}

TEST_F(OrderListAtPortal, ANewOrderIsForTheRowsPartner) {
  OrderList& form = orderLists().first().open();
  takeAllDates(form);
  press(form.Command1);
  click(*form.ListView1, placeOf(*form.ListView1, 0), Qt::RightButton);
  const QString partner = form.ListView1->itemAt(0)->subItem(2);
  const QString partnerId = form.ListView1->itemAt(0)->subItem(3);
  entry(form, u"mnuGOHU_JH"_s)->trigger();
  auto& order = defaultInstance<FrmGOHU_JH>();
  EXPECT_EQ(order.txtFields(1)->Tag, u"0"_s);
  EXPECT_EQ(order.txtFields(2)->text(), partner);
  EXPECT_EQ(order.txtFields(2)->Tag, partnerId);
  EXPECT_EQ(order.ListView1->itemCount(), 0);
}

TEST_F(OrderListAtPortal, AnApostropheInTheNameFindsNothingAndHarmsNothing) {
  for (const OrderListCase& list : orderLists()) {
    OrderList& form = list.open();
    takeAllDates(form);
    form.txtFields->setText(u"' or '1'='1"_s);
    press(form.Command1);
    EXPECT_EQ(form.ListView1->itemCount(), 0);
    form.txtFields->setText({});
    press(form.Command1);
    EXPECT_GT(form.ListView1->itemCount(), 0);
  }
}

}  // namespace
