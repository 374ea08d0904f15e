#include "reports/engine/commands.h"

#include "values/dates.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// Where the commands of the two sides differ. Their spelling is not of one hand; it is kept.
struct Side {
  QString own;          ///< the company's column
  QString partner;      ///< the other party's
  QString partnerKey;   ///< the same where groups are made
  QString partnerName;  ///< the other party's name
  QString header;       ///< the order's table in conditions
  QString partnerInConditions;
  QString categoriesOf;  ///< the company's column among the categories
  QString partners;      ///< the groups by partner, up to the company's number
  QString partnersOrder;
};

const Side& sideOf(TradeSide side) {
  static const Side purchase{
      .own = u"kehu_id"_s,
      .partner = u"gosh_id"_s,
      .partnerKey = u"GOSH_ID"_s,
      .partnerName = u"gosh"_s,
      .header = u"gohu"_s,
      .partnerInConditions = u"gosh_id"_s,
      .categoriesOf = u"GOHU.kehu_id"_s,
      .partners = u"SELECT DISTINCT GOSH_ID, GOSH AS DAWE From GOHU Where kehu_id ="_s,
      .partnersOrder = u"GOSH_ID"_s,
  };
  static const Side sales{
      .own = u"gosh_id"_s,
      .partner = u"kehu_id"_s,
      .partnerKey = u"KEHU_ID"_s,
      .partnerName = u"kehu"_s,
      .header = u"Gohu"_s,
      .partnerInConditions = u"Kehu_id"_s,
      .categoriesOf = u"gosh_id"_s,
      .partners =
          u"SELECT DISTINCT GOHU.KEHU_ID, GOHU.KEHU AS DAWE From GOHU where GOHU.gosh_id="_s,
      .partnersOrder = u"GOHU.KEHU_ID"_s,
  };
  return side == TradeSide::Purchase ? purchase : sales;
}

/// A query of a shape with the name of its set.
QString set(const QString& query, const QString& name) {
  return u'{' + query + u"}  AS "_s + name;
}

/// Three levels: groups, their goods, and the goods' lines. Each level stands under its own name
/// as a set and again as a child.
struct Levels {
  QString groups, goods, lines;
  QString name;  ///< of the groups; the other two add to it
  QString groupRelation, lineRelation;
};

QString shapeOf(const Levels& levels) {
  const QString goods = levels.name + u"_ximu"_s;
  const QString lines = goods + u"_goku"_s;
  return u"SHAPE "_s + set(levels.groups, levels.name) + u" APPEND (( SHAPE "_s +
         set(levels.goods, goods) + u" APPEND ("_s + set(levels.lines, lines) + u" RELATE "_s +
         levels.lineRelation + u") AS "_s + lines + u") AS "_s + goods + u" RELATE "_s +
         levels.groupRelation + u") AS "_s + goods;
}

/// Returns stand among the plain columns as negatives; these show how much of them is returns.
QString returns() {
  return u"iif(goku.SHLI<0,goku.SHLI,0) as thsl,iif(goku.SHLI<0,goku.JINE,0) as thje,"
         u"iif(goku.SHLI<0,goku.YNSH,0) as thys"_s;
}

/// The goods bought or sold, once for each partner.
QString goodsOfPartners(const Side& side, const QString& columns, const QString& conditions) {
  return u"SELECT DISTINCT GOHU."_s + side.partnerKey + u", "_s + columns +
         u"GOKU.XIMU_ID, GOKU.XIMU FROM GOHU, GOKU WHERE GOHU.ID=GOKU.GOHU_ID AND GOHU."_s +
         side.own + u'=' + conditions + u" ORDER BY GOHU."_s + side.partnerKey + u",GOKU.XIMU_ID"_s;
}

QString byCategory(const Side& side, const QString& own, const StatisticsFilter& filter) {
  return shapeOf(
      {.groups = u"SELECT DISTINCT GOKU.LEBI From GOHU, GOKU Where GOHU.id = GOKU.GOHU_ID AND  "_s +
                 side.categoriesOf + u'=' + own + filter.lebiClause + u" ORDER BY GOKU.LEBI"_s,
       .goods = goodsOfPartners(side, u"GOKU.LEBI,"_s, own + filter.rangeClause),
       .lines =
           u"SELECT goku.XIMU_ID,gohu.ghrq,goku.DAWE,goku.SHLI,goku.JIGE,goku.JINE,goku.YNSH,"_s +
           returns() + u"  FROM gohu,goku WHERE gohu.ID=goku.gohu_ID and gohu."_s + side.own +
           u'=' + own + filter.rangeClause + u' ',
       .name = u"Cmd_goku_lebi"_s,
       .groupRelation = u"'lebi' TO 'lebi'"_s,
       .lineRelation = u"'ximu_id' TO 'XIMU_ID'"_s});
}

/// The lines of the statistics by partner and by month, from the group's key on.
QString linesWithKey(const QString& key) {
  return u"SELECT "_s + key +
         u",goku.ximu_id,gohu.ghrq, goku.DAWE, goku.SHLI, goku.JIGE, goku.JINE,goku.YNSH ,"_s +
         returns() + u"  FROM gohu,goku WHERE gohu.ID =goku.gohu_ID"_s;
}

QString relation(const QString& column) {
  return u'\'' + column + u"' TO '"_s + column + u'\'';
}

