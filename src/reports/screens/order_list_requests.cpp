#include "reports/screens/order_list_requests.h"

#include "portal/RequestBuilder.h"
#include "values/dates.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

const OrderListQuery& orderListQuery(OrderListSide side) {
  // The last field tells whether the own side is done: goods received, or goods shipped.
  static const OrderListQuery purchase{
      .own = u"kehu_id"_s,
      .date = u"ghrq"_s,
      .partnerId = u"gosh_id"_s,
      .partnerName = u"gosh"_s,
      .orders = u"GOHU"_s,
      .orderFields = u"id,gohu_no,ghrq,gosh,gosh_id,sh,"_s,
      .orderSort = u"GHRQ DESC"_s,
      .partners = u"vGSKH"_s,
      .partnerFields = u"gosh_id,gosh,"_s,
      .partnersOwn = u"KEHU_ID"_s,
  };
  static const OrderListQuery sales{
      .own = u"gosh_id"_s,
      .date = u"ghrq"_s,
      .partnerId = u"kehu_id"_s,
      .partnerName = u"kehu"_s,
      .orders = u"GOHU"_s,
      .orderFields = u"id,gohu_no,ghrq,kehu,kehu_id,fh,"_s,
      .orderSort = u"GHRQ DESC"_s,
      .partners = u"vGSKH"_s,
      .partnerFields = u"kehu_id,kehu,"_s,
      .partnersOwn = u"GOSH_ID"_s,
  };
  static const OrderListQuery retail{
      .own = u"qyxx_id"_s,
      .date = u"dhrq"_s,
      .partnerId = u"yhxx_id"_s,
      .partnerName = u"yhxx"_s,
      .orders = u"DIHU"_s,
      .orderFields = u"id,dihu_no,dhrq,yhxx,yhxx_id,fh,"_s,
      .orderSort = u"DHRQ DESC"_s,
      .partners = u"vQYYH"_s,
      .partnerFields = u"yhxx_id,yhxx,"_s,
      .partnersOwn = u"QYXX_ID"_s,
  };
  switch (side) {
    case OrderListSide::Sales:
      return sales;
    case OrderListSide::Retail:
      return retail;
    case OrderListSide::Purchase:
      break;
  }
  return purchase;
}

QString searchCriteria(OrderListSide side, qint32 own, const OrderSearch& search) {
  const OrderListQuery& query = orderListQuery(side);
  QString criteria = query.own + u'=' + textOf(own);
  if (search.from) criteria += u" and "_s + query.date + u">="_s + conditionDate(*search.from);
  if (search.to) criteria += u" and "_s + query.date + u"<="_s + conditionDate(*search.to);
  // A picked partner is asked for by id and by name.
  if (search.partnerTag != u"0") {
    criteria += u" and "_s + query.partnerId + u'=' + textOf(Val(search.partnerTag));
  }
  if (!search.partnerText.isEmpty()) {
    criteria += u" and "_s + query.partnerName + u" like '%"_s + search.partnerText + u"%'"_s;
  }
  return criteria;
}

QString partnerCriteria(OrderListSide side, qint32 own, qint32 partner) {
  const OrderListQuery& query = orderListQuery(side);
  return query.own + u'=' + textOf(own) + u" and "_s + query.partnerId + u'=' + textOf(partner);
}

QString ordersUrl(const QString& server, OrderListSide side, const QString& criteria) {
  const OrderListQuery& query = orderListQuery(side);
  return RequestBuilder(server, paths::productRows)
      .encoded(u"STABLE"_s, query.orders)
      .encoded(u"STRDATA"_s, query.orderFields)
      .encoded(u"STOTHER"_s, criteria)
      .encoded(u"STORDER"_s, query.orderSort)
      .url();
}

QString partnersUrl(const QString& server, OrderListSide side, qint32 own) {
  const OrderListQuery& query = orderListQuery(side);
  return RequestBuilder(server, paths::productRows)
      .encoded(u"STABLE"_s, query.partners)
      .encoded(u"STRDATA"_s, query.partnerFields)
      .encoded(u"STOTHER"_s, query.partnersOwn + u'=' + textOf(own))
      .url();
}

}  // namespace qinghe
