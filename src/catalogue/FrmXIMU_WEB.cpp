#include "catalogue/FrmXIMU_WEB.h"

#include "catalogue/pickers/frmGetCYXX.h"
#include "catalogue/pickers/frmGetLEBI.h"
#include "catalogue/pickers/frmGetMUMU.h"
#include "forms/Prompts.h"
#include "reports/ReportWindow.h"
#include "shell/AppState.h"
#include "shell/ras.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int categoryField = 6;
constexpr int brandField = 7;
constexpr int attributesField = 9;
// Companies of this industry choose among the brands of all, the others among producers.
constexpr qint16 industryOfBrands = 4;

EditorLook goodsLook() {
  return {
      .form = u"FrmXIMU_WEB"_s,
      .caption = u"商品登记"_s,
      .listColumn = u"商品名称"_s,
      .listColumnInset = 44,
      .rowIcon = u"Ximu"_s,
      .newRowText = u"新添商品"_s,
      .searchBox = true,
      // The discount begins with the local screen's word for a note, and no rule stops it.
      .fields =
          {{.index = 0, .label = u"行    业"_s, .industry = true},
           {.index = 1, .label = u"编    号"_s, .afterAdd = u"NO"_s},
           {.index = 2, .label = u"名    称"_s, .afterAdd = u"新添商品"_s},
           {.index = 3, .label = u"价    格"_s, .afterAdd = u"0"_s, .numeric = true},
           {.index = 4, .label = u"折    扣"_s, .afterAdd = u"说明"_s},
           {.index = 5, .label = u"个 /  包"_s, .afterAdd = u"1"_s, .numeric = true},
           {.index = categoryField, .label = u"类    别"_s, .command = u"Command1"_s},
           {.index = brandField, .label = u"品    牌"_s, .command = u"Command2"_s},
           {.index = 8, .label = {}, .memo = true, .accessibleName = u"介绍"_s, .tab = IntroTab},
           {.index = attributesField,
            .label = {},
            .accessibleName = u"其它属性"_s,
            .command = u"Command3"_s,
            .commandCaption = u"其它"_s},
           {.index = 10, .label = {}, .memo = true, .accessibleName = u"留言"_s, .tab = NoteTab}},
      .buttons = portalEditorButtons(),
  };
}

const PortalRecordKind& portalGoods() {
  using enum ValueFrom;
  using enum Sent;
  static const PortalRecordKind kind{
      .listTable = u"XIMU"_s,
      .listFields = u"id,ximu,diji,noth,"_s,
      .detailFields =
          u"id,ximu_no,ximu,jigex,zhko,gesh,lebi_id,lebi,chye_id,chye,jish,shxi,liuy,"_s,
      .detailBeginsWithId = true,
      .detailCells = {{1}, {2}, {3}, {4}, {5}, {6, true}, {6}, {7, true}, {7}, {8}, {9}, {10}},
      .saveTable = u"ximu"_s,
      .columnCount = u"18"_s,
      .saved = {{u"QIYE_ID"_s, OwnerId},
                {u"QIYE"_s, OwnerName},
                {u"LEBI_ID"_s, TagNumber, categoryField, Raw},
                {u"CHYE_ID"_s, TagNumber, brandField, Raw},
                {u"XIMU_NO"_s, Typed, 1, Raw},
                {u"XIMU"_s, Typed, 2, Raw},
                {u"GESH"_s, Typed, 5, Raw},
                {u"LEBI"_s, Typed, categoryField, Raw},
                {u"CHYE"_s, Typed, brandField, Raw},
                {u"SHXI"_s, Typed, attributesField, Raw},
                {u"JIGEX"_s, Typed, 3, Raw},
                {u"ZHKO"_s, Typed, 4, Raw},
                {u"NOTH"_s, Checked}},
      .nameField = 2,
      .introField = 8,
      .noteField = 10,
  };
  return kind;
}

/// The local register's columns but for the attribute text.
const LocalMirror& goodsMirror() {
  static const LocalMirror mirror = [] {
    QList<SavedValue> columns = localGoods().localColumns;
    columns.removeIf([](const SavedValue& value) { return value.name == u"SHXI"; });
    return LocalMirror{localGoods().localTable, localGoods().openSet, columns};
  }();
  return mirror;
}

}  // namespace

FrmXIMU_WEB::FrmXIMU_WEB()
    : PagedRecordEditor(goodsLook(), portalGoods(), {.table = u"ximu"_s}, &goodsMirror()) {}

void FrmXIMU_WEB::buttonClick(const QString& key) {
  if (key != u"Print") {
    PagedRecordEditor::buttonClick(key);
  } else if (CheckConnection()) {
    print();
  }
}

void FrmXIMU_WEB::print() {
  if (mDirty) reportSave(saveSelected(), u"保存成功！！！"_s, u"保存失败！！！"_s);
  try {
    // The live goods of every company in the file.
    showReport(rptXIMU(), localStore().GetCmdXimu(u"select * from ximu where noth=true"_s));
  } catch (const Failure& failure) {
    prompts().ask(this, {failure.description(), {}, Buttons::Ok, Mark::Critical});
  }
}

void FrmXIMU_WEB::pick(const QString& name) {
  if (name == u"Command1") {
    pickCategory();
  } else if (name == u"Command2") {
    pickBrand();
  } else if (name == u"Command3") {
    pickAttributes(attributesField);
  }
}

void FrmXIMU_WEB::pickCategory() {
  categoriesOpened_ = true;
  const Choice choice = defaultInstance<frmGetLEBI>().choose();
  if (!choice.id.isEmpty()) take(categoryField, choice);
}

void FrmXIMU_WEB::pickBrand() {
  brandsOpened_ = true;
  const Choice choice = app().gHayeId == industryOfBrands ? defaultInstance<frmGetMUMU>().choose()
                                                          : defaultInstance<frmGetCYXX>().choose();
  if (!choice.id.isEmpty()) take(brandField, choice);
}

void FrmXIMU_WEB::onUnload() {
  PagedRecordEditor::onUnload();
  if (categoriesOpened_) qinghe::unload<frmGetLEBI>();
  // The picker of brands stays, for as long as the program runs.
  if (brandsOpened_) qinghe::unload<frmGetCYXX>();
}

}  // namespace qinghe
