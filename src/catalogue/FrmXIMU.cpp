#include "catalogue/FrmXIMU.h"

#include "forms/Prompts.h"
#include "reports/ReportWindow.h"
#include "shell/AppState.h"
#include "shell/help.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

EditorLook goodsLook() {
  return {
      .form = u"FrmXIMU"_s,
      .caption = u"商品登记(本地)"_s,
      .listColumn = u"商品名称"_s,
      .listColumnInset = 4,
      .rowIcon = u"Ximu"_s,
      .newRowText = u"新添商品"_s,
      .searchBox = true,
      .fields = {{.index = 0, .label = u"行    业"_s, .industry = true},
                 {.index = 1, .label = u"编    号"_s, .afterAdd = u"NO"_s},
                 {.index = 2, .label = u"名    称"_s, .afterAdd = u"新添商品"_s},
                 {.index = 3, .label = u"价    格"_s, .afterAdd = u"0"_s, .numeric = true},
                 {.index = 4, .label = u"说    明"_s, .afterAdd = u"说明"_s},
                 {.index = 5, .label = u"箱 /  包"_s, .afterAdd = u"1"_s, .numeric = true},
                 {.index = 6, .label = u"类    别"_s},
                 {.index = 7, .label = u"品    牌"_s},
                 {.index = 8, .label = u"介    绍"_s, .memo = true},
                 {.index = 9, .label = {}, .accessibleName = u"属性"_s}},
      .buttons = {{u"Print"_s, u"打印"_s, u"Print"_s},
                  {u"Add"_s, u"增加"_s, u"Add"_s},
                  {u"Save"_s, u"保存"_s, u"Save"_s},
                  {u"Exit"_s, u"退出"_s, u"Exit"_s}},
  };
}

}  // namespace

FrmXIMU::FrmXIMU() : LocalRecordEditor(goodsLook(), localGoods()) {
  giveHelpKey(*this, *Toolbar1);
}

void FrmXIMU::buttonClick(const QString& key) {
  if (key == u"Print") {
    print();
  } else if (key == u"Help") {
    showHelp();
  } else {
    LocalRecordEditor::buttonClick(key);
  }
}

void FrmXIMU::print() {
  // Never the portal: the list is printed from the local rows.
  if (mDirty) reportSave(SaveLocalRecord(), u"保存成功！！！"_s, u"保存失败！！！"_s);
  try {
    const QString command = u"select * from ximu where qiye_id=%1"_s.arg(app().gLocalId);
    showReport(rptXIMU(), localStore().GetCmdXimu(command));
  } catch (const Failure& failure) {
    prompts().ask(this, {failure.description(), {}, Buttons::Ok, Mark::Critical});
  }
}

}  // namespace qinghe
