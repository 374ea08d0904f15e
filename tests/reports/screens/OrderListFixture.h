#pragma once

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <functional>

#include "portal/url_encode.h"
#include "reports/screens/FrmQueryDH_XS.h"
#include "reports/screens/FrmQueryGH_JH.h"
#include "reports/screens/FrmQueryGH_XS.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// One of the three lists with what it is known by.
struct OrderListCase {
  QString name;
  std::function<OrderList&()> open;
  std::function<bool()> isOpen;
  QString caption, partnerTitle;
  QString orders, fields, sort;               ///< of its orders
  QString partners, partnerFields, ownUpper;  ///< of its partners
  QString own, date, partnerId, partnerName;  ///< columns in conditions
  QString orderIcon, partnerIcon;
  QString newEntry, listEntry, detailEntry;
  qint32 AppState::*orderId;
  QString orderScreen;
};

template <class Screen>
OrderListCase listCase(OrderListCase row) {
  row.open = []() -> OrderList& { return defaultInstance<Screen>(); };
  row.isOpen = [] { return isLoaded<Screen>(); };
  return row;
}

inline QList<OrderListCase> orderLists() {
  using namespace Qt::StringLiterals;
  return {listCase<FrmQueryGH_JH>({.name = u"FrmQueryGH_JH"_s,
                                   .open = {},
                                   .isOpen = {},
                                   .caption = u"商品进货订单"_s,
                                   .partnerTitle = u"供商"_s,
                                   .orders = u"GOHU"_s,
                                   .fields = u"id,gohu_no,ghrq,gosh,gosh_id,sh,"_s,
                                   .sort = u"GHRQ DESC"_s,
                                   .partners = u"vGSKH"_s,
                                   .partnerFields = u"gosh_id,gosh,"_s,
                                   .ownUpper = u"KEHU_ID"_s,
                                   .own = u"kehu_id"_s,
                                   .date = u"ghrq"_s,
                                   .partnerId = u"gosh_id"_s,
                                   .partnerName = u"gosh"_s,
                                   .orderIcon = u"Gohu"_s,
                                   .partnerIcon = u"Qyxx"_s,
                                   .newEntry = u"mnuGOHU_JH"_s,
                                   .listEntry = u"mnuListGOHU"_s,
                                   .detailEntry = u"mnuDetailGOHU"_s,
                                   .orderId = &AppState::gCurrentOrderId,
                                   .orderScreen = u"FrmGOHU_JH"_s}),
          listCase<FrmQueryGH_XS>({.name = u"FrmQueryGH_XS"_s,
                                   .open = {},
                                   .isOpen = {},
                                   .caption = u"商品销售订单"_s,
                                   .partnerTitle = u"客户"_s,
                                   .orders = u"GOHU"_s,
                                   .fields = u"id,gohu_no,ghrq,kehu,kehu_id,fh,"_s,
                                   .sort = u"GHRQ DESC"_s,
                                   .partners = u"vGSKH"_s,
                                   .partnerFields = u"kehu_id,kehu,"_s,
                                   .ownUpper = u"GOSH_ID"_s,
                                   .own = u"gosh_id"_s,
                                   .date = u"ghrq"_s,
                                   .partnerId = u"kehu_id"_s,
                                   .partnerName = u"kehu"_s,
                                   .orderIcon = u"Gohu"_s,
                                   .partnerIcon = u"Xixi"_s,
                                   .newEntry = {},
                                   .listEntry = u"mnuListGOHU"_s,
                                   .detailEntry = u"mnuDetailGOHU"_s,
                                   .orderId = &AppState::gCurrentOrderId,
                                   .orderScreen = u"FrmGOHU_XS"_s}),
          listCase<FrmQueryDH_XS>({.name = u"FrmQueryDH_XS"_s,
                                   .open = {},
                                   .isOpen = {},
                                   .caption = u"商品销售订单"_s,
                                   .partnerTitle = u"客户"_s,
                                   .orders = u"DIHU"_s,
                                   .fields = u"id,dihu_no,dhrq,yhxx,yhxx_id,fh,"_s,
                                   .sort = u"DHRQ DESC"_s,
                                   .partners = u"vQYYH"_s,
                                   .partnerFields = u"yhxx_id,yhxx,"_s,
                                   .ownUpper = u"QYXX_ID"_s,
                                   .own = u"qyxx_id"_s,
                                   .date = u"dhrq"_s,
                                   .partnerId = u"yhxx_id"_s,
                                   .partnerName = u"yhxx"_s,
                                   .orderIcon = u"Dihu"_s,
                                   .partnerIcon = u"LK"_s,
                                   .newEntry = {},
                                   .listEntry = u"mnuListDIHU"_s,
                                   .detailEntry = u"mnuDetailDIHU"_s,
                                   .orderId = &AppState::gRetailOrderId,
                                   .orderScreen = u"FrmDIHU_XS"_s})};
}

