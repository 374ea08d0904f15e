#include "catalogue/PortalRecordEditor.h"

#include <utility>

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/ras.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int viewsWidth = 44;

RequestBuilder rowsOf(const PortalRecordKind& kind, const QString& fields,
                      const QString& condition) {
  RequestBuilder request(app().gWebServer, paths::productRows);
  request.encoded(u"STABLE"_s, kind.listTable)
      .encoded(u"STRDATA"_s, fields)
      .encoded(u"STOTHER"_s, condition);
  return request;
}

}  // namespace

QList<EditorButton> portalEditorButtons() {
  return {{u"Add"_s, u"增加"_s, u"Add"_s},
          {u"Update"_s, u"保存"_s, u"Save"_s},
          {u"Exit"_s, u"退出"_s, u"Exit"_s}};
}

PortalRecordEditor::PortalRecordEditor(const EditorLook& look, const PortalRecordKind& kind)
    : RecordEditor(look), kind_(kind) {}

void PortalRecordEditor::onLoad() {
  BuildColumns();
  AddAllowed = true;
  SaveAllowed = false;
  UpdateToolbar();
  FillList();
  listFilled();
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

QString PortalRecordEditor::ownRows() const {
  return u"QIYE_ID=%1"_s.arg(app().gQiyeId);
}

void PortalRecordEditor::FillList() {
  const QString url =
      rowsOf(kind_, kind_.listFields, ownRows()).encoded(u"STORDER"_s, u"NOTH,ID"_s).url();
  readPortal(url, EmptyAnswer::IsFailure, [this](GetHtml& html) {
    takeRow(html);
    return true;
  });
}

void PortalRecordEditor::takeRow(GetHtml& html, const QString& page) {
  const QString id = html.GetRowItem();
  const QString name = html.GetRowItem();
  const QString views = html.GetRowItem();
  const bool live = html.GetRowItem() == u"True";
  ListItem* item = ListView1->addItem(keyOf(id), name, look().rowIcon);
  item->setSubItem(1, views);
  item->setChecked(live);
  item->setTag(page);
  if (current_ == nullptr) current_ = ListView1->selectedItem();
}

bool PortalRecordEditor::LoadRecord(double id) {
  const QString url = rowsOf(kind_, kind_.detailFields, u"id="_s + textOf(id)).url();
  const bool loaded = readPortal(url, EmptyAnswer::IsFailure, [this, id](GetHtml& html) {
    if (kind_.detailBeginsWithId) html.GetRowItem();
    showIndustry();
    for (const DetailCell& cell : kind_.detailCells) {
      if (cell.tag) {
        txtFields(cell.field)->Tag = html.GetRowItem();
      } else {
        txtFields(cell.field)->setText(html.GetRowItem());
      }
    }
    recordShown(id);
    return true;
  });
  AddAllowed = true;
  SaveAllowed = true;
  UpdateToolbar();
  return loaded;
}

void PortalRecordEditor::itemClick(ListItem& item) {
  // The pane still shows the row that was selected before this click.
  ListItem* shown = std::exchange(current_, &item);
  if (!CheckConnection()) return;
  if (mDirty) {
    switch (askToSave()) {
      case Answer::Yes:
        if (shown != nullptr && SaveRecord(*shown)) mDirty = false;
        StatusBar1->setText(u"保存成功！！！"_s);
        break;
      case Answer::Cancel:
        return;
      default:
        break;
    }
  }
  AddAllowed = true;
  SaveAllowed = true;
  UpdateToolbar();
  LoadRecord(idOf(item));
  mDirty = false;
}

void PortalRecordEditor::itemCheck(ListItem& item) {
  if (!CheckConnection()) return;
  // The pane keeps the row that it shows: the user is expected to tick that one.
  if (ListView1->selectedItem() != &item) ListView1->setSelectedItem(&item);
  current_ = &item;
  mDirty = true;
}

void PortalRecordEditor::addRow() {
  RecordEditor::addRow();
  current_ = ListView1->selectedItem();
  SaveAllowed = true;
  UpdateToolbar();
}

void PortalRecordEditor::buttonClick(const QString& key) {
  if (!CheckConnection()) return;
  if (key == u"Add") {
    addRow();
  } else if (key == u"Update") {
    update();
  } else if (key == u"Exit") {
    unload();
  }
}

void PortalRecordEditor::update() {
  if (!mDirty) return;
  ListItem* row = ListView1->selectedItem();
  const bool saved = row != nullptr && SaveRecord(*row);
  if (saved) savedByToolbar(*row);
  reportSave(saved, u"保存成功！！！"_s, u"保存失败！！！"_s);
}

bool PortalRecordEditor::saveSelected() {
  ListItem* row = ListView1->selectedItem();
  return row != nullptr && SaveRecord(*row);
}

QString PortalRecordEditor::selectionOf(const ListItem& row) const {
  return u"id=%1 and qiye_id=%2"_s.arg(textOf(idOf(row))).arg(app().gQiyeId);
}

bool PortalRecordEditor::SavePortalRecord(ListItem& row) {
  RequestBuilder request(app().gWebServer, paths::productAdd);
  request.encoded(u"stable"_s, kind_.saveTable);
  if (!kind_.columnCount.isEmpty()) request.encoded(u"structn"_s, kind_.columnCount);
  request.encoded(u"stother"_s, selectionOf(row));
  for (const SavedValue& value : kind_.saved) {
    const QString text = portalValue(value, row);
    if (value.sent == Sent::Raw) {
      request.raw(value.name, text);
    } else {
      request.encoded(value.name, text);
    }
  }
  return readPortal(request.url(), EmptyAnswer::IsFailure, [this, &row](GetHtml& html) {
    const QString id = html.GetRowItem();
    if (Val(id) == 0) return false;  // the portal's refusal
    row.setKey(keyOf(id));
    row.setText(fieldText(kind_.nameField));
    return true;
  });
}

void PortalRecordEditor::saveLongTexts(const ListItem& row) {
  SavePortalIntro(row);
  SavePortalNote(row);
}

bool PortalRecordEditor::SavePortalIntro(const ListItem& row) {
  return post(u"JISH"_s, kind_.introField, row);
}

bool PortalRecordEditor::SavePortalNote(const ListItem& row) {
  return post(u"LIUY"_s, kind_.noteField, row);
}

bool PortalRecordEditor::post(const QString& name, int field, const ListItem& row) {
  if (field < 0) return false;
  RequestBuilder request(app().gWebServer, paths::productAdd);
  request.encoded(u"stable"_s, kind_.saveTable)
      .encoded(u"stother"_s, selectionOf(row))
      .encoded(name, fieldText(field));
  return postToPortal(request.page(), request.body());
}

}  // namespace qinghe
