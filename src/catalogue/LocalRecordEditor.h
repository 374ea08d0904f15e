#pragma once

#include "catalogue/RecordEditor.h"

namespace qinghe {

/// A record editor whose local row is the master: the list holds the company's local rows, a save
/// writes the local row first and then, where the portal may have it, the portal's.
class LocalRecordEditor : public RecordEditor {
  Q_OBJECT

 public:
  bool SaveLocalRecord();
  /// Sends the record and keeps the id that the portal gives it in `R_ID`.
  bool SavePortalRecord();
  bool SavePortalIntro();

 protected:
  LocalRecordEditor(const EditorLook& look, const LocalRecordKind& kind);

  void onLoad() override;
  void itemClick(ListItem& item) override;
  void itemCheck(ListItem& item) override;
  void buttonClick(const QString& key) override;
  bool saveOnClose() override { return SaveLocalRecord(); }

  void FillList();
  /// The current record's row in the detail pane; an id without a record changes no field.
  void LoadRecord(qint16 id);
  void save();

 private:
  void loadRowOf(const ListItem& item);
  void showRow();
  void writeRow();
  bool portalTakesIt() const;
  qint16 portalId() const;
  QString selection() const;
  bool keepPortalId(const QString& cell);

  const LocalRecordKind& kind_;
  RecordsetPtr records_;  ///< every record of the company, for the screen's lifetime
};

}  // namespace qinghe
