#include "catalogue/PortalRecordEditor.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/ras.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int viewsWidth = 64;

RequestBuilder rowsOf(const PortalRecordKind& kind, const QString& fields,
                      const QString& condition) {
  RequestBuilder request(app().gWebServer, paths::productRows);
  request.encoded(u"STABLE"_s, kind.listTable)
      .encoded(u"STRDATA"_s, fields)
      .encoded(u"STOTHER"_s, condition);
  return request;
}

}  // namespace

PortalRecordEditor::PortalRecordEditor(const EditorLook& look, const PortalRecordKind& kind)
    : RecordEditor(look), kind_(kind) {}

void PortalRecordEditor::onLoad() {
  BuildColumns();
  AddAllowed = true;
  SaveAllowed = false;
  FillList();
  current_ = ListView1->selectedItem();
  if (current_ != nullptr) LoadRecord(selectedId());
  UpdateToolbar();
  showForm();
  mDirty = false;
}

void PortalRecordEditor::BuildColumns() {
  RecordEditor::BuildColumns();
  ListView1->addColumn(u"浏览"_s, viewsWidth);
}

void PortalRecordEditor::UpdateToolbar() {
  Toolbar1->setButtonEnabled(u"Add"_s, app().gUserLevel >= 0 && AddAllowed);
  Toolbar1->setButtonEnabled(u"Update"_s, SaveAllowed);
}

bool PortalRecordEditor::FillList() {
  const QString url = rowsOf(kind_, kind_.listFields, u"QIYE_ID=%1"_s.arg(app().gQiyeId))
                          .encoded(u"STORDER"_s, u"NOTH,ID"_s)
                          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [this](GetHtml& html) {
    const QString id = html.GetRowItem();
    const QString name = html.GetRowItem();
    const QString views = html.GetRowItem();
    const bool live = html.GetRowItem() == u"True";
    ListItem* item = ListView1->addItem(keyOf(id), name, look().rowIcon);
    item->setSubItem(1, views);
    item->setChecked(live);
    return true;
  });
}

bool PortalRecordEditor::LoadRecord(double id) {
  const QString url = rowsOf(kind_, kind_.detailFields, u"id="_s + textOf(id)).url();
  const bool loaded = readPortal(url, EmptyAnswer::IsFailure, [this](GetHtml& html) {
    for (const int field : kind_.detailCells) txtFields(field)->setText(html.GetRowItem());
    return true;
  });
  AddAllowed = true;
  SaveAllowed = true;
  UpdateToolbar();
  return loaded;
}

void PortalRecordEditor::select(ListItem& item) {
  ListView1->setSelectedItem(&item);
  current_ = &item;
}

void PortalRecordEditor::itemClick(ListItem& item) {
  if (!CheckConnection()) return;
  if (mDirty) {
    switch (askToSave()) {
      case Answer::Yes:
        // The pane still shows the row that was selected before this click.
        if (current_ != nullptr && SavePortalRecord(*current_)) mDirty = false;
        StatusBar1->setText(u"保存成功！！！"_s);
        break;
      case Answer::Cancel:
        return;
      default:
        break;
    }
  }
  current_ = &item;
  AddAllowed = true;
  SaveAllowed = true;
  UpdateToolbar();
  LoadRecord(Val(item.key()));
  mDirty = false;
}

void PortalRecordEditor::itemCheck(ListItem& item) {
  if (!CheckConnection()) return;
  // The pane keeps the row that it shows: the user is expected to tick that one.
  if (ListView1->selectedItem() != &item) select(item);
  mDirty = true;
}

void PortalRecordEditor::addRow() {
  RecordEditor::addRow();
  current_ = ListView1->selectedItem();
  mDirty = true;
  SaveAllowed = true;
  UpdateToolbar();
}

void PortalRecordEditor::buttonClick(const QString& key) {
  if (!CheckConnection()) return;
  if (key == u"Add") {
    addRow();
  } else if (key == u"Update") {
    if (mDirty) reportSave(saveSelected(), u"保存成功！！！"_s, u"保存失败！！！"_s);
  } else if (key == u"Exit") {
    unload();
  }
}

bool PortalRecordEditor::saveSelected() {
  ListItem* row = ListView1->selectedItem();
  return row != nullptr && SavePortalRecord(*row);
}

bool PortalRecordEditor::SavePortalRecord(ListItem& row) {
  RequestBuilder request(app().gWebServer, paths::productAdd);
  request.encoded(u"stable"_s, kind_.saveTable)
      .encoded(u"stother"_s,
               u"id=%1 and qiye_id=%2"_s.arg(textOf(Val(row.key()))).arg(app().gQiyeId));
  for (const SavedValue& value : kind_.saved) {
    request.encoded(value.name, value.from == ValueFrom::Checked ? textOf(row.isChecked())
                                                                 : portalValue(value));
  }
  return readPortal(request.url(), EmptyAnswer::IsFailure, [this, &row](GetHtml& html) {
    const QString id = html.GetRowItem();
    if (Val(id) == 0) return false;  // the portal's refusal
    row.setKey(keyOf(id));
    row.setText(fieldText(kind_.nameField));
    return true;
  });
}

}  // namespace qinghe
