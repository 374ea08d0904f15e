#include "catalogue/PagedRecordEditor.h"

#include <QPushButton>
#include <utility>

#include "catalogue/pickers/frmGetSHXI.h"
#include "forms/Icons.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/ras.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

PagedRecordEditor::PagedRecordEditor(EditorLook look, const PortalRecordKind& kind,
                                     const PicturePage& picture, const LocalMirror* mirror)
    : PicturedRecordEditor(std::move(look), kind, picture),
      Command5(new QPushButton(this)),
      mirror_(mirror) {
  Command5->setObjectName(u"Command5"_s);
  Command5->setAutoDefault(false);
  Command5->setIcon(iconFor(u"Next"_s));
  Command5->setAccessibleName(u"下一页"_s);
  Command5->setToolTip(u"下一页"_s);
  Command5->hide();
  addBelowList(Command5);
  connect(Command5, &QPushButton::clicked, this, &PagedRecordEditor::nextPage);
}

void PagedRecordEditor::FillList() {
  pages_.start();
  pages_.setPageSize(app().gPageSize);
  LoadPageCount();
  Command5->setVisible(pages_.hasMorePages());
  Command5->setText(pages_.percentage());
  LoadPage(pages_.pageNo());
}

void PagedRecordEditor::LoadPageCount() {
  const QString url = RequestBuilder(app().gWebServer, paths::productPageCount)
                          .encoded(u"STABLE"_s, kind().listTable)
                          .encoded(u"STOTHER"_s, ownRows())
                          .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()))
                          .url();
  readPortal(url, EmptyAnswer::IsFailure, [this](GetHtml& html) {
    pages_.takeCount(html.GetRowItem());
    return true;
  });
}

void PagedRecordEditor::LoadPage(qint32 page) {
  const QString url = RequestBuilder(app().gWebServer, paths::productPage)
                          .encoded(u"STABLE"_s, kind().listTable)
                          .encoded(u"STRDATA"_s, kind().listFields)
                          .encoded(u"STOTHER"_s, ownRows())
                          .encoded(u"STPAGE"_s, textOf(page))
                          .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()))
                          .encoded(u"STORDER"_s, u"NOTH,ID"_s)
                          .url();
  readPortal(url, EmptyAnswer::IsFailure, [this, page](GetHtml& html) {
    takeRow(html, textOf(page));
    return true;
  });
}

void PagedRecordEditor::nextPage() {
  if (!CheckConnection()) return;
  // The last page leaves the button at "100%"; it goes with the click behind that.
  if (!pages_.next()) {
    Command5->hide();
    return;
  }
  Command5->setText(pages_.percentage());
  LoadPage(pages_.pageNo());
}

void PagedRecordEditor::listFilled() {
  if (!CheckConnection() || app().gHayeId == 0) setCommandsEnabled(false);
}

void PagedRecordEditor::commandClick(const QString& name) {
  if (CheckConnection()) pick(name);
}

void PagedRecordEditor::take(int field, const Choice& choice) {
  txtFields(field)->Tag = choice.id;
  txtFields(field)->setText(choice.name);
}

void PagedRecordEditor::pickAttributes(int field) {
  attributesOpened_ = true;
  const QString text = defaultInstance<frmGetSHXI>().edit(fieldText(field));
  if (!text.isEmpty()) txtFields(field)->setText(Trim(text));
}

void PagedRecordEditor::onUnload() {
  if (attributesOpened_) qinghe::unload<frmGetSHXI>();
}

bool PagedRecordEditor::SaveRecord(ListItem& row) {
  if (!SavePortalRecord(row)) return false;
  return mirror_ == nullptr || SaveLocalMirror(row);
}

bool PagedRecordEditor::SaveLocalMirror(const ListItem& row) {
  try {
    const QString portalId = textOf(idOf(row));
    const QString command = u"SELECT * FROM %1 WHERE R_ID=%2"_s.arg(mirror_->table, portalId);
    const RecordsetPtr records = (localStore().*mirror_->openSet)(command);
    if (records->RecordCount() < 1) {
      records->AddNew();
      records->setValue(u"R_ID"_s, portalId);
    }
    for (const SavedValue& value : mirror_->columns) {
      records->setValue(value.name, localValue(value, row));
    }
    records->Update();
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace qinghe
