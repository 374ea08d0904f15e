#include "catalogue/FrmFUWU_WEB.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int attributesField = 9;

EditorLook servicesLook() {
  return {
      .form = u"FrmFUWU_WEB"_s,
      .caption = u"服务登记"_s,
      .listColumn = u"商品名称"_s,
      .listColumnInset = 44,
      .rowIcon = u"Ximu"_s,
      .newRowText = u"新添服务"_s,
      .searchBox = false,
      .fields =
          {{.index = 0, .label = u"行    业"_s, .industry = true, .labelName = u"Label7"_s},
           {.index = 1, .label = u"编    号"_s, .afterAdd = u"NO"_s, .labelName = u"Label3"_s},
           {.index = 2,
            .label = u"名    称"_s,
            .afterAdd = u"新添服务"_s,
            .labelName = u"Label6"_s},
           {.index = 3,
            .label = u"价    格"_s,
            .afterAdd = u"0"_s,
            .numeric = true,
            .labelName = u"Label5"_s},
           {.index = 4, .label = u"说    明"_s, .afterAdd = u"说明"_s, .labelName = u"Label1"_s},
           {.index = 8, .label = {}, .memo = true, .accessibleName = u"介绍"_s, .tab = IntroTab},
           // A new service takes on the attributes and the note of the one shown before.
           {.index = attributesField,
            .label = {},
            .accessibleName = u"其它属性"_s,
            .keptByAdd = true,
            .command = u"Command3"_s,
            .commandCaption = u"其它"_s},
           {.index = 10,
            .label = {},
            .memo = true,
            .accessibleName = u"留言"_s,
            .keptByAdd = true,
            .tab = NoteTab}},
      .buttons = portalEditorButtons(),
  };
}

const PortalRecordKind& portalServices() {
  using enum ValueFrom;
  static const PortalRecordKind kind{
      .listTable = u"FUWU"_s,
      .listFields = u"id,ximu,diji,noth,"_s,
      .detailFields = u"id,ximu_no,ximu,jigex,zhko,jish,shxi,liuy,"_s,
      .detailBeginsWithId = true,
      .detailCells = {{1}, {2}, {3}, {4}, {8}, {attributesField}, {10}},
      .saveTable = u"FUWU"_s,
      .columnCount = u"18"_s,
      .saved = {{u"QIYE_ID"_s, OwnerId},
                {u"QIYE"_s, OwnerName},
                {u"XIMU_NO"_s, Typed, 1},
                {u"XIMU"_s, Typed, 2},
                {u"SHXI"_s, Typed, attributesField},
                {u"JIGEX"_s, Typed, 3},
                {u"ZHKO"_s, Typed, 4},
                {u"NOTH"_s, Checked}},
      .nameField = 2,
      .introField = 8,
      .noteField = 10,
  };
  return kind;
}

const LocalMirror& servicesMirror() {
  static const LocalMirror mirror{localServices().localTable, localServices().openSet,
                                  localServices().localColumns};
  return mirror;
}

}  // namespace

FrmFUWU_WEB::FrmFUWU_WEB()
    : PagedRecordEditor(servicesLook(), portalServices(), {.table = u"fuwu"_s, .attributeKind = 1},
                        &servicesMirror()) {}

bool FrmFUWU_WEB::SaveRecord(ListItem& row) {
  if (!SavePortalRecord(row)) return false;
  saveLongTexts(row);
  return SaveLocalMirror(row);
}

void FrmFUWU_WEB::savedByToolbar(const ListItem& /*row*/) {
  // They have gone out already.
}

void FrmFUWU_WEB::pick(const QString& name) {
  if (name == u"Command3") pickAttributes(attributesField);
}

}  // namespace qinghe
