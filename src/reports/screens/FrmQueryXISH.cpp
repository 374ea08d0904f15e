#include "reports/screens/FrmQueryXISH.h"

namespace qinghe {

using namespace Qt::StringLiterals;

FrmQueryXISH::FrmQueryXISH()
    : StatisticsWizard({
          .form = u"FrmQueryXISH"_s,
          .caption = u"订单销售统计"_s,
          .icon = u"mnuQueryXish"_s,
          .side = TradeSide::Sales,
          .partnerLabel = u"销售单位"_s,
          .numberLabel = u"销售单号"_s,
          .stockLabel = u"出库"_s,
          .numberBox = u"TextXish_no"_s,
          .options = {{u"按月分组"_s},
                      {u"按商品分类"_s, StatisticsReport::Category},
                      {u"按客户分组"_s, StatisticsReport::Partner},
                      {u"按客户每日分组"_s},
                      {u"按库房分组"_s},
                      {u"按库房每日分组"_s},
                      {u"按业务员分组"_s},
                      {u"按月分组"_s, StatisticsReport::Month},
                      {u"商品明细"_s},
                      {u"商品明细"_s, StatisticsReport::Detail}},
          .groupings = 8,
      }) {}

}  // namespace qinghe
