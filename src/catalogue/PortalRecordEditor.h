#pragma once

#include "catalogue/RecordEditor.h"

namespace qinghe {

class GetHtml;

/// Where a cell of a record's answer goes.
struct DetailCell {
  int field;
  bool tag = false;  ///< into the field's tag and not into its text
};

/// A kind of record that lives on the portal.
struct PortalRecordKind {
  QString listTable;
  QString listFields;             ///< of the list: id, name, views, live flag
  QString detailFields;           ///< of one record
  bool detailBeginsWithId;        ///< the first cell of a record is its id, which nothing shows
  QList<DetailCell> detailCells;  ///< the others, in order
  QString saveTable;
  QString columnCount = {};  ///< `structn`; not sent when empty
  QList<SavedValue> saved;   ///< in the order they are sent
  int nameField;             ///< gives the list row its text
  int introField = -1;       ///< the long texts, which follow a record in posts of their own
  int noteField = -1;
};

/// The toolbar that all editors of the portal's records have.
QList<EditorButton> portalEditorButtons();

/// A record editor whose rows are the portal's: a row's key holds the portal's id, and nothing is
/// done without a link.
class PortalRecordEditor : public RecordEditor {
  Q_OBJECT

 public:
  /// Sends the pane as the record of `row`, whose key then holds the id that the portal answers.
  bool SavePortalRecord(ListItem& row);
  /// Post a long text of `row`, where the kind has it; what becomes of it nobody hears.
  bool SavePortalIntro(const ListItem& row);
  bool SavePortalNote(const ListItem& row);

 protected:
  PortalRecordEditor(const EditorLook& look, const PortalRecordKind& kind);

  void onLoad() override;
  void BuildColumns() override;
  void UpdateToolbar() override;
  void itemClick(ListItem& item) override;
  void itemCheck(ListItem& item) override;
  void buttonClick(const QString& key) override;
  bool saveOnClose() override { return saveSelected(); }
  void addRow() override;

  /// Asks for the rows of the list.
  virtual void FillList();
  /// The list is there and the screen about to be shown.
  virtual void listFilled() {}
  /// A record has come into the pane.
  virtual void recordShown(double /*id*/) {}
  /// All of a save but what only the toolbar sends.
  virtual bool SaveRecord(ListItem& row) { return SavePortalRecord(row); }
  /// A save by the toolbar has worked.
  virtual void savedByToolbar(const ListItem& row) { saveLongTexts(row); }
  void saveLongTexts(const ListItem& row);

  /// The list row of an answer's row; it remembers the page it came with, if any.
  void takeRow(GetHtml& html, const QString& page = {});
  /// The record in the detail pane; an id that the portal does not know changes no field.
  bool LoadRecord(double id);
  bool saveSelected();
  QString ownRows() const;

  const PortalRecordKind& kind() const { return kind_; }

 private:
  void update();
  bool post(const QString& name, int field, const ListItem& row);
  QString selectionOf(const ListItem& row) const;

  const PortalRecordKind& kind_;
  /// The selected row as of the last event: a click has moved the selection before it asks.
  ListItem* current_ = nullptr;
};

}  // namespace qinghe
