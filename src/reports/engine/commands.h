#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace qinghe {

/// Which side of its orders the company stands on: the customer's or the supplier's.
enum class TradeSide { Purchase, Sales };

/// What a wizard's user narrows the orders by: pieces of a condition that begin with " and ", empty
/// when not set. Names stand in them as they are; an apostrophe in one breaks the command.
struct StatisticsFilter {
  QString rangeClause;  ///< dates and partner
  QString lebiClause;   ///< the category; counts only in the statistics by category
  QString ximuClause;   ///< the goods; counts only in the details
};

enum class StatisticsReport { None, Category, Partner, Month, Detail };

/// The shape command that feeds the report; empty for `None`. `own` is the company.
QString statisticsCommand(StatisticsReport report, TradeSide side, qint32 own,
                          const StatisticsFilter& filter);

/// The ends of the range that are set; each includes its date at midnight.
QString dateClause(TradeSide side, const std::optional<QDate>& from,
                   const std::optional<QDate>& to);
QString partnerClause(TradeSide side, qint32 partner);
QString categoryClause(const QString& category);
QString goodsClause(const QString& goods);

/// What the company's orders of that side hold: their categories (column `lebi`), the goods of one
/// (`ximu`), and the other parties.
QString categoriesQuery(TradeSide side, qint32 own);
QString goodsQuery(TradeSide side, qint32 own, const QString& category);
QString partnersQuery(TradeSide side, qint32 own);
/// The columns of `partnersQuery`.
QString partnerIdColumn(TradeSide side);
QString partnerNameColumn(TradeSide side);

}  // namespace qinghe
