#pragma once

#include "catalogue/RecordEditor.h"

namespace qinghe {

/// A kind of record that lives on the portal.
struct PortalRecordKind {
  QString listTable;
  QString listFields;      ///< of the list: id, name, views, live flag
  QString detailFields;    ///< of one record
  QList<int> detailCells;  ///< the field that each cell of a record goes to
  QString saveTable;
  QList<SavedValue> saved;  ///< in the order they are sent
  int nameField;            ///< gives the list row its text
};

/// A record editor whose rows are the portal's: a row's key holds the portal's id, and nothing is
/// done without a link.
class PortalRecordEditor : public RecordEditor {
  Q_OBJECT

 public:
  /// Sends the pane as the record of `row`, whose key then holds the id that the portal answers.
  bool SavePortalRecord(ListItem& row);

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

  bool FillList();
  /// The record in the detail pane; an id that the portal does not know changes no field.
  bool LoadRecord(double id);

 private:
  bool saveSelected();
  void select(ListItem& item);

  const PortalRecordKind& kind_;
  /// The row that the pane was last meant for: a click has moved the selection before it asks.
  ListItem* current_ = nullptr;
};

}  // namespace qinghe
