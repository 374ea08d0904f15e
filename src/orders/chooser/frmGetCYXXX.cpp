#include "orders/chooser/frmGetCYXXX.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

DetailKind brand() {
  return {
      .form = u"frmGetCYXXX"_s,
      .caption = u"品牌详细信息"_s,
      .nameWidth = 1200,
      .path = paths::productRows,
      .table = u"MUMU"_s,
      .fields = u"ximu,ximu_no,jigex,zhko,jish,"_s,
      .names = {u"名称"_s, u"编号"_s, u"价格"_s, u"说明"_s, u"介绍"_s},
  };
}

}  // namespace

frmGetCYXXX::frmGetCYXXX() : DetailForm(brand()) {}

qint32 frmGetCYXXX::recordId() const {
  // The search leaves its row's brand in `gBrandId`; this screen does not look there and stays
  // empty.
  return app().gChosenProducerId;
}

}  // namespace qinghe
