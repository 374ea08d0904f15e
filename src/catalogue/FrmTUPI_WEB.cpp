#include "catalogue/FrmTUPI_WEB.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

EditorLook picturesLook() {
  return {
      .form = u"FrmTUPI_WEB"_s,
      .caption = u"图片登记"_s,
      .listColumn = u"名称"_s,
      .listColumnInset = 44,
      .rowIcon = u"Ximu"_s,
      .newRowText = u"新添图片"_s,
      .searchBox = false,
      // A new record takes on the link and the long texts of the one shown before.
      .fields =
          {{.index = 0, .label = u"行    业"_s, .industry = true, .keptByAdd = true},
           {.index = 1,
            .label = u"编号名称"_s,
            .afterAdd = u"新添图片"_s,
            .labelName = u"LabelXM(2)"_s,
            .keptByAdd = true},
           {.index = 2, .label = u"链    接"_s, .labelName = u"LabelXM(1)"_s, .keptByAdd = true},
           {.index = 8,
            .label = {},
            .memo = true,
            .accessibleName = u"介绍"_s,
            .keptByAdd = true,
            .tab = IntroTab},
           {.index = 10,
            .label = {},
            .memo = true,
            .accessibleName = u"留言"_s,
            .keptByAdd = true,
            .tab = NoteTab}},
      .buttons = portalEditorButtons(),
  };
}

const PortalRecordKind& portalPictures() {
  using enum ValueFrom;
  static const PortalRecordKind kind{
      .listTable = u"TUPI"_s,
      .listFields = u"id,ximu,diji,noth,"_s,
      .detailFields = u"id,ximu,zhko,jish,liuy,"_s,
      .detailBeginsWithId = true,
      .detailCells = {{1}, {2}, {8}, {10}},
      .saveTable = u"tupi"_s,
      .saved = {{u"QIYE_ID"_s, OwnerId},
                {u"QIYE"_s, OwnerName},
                {u"XIMU"_s, Typed, 1},
                {u"ZHKO"_s, Typed, 2},
                {u"NOTH"_s, Checked}},
      .nameField = 1,
      .introField = 8,
      .noteField = 10,
  };
  return kind;
}

}  // namespace

FrmTUPI_WEB::FrmTUPI_WEB()
    : PicturedRecordEditor(picturesLook(), portalPictures(),
                           {.table = u"tupi"_s, .askedFor = false}) {}

}  // namespace qinghe
