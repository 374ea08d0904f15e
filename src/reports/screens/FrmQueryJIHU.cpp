#include "reports/screens/FrmQueryJIHU.h"

namespace qinghe {

using namespace Qt::StringLiterals;

FrmQueryJIHU::FrmQueryJIHU()
    : StatisticsWizard({
          .form = u"FrmQueryJIHU"_s,
          .caption = u"订单进货统计"_s,
          .icon = u"mnuQueryJIHU"_s,
          .side = TradeSide::Purchase,
          .partnerLabel = u"进货单位"_s,
          .numberLabel = u"进货单号"_s,
          .stockLabel = u"入库"_s,
          .numberBox = u"TextJihu_no"_s,
          .options = {{u"按月分组"_s},
                      {u"按商品分类"_s, StatisticsReport::Category},
                      {u"按供商分组"_s, StatisticsReport::Partner},
                      {u"按库房分组"_s},
                      {u"按业务员分组"_s},
                      {u"按月分组"_s, StatisticsReport::Month},
                      {u"商品明细表"_s, StatisticsReport::Detail}},
          .groupings = 6,
      }) {}

}  // namespace qinghe
