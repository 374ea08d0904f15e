#include "catalogue/LocalRecordEditor.h"

#include "forms/Prompts.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/ras.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// A free user's list goes to the portal only below this many rows.
constexpr int freeRows = 50;

}  // namespace

LocalRecordEditor::LocalRecordEditor(const EditorLook& look, const LocalRecordKind& kind)
    : RecordEditor(look), kind_(kind) {}

void LocalRecordEditor::onLoad() {
  BuildColumns();
  AddAllowed = true;
  SaveAllowed = false;
  UpdateToolbar();
  FillList();
  if (ListView1->itemCount() > 0) loadRowOf(*ListView1->itemAt(0));
  CheckConnection();
  showForm();
  mDirty = false;
}

void LocalRecordEditor::FillList() {
  try {
    const QString command =
        u"SELECT * FROM %1 WHERE QIYE_ID=%2"_s.arg(kind_.localTable).arg(app().gLocalId);
    records_ = (localStore().*kind_.openSet)(command);
    if (records_->RecordCount() <= 0) return;
    const QString nameColumn = u"XIMU"_s;
    for (records_->MoveFirst(); !records_->atEnd(); records_->MoveNext()) {
      ListItem* item = ListView1->addItem(keyOf(records_->text(u"id"_s)),
                                          records_->text(nameColumn), look().rowIcon);
      item->setChecked(records_->text(u"NOTH"_s) == u"True");
    }
  } catch (const Failure& failure) {
    prompts().ask(this, {failure.description(), {}, Buttons::Ok, Mark::Critical});
  }
}

void LocalRecordEditor::loadRowOf(const ListItem& item) {
  try {
    LoadRecord(toInt16(Val(item.key())));
  } catch (const Failure& failure) {
    // The pane does not show this row, so the row must not be saved from it.
    SaveAllowed = false;
    UpdateToolbar();
    prompts().ask(this, {failure.description(), {}, Buttons::Ok, Mark::Critical});
  }
}

void LocalRecordEditor::LoadRecord(qint16 id) {
  if (records_ != nullptr && records_->RecordCount() > 0) {
    records_->MoveFirst();
    records_->Find(u"ID=%1"_s.arg(id));
    if (!records_->atEnd()) showRow();
  }
  AddAllowed = true;
  SaveAllowed = true;
  UpdateToolbar();
}

void LocalRecordEditor::showRow() {
  showIndustry();
  for (const LoadedColumn& column : kind_.loaded) {
    TextBox* box = txtFields(column.field);
    if (!column.tagColumn.isEmpty()) box->Tag = records_->text(column.tagColumn);
    box->setText(Trim(records_->text(column.column)));
  }
}

void LocalRecordEditor::itemClick(ListItem& item) {
  AddAllowed = true;
  SaveAllowed = true;
  // Cleared before the load and not behind it: the load marks the screen again where a text
  // differs, and nobody is asked about the edits that go.
  mDirty = false;
  UpdateToolbar();
  loadRowOf(item);
}

void LocalRecordEditor::itemCheck(ListItem& item) {
  if (!CheckConnection()) return;
  if (ListView1->selectedItem() != &item) {
    ListView1->setSelectedItem(&item);
    loadRowOf(item);
  }
  mDirty = true;
}

void LocalRecordEditor::buttonClick(const QString& key) {
  if (key == u"Add") {
    addRow();
  } else if (key == u"Delete") {
    StatusBar1->setText(u"暂无效"_s);
  } else if (key == u"Save") {
    save();
  } else if (key == u"Exit") {
    unload();
  }
}

void LocalRecordEditor::save() {
  if (!mDirty) return;
  reportSave(SaveLocalRecord(), u"本地保存成功！！！"_s, u"本地保存失败！！！"_s);
  if (!portalTakesIt()) return;
  const bool sent = SavePortalRecord();
  if (sent) SavePortalIntro();
  reportSave(sent, u"网络保存成功！！！"_s, u"网络保存失败！！！"_s);
}

bool LocalRecordEditor::portalTakesIt() const {
  const bool allowed = ListView1->itemCount() < freeRows || app().gUserLevel > 0;
  return allowed && app().gLoginMode == 1 && SaveAllowed;
}

bool LocalRecordEditor::SaveLocalRecord() {
  if (records_ == nullptr || ListView1->selectedItem() == nullptr) return false;
  try {
    writeRow();
    return true;
  } catch (const Failure&) {
    records_->CancelUpdate();
    return false;
  }
}

void LocalRecordEditor::writeRow() {
  // With exactly one record the search goes on from where the set stands.
  if (records_->RecordCount() > 1) records_->MoveFirst();
  ListItem* item = ListView1->selectedItem();
  records_->Find(u"id = %1"_s.arg(textOf(idOf(*item))));
  if (records_->atEnd()) records_->AddNew();
  for (const SavedValue& value : kind_.localColumns) {
    records_->setValue(value.name, localValue(value, *item));
  }
  records_->Update();
  item->setKey(keyOf(records_->text(u"id"_s)));
  item->setText(fieldText(kind_.nameField));
}

qint16 LocalRecordEditor::portalId() const {
  return records_->atEnd() ? qint16{0} : toInt16(records_->text(u"R_ID"_s));
}

QString LocalRecordEditor::selection() const {
  return u"id=%1 and qiye_id=%2"_s.arg(portalId()).arg(app().gQiyeId);
}

bool LocalRecordEditor::SavePortalRecord() {
  if (records_ == nullptr || ListView1->selectedItem() == nullptr) return false;
  try {
    RequestBuilder request(app().gWebServer, paths::productAdd);
    request.encoded(u"stable"_s, kind_.portalTable)
        .encoded(u"structn"_s, kind_.portalColumnCount)
        .encoded(u"stother"_s, selection());
    for (const SavedValue& value : kind_.portalFields) {
      request.encoded(value.name, portalValue(value, *ListView1->selectedItem()));
    }
    return readPortal(request.url(), EmptyAnswer::IsFailure,
                      [this](GetHtml& html) { return keepPortalId(html.GetRowItem()); });
  } catch (const Failure&) {
    return false;
  }
}

bool LocalRecordEditor::keepPortalId(const QString& cell) {
  if (Val(cell) == 0) return false;  // the portal's refusal
  if (records_->atEnd()) return true;
  try {
    records_->setValue(u"R_ID"_s, cell);
    records_->Update();
  } catch (const Failure&) {
    records_->CancelUpdate();
    throw;
  }
  return true;
}

bool LocalRecordEditor::SavePortalIntro() {
  try {
    RequestBuilder request(app().gWebServer, paths::productAdd);
    request.encoded(u"stable"_s, kind_.portalTable)
        .encoded(u"stother"_s, selection())
        .encoded(u"JISH"_s, fieldText(kind_.introField));
    return postToPortal(request.page(), request.body());
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace qinghe
