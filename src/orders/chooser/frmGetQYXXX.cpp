#include "orders/chooser/frmGetQYXXX.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

DetailKind enterprise() {
  return {
      .form = u"frmGetQYXXX"_s,
      .caption = u"发行商详细信息"_s,
      .nameWidth = 1600,
      .path = paths::loginRows,
      .table = u"QYXX"_s,
      .fields = u"qiye,dizh,yobi,fuzh,lixi,dihu,chzh,shji,huji,zhye,email,khyh,yhzh,shha,jish,"_s,
      .names = {u"名称"_s, u"地址"_s, u"邮编"_s, u"负责人"_s, u"联系人"_s, u"电话"_s, u"传真"_s,
                u"手机"_s, u"呼机"_s, u"主页"_s, u"信箱"_s, u"开户银行"_s, u"银行帐户"_s, u"税号"_s,
                u"介绍"_s},
  };
}

}  // namespace

frmGetQYXXX::frmGetQYXXX() : DetailForm(enterprise()) {}

qint32 frmGetQYXXX::recordId() const {
  return app().gPartnerId;
}

}  // namespace qinghe
