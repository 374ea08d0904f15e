#pragma once

#include <QList>
#include <QString>

#include "orders/OrderLineRow.h"

namespace qinghe {

/// The columns of the search's result list. The last two have width 0: they travel with the row.
enum FoundColumn {
  FoundNumber,
  FoundName,
  FoundPrice,
  FoundDiscount,
  FoundEnterprise,
  FoundBrand,
  FoundEnterpriseId,
  FoundBrandId,
  FoundColumnCount
};

/// Titles and widths in the list's own units, from left to right.
const QList<LineColumnTitle>& foundColumns();

/// What is asked for by typed words, which go in as they stand: a quote in one is the portal's to
/// refuse. Words that are empty are left out; empty when all are.
QString goodsCondition(const QString& name, const QString& category, const QString& attribute);
/// Says nothing of what is live: enterprises that have left the portal are found, too.
QString enterpriseCondition(const QString& name, const QString& address);
QString brandCondition(const QString& name, const QString& introduction);

/// Live goods with this value in a column; `value` stands in the condition as it is.
QString liveGoodsWith(const QString& column, const QString& value);

}  // namespace qinghe