/// An order list of company 25, driven through its controls, before a scripted portal.
class OrderListFixture : public ClientFixture {
 protected:
  OrderListFixture() {
    beCompany(1, 0);
    state.peerPort = 0;
    state.peerAddress = QStringLiteral("127.0.0.1");
    portal.answerWith({emptyPage()});
  }

  static QByteArray emptyPage() { return "<html></html>"; }

  static void press(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }
  static void pressExit(OrderList& form) {
    auto* button = form.Toolbar1->widgetForAction(form.Toolbar1->button(QStringLiteral("Exit")));
    QTest::mouseClick(button, Qt::LeftButton);
  }

  static QPoint placeOf(const ListView& list, int row) {
    return list.cellRect(list.itemAt(row)).center();
  }
  /// Below all rows.
  static QPoint emptySpace(const ListView& list) { return {20, list.viewport()->height() - 5}; }
  static void click(ListView& list, const QPoint& place, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(list.viewport(), button, Qt::NoModifier, place);
  }
  static void doubleClick(ListView& list, const QPoint& place) {
    click(list, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, place);
  }

  /// The captions that the open popup shows, separators aside; nothing when it is not open.
  static QStringList popup(const OrderList& form) {
    QStringList texts;
    if (!form.mnuGetx->isVisible()) return texts;
    for (const QAction* entry : form.mnuGetx->actions()) {
      if (entry->isVisible() && !entry->isSeparator()) texts << entry->text();
    }
    return texts;
  }
  static QAction* entry(const OrderList& form, const QString& name) {
    return form.mnuGetx->findChild<QAction*>(name);
  }

  /// Clears both dates, which are today at first.
  static void takeAllDates(OrderList& form) {
    form.DTPickerFrom->setValue(std::nullopt);
    form.DTPickerTo->setValue(std::nullopt);
  }

  static QString rowsTarget(const QString& table, const QString& fields, const QString& condition,
                            const QString& order = {}) {
    QString target = QStringLiteral("/_vti_product/_vti_detail_field_s.asp?STABLE=") +
                     UrlEncodeField(table) + QStringLiteral("&STRDATA=") + UrlEncodeField(fields) +
                     QStringLiteral("&STOTHER=") + UrlEncodeField(condition);
    if (!order.isEmpty()) target += QStringLiteral("&STORDER=") + UrlEncodeField(order);
    return target;
  }
  static QString ordersTarget(const OrderListCase& list, const QString& condition) {
    return rowsTarget(list.orders, list.fields, condition, list.sort);
  }
  static QString partnersTarget(const OrderListCase& list) {
    return rowsTarget(list.partners, list.partnerFields, list.ownUpper + QStringLiteral("=25"));
  }

  static Form* openScreen(const QString& name) {
    for (Form* form : formsState().registry.loaded()) {
      if (form->objectName() == name) return form;
    }
    return nullptr;
  }

  const QList<QStringList> threeOrders = {
      {QStringLiteral("417"), QStringLiteral("G2024311-3"), QStringLiteral("2024-3-11"),
       QStringLiteral("云帆图书发行"), QStringLiteral("7"), QStringLiteral("True")},
      {QStringLiteral("88"), QStringLiteral("G202439-1"), QStringLiteral("2024-3-9"),
       QStringLiteral("O'Neil & 苏"), QStringLiteral("8"), QStringLiteral("False")},
      {QStringLiteral("12"), QStringLiteral("G2024115-"), QStringLiteral("2024-1-15"),
       QStringLiteral("墨香书局"), QStringLiteral("9"), QStringLiteral("1")}};
  const QList<QStringList> twoPartners = {{QStringLiteral("7"), QStringLiteral("云帆图书发行")},
                                          {QStringLiteral("9"), QStringLiteral("墨香书局")}};

  /// Opens the list with the three orders found.
  OrderList& withOrders(const OrderListCase& list) {
    OrderList& form = list.open();
    takeAllDates(form);
    portal.answerWith({page(threeOrders)});
    press(form.Command1);
    EXPECT_EQ(form.ListView1->itemCount(), 3);
    portal.answerWith({emptyPage()});
    portal.clear();
    return form;
  }
  /// Opens the list with two partners.
  OrderList& withPartners(const OrderListCase& list) {
    OrderList& form = list.open();
    portal.answerWith({page(twoPartners)});
    press(form.Command2);
    EXPECT_EQ(form.ListView2->itemCount(), 2);
    portal.answerWith({emptyPage()});
    portal.clear();
    return form;
  }
};

}  // namespace qinghe
