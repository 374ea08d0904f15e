#include "catalogue/FrmQUST_WEB.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

EditorLook surveysLook() {
  return {
      .form = u"FrmQUST_WEB"_s,
      .caption = u"调查登记"_s,
      .listColumn = u"名称"_s,
      .listColumnInset = 44,
      .rowIcon = u"Ximu"_s,
      .newRowText = u"新添调查"_s,
      .searchBox = false,
      // The first box shows the survey's category and is not sent.
      .fields = {{.index = 0, .label = u"类    别"_s, .industryAfterAdd = true},
                 {.index = 1, .label = u"编    号"_s, .afterAdd = u"NO"_s},
                 {.index = 2, .label = u"名    称"_s, .afterAdd = u"新添调查"_s},
                 {.index = 3, .label = u"答    复"_s, .afterAdd = u"谢谢"_s, .memo = true}},
      .buttons = portalEditorButtons(),
  };
}

const PortalRecordKind& surveys() {
  using enum ValueFrom;
  static const PortalRecordKind kind{
      .listTable = u"QUST"_s,
      .listFields = u"id,qust,diji,noth,"_s,
      .detailFields = u"lebi_id,qust_no,qust,answ,"_s,
      .detailBeginsWithId = false,
      .detailCells = {{0}, {1}, {2}, {3}},
      .saveTable = u"qust"_s,
      .saved = {{u"QIYE_ID"_s, OwnerId},
                {u"QUST_NO"_s, Typed, 1},
                {u"QUST"_s, Typed, 2},
                {u"ANSW"_s, Typed, 3},
                {u"NOTH"_s, Checked}},
      .nameField = 2,
  };
  return kind;
}

}  // namespace

FrmQUST_WEB::FrmQUST_WEB() : PortalRecordEditor(surveysLook(), surveys()) {}

void FrmQUST_WEB::listFilled() {
  if (const ListItem* first = ListView1->selectedItem()) LoadRecord(idOf(*first));
}

void FrmQUST_WEB::addRow() {
  PortalRecordEditor::addRow();
  mDirty = true;
}

}  // namespace qinghe