QString byPartner(const Side& side, const QString& own, const StatisticsFilter& filter) {
  return shapeOf(
      {.groups = side.partners + own + filter.rangeClause + u" ORDER BY "_s + side.partnersOrder,
       .goods = goodsOfPartners(side, {}, own + filter.rangeClause),
       .lines = linesWithKey(u"gohu."_s + side.partner) + u" and gohu."_s + side.own + u'=' + own +
                filter.rangeClause + u' ',
       .name = u"Cmdgoku_gosh"_s,
       .groupRelation = relation(side.partner),
       .lineRelation = relation(side.partner) + u",'ximu_id' TO 'ximu_id'"_s});
}

QString byMonth(const Side& side, const QString& own, const StatisticsFilter& filter) {
  const QString month = u"year(gohu.ghrq)&'年'&month(gohu.ghrq)&'月' as "_s;
  const QString key = u"month_id"_s;
  return shapeOf(
      {.groups = u"select distinct "_s + month + u' ' + key + u" from gohu where "_s + side.own +
                 u'=' + own + filter.rangeClause + u' ',
       .goods =
           u"SELECT distinct "_s + month + key +
           u",goku.ximu_id,goku.ximu FROM gohu, goku WHERE gohu.ID = goku.gohu_ID AND gohu."_s +
           side.own + u'=' + own + filter.rangeClause + u' ',
       // The lines name no company: the relation to the goods above is all that restricts them.
       .lines = linesWithKey(month + key) + filter.rangeClause + u' ',
       .name = u"Cmdgoku_month"_s,
       .groupRelation = relation(key),
       .lineRelation = relation(key) + u",'ximu_id' TO 'ximu_id'"_s});
}

QString details(TradeSide tradeSide, const QString& own, const StatisticsFilter& filter) {
  const Side& side = sideOf(tradeSide);
  // Purchases list the chosen goods alone; sales list all goods, and lines for the chosen ones.
  const QString ofGoods = tradeSide == TradeSide::Purchase ? filter.ximuClause : QString();
  const QString lines = u"Cmd_ximu_goku"_s;
  return u"SHAPE "_s +
         set(goodsOfPartners(side, {}, own + ofGoods + filter.rangeClause), u"Cmd_Ximu_R"_s) +
         u" APPEND ("_s +
         // In both directions the lines are those of orders in which the company is the customer.
         set(u"select goku.ximu_id,goku.ximu,gohu.gohu_no,gohu.ghrq,gohu."_s + side.partnerName +
                 u" as dawe,goku.shli,goku.jige,goku.jine,goku.ynsh,goku.baxi,goku.ling from "
                 u"gohu,goku where gohu.id=goku.gohu_id and gohu.kehu_id="_s +
                 own + filter.rangeClause + filter.ximuClause,
             lines) +
         u" RELATE 'XIMU_ID' TO 'ximu_id') AS "_s + lines;
}

}  // namespace

QString statisticsCommand(StatisticsReport report, TradeSide side, qint32 own,
                          const StatisticsFilter& filter) {
  switch (report) {
    case StatisticsReport::Category:
      return byCategory(sideOf(side), textOf(own), filter);
    case StatisticsReport::Partner:
      return byPartner(sideOf(side), textOf(own), filter);
    case StatisticsReport::Month:
      return byMonth(sideOf(side), textOf(own), filter);
    case StatisticsReport::Detail:
      return details(side, textOf(own), filter);
    case StatisticsReport::None:
      break;
  }
  return {};
}

QString dateClause(TradeSide side, const std::optional<QDate>& from,
                   const std::optional<QDate>& to) {
  const QString column = u" and "_s + sideOf(side).header + u".ghrq"_s;
  QString clause;
  if (from) clause += column + u">="_s + conditionDate(*from);
  if (to) clause += column + u"<="_s + conditionDate(*to);
  return clause;
}

QString partnerClause(TradeSide side, qint32 partner) {
  const Side& names = sideOf(side);
  return u" and "_s + names.header + u'.' + names.partnerInConditions + u'=' + textOf(partner);
}

QString categoryClause(const QString& category) {
  return u" and goku.lebi='"_s + category + u'\'';
}

QString goodsClause(const QString& goods) {
  return u" and goku.ximu='"_s + goods + u'\'';
}

QString categoriesQuery(TradeSide side, qint32 own) {
  return u"SELECT distinct lebi FROM vLEBI WHERE "_s + sideOf(side).own.toUpper() + u'=' +
         textOf(own);
}

QString goodsQuery(TradeSide side, qint32 own, const QString& category) {
  const QString view = side == TradeSide::Purchase ? u"vXIMU"_s : u"vximu"_s;
  return u"SELECT distinct ximu FROM "_s + view + u" WHERE "_s + sideOf(side).own + u'=' +
         textOf(own) + u" and lebi='"_s + category + u'\'';
}

QString partnersQuery(TradeSide side, qint32 own) {
  const Side& names = sideOf(side);
  return u"SELECT distinct "_s + names.partner + u',' + names.partnerName +
         u" FROM vgskh where "_s + names.own + u'=' + textOf(own);
}

QString partnerIdColumn(TradeSide side) {
  return sideOf(side).partner;
}

QString partnerNameColumn(TradeSide side) {
  return sideOf(side).partnerName;
}

}  // namespace qinghe
