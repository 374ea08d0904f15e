#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace qinghe {

/// The three lists of orders.
enum class OrderListSide {
  Purchase,  ///< the company's own orders
  Sales,     ///< those of its customers
  Retail,    ///< those of individual buyers
};

/// Where the lists differ in what they ask of the portal. The other party is the partner.
struct OrderListQuery {
  QString own;          ///< the column of the company's own id
  QString date;         ///< the order's date
  QString partnerId;    ///< the partner's id
  QString partnerName;  ///< the partner's name
  QString orders;       ///< the table of the orders
  QString orderFields;  ///< id, number, date, partner, partner's id, done
  QString orderSort;
  QString partners;       ///< the view of the partners
  QString partnerFields;  ///< id, name
  QString partnersOwn;    ///< the company's own id among the partners
};

const OrderListQuery& orderListQuery(OrderListSide side);

/// What the search pane says.
struct OrderSearch {
  std::optional<QDate> from, to;
  QString partnerTag = QStringLiteral("0");  ///< a picked partner's key, "0" for none
  QString partnerText;                       ///< picked or typed
};

/// The condition of a search. Texts stand in it as they are; an apostrophe in one breaks it.
QString searchCriteria(OrderListSide side, qint32 own, const OrderSearch& search);
/// The condition of all orders with one partner.
QString partnerCriteria(OrderListSide side, qint32 own, qint32 partner);

/// The address that answers the orders under a condition, newest first.
QString ordersUrl(const QString& server, OrderListSide side, const QString& criteria);
/// The address that answers the company's partners.
QString partnersUrl(const QString& server, OrderListSide side, qint32 own);

}  // namespace qinghe
