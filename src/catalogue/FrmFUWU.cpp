#include "catalogue/FrmFUWU.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

EditorLook servicesLook() {
  return {
      .form = u"FrmFUWU"_s,
      .caption = u"服务登记(本地)"_s,
      .listColumn = u"商品名称"_s,
      .listColumnInset = 4,
      .rowIcon = u"Ximu"_s,
      .newRowText = u"新添服务"_s,
      .searchBox = false,
      // The price has no rule here: anything may be typed.
      .fields =
          {{.index = 0, .label = u"行    业"_s, .industry = true, .labelName = u"Label7"_s},
           {.index = 1, .label = u"编    号"_s, .afterAdd = u"NO"_s, .labelName = u"Label3"_s},
           {.index = 2,
            .label = u"名    称"_s,
            .afterAdd = u"新添服务"_s,
            .labelName = u"Label6"_s},
           {.index = 3, .label = u"价    格"_s, .afterAdd = u"0"_s, .labelName = u"Label5"_s},
           {.index = 4, .label = u"说    明"_s, .afterAdd = u"说明"_s, .labelName = u"Label1"_s},
           {.index = 8, .label = u"介    绍"_s, .memo = true, .labelName = u"Label4"_s},
           {.index = 9, .label = {}, .accessibleName = u"属性"_s, .keptByAdd = true}},
      .buttons = {{u"Add"_s, u"增加"_s, u"Add"_s},
                  {u"Save"_s, u"保存"_s, u"Save"_s},
                  {u"Exit"_s, u"退出"_s, u"Exit"_s}},
  };
}

}  // namespace

FrmFUWU::FrmFUWU() : LocalRecordEditor(servicesLook(), localServices()) {}

}  // namespace qinghe
