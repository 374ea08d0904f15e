#pragma once

#include "catalogue/PicturedRecordEditor.h"
#include "shell/PageWalk.h"
#include "shell/Picker.h"

namespace qinghe {

/// The local table that keeps a copy of what is saved on the portal, found by the portal's id.
struct LocalMirror {
  QString table;
  RecordsetPtr (GetData::*openSet)(const QString& command);
  QList<SavedValue> columns;  ///< in the order they are written
};

/// A pictured editor whose list comes page by page, whose fields are picked, and whose records may
/// have a local mirror.
class PagedRecordEditor : public PicturedRecordEditor {
  Q_OBJECT

 public:
  QPushButton* Command5;  ///< the next page

  /// Writes the pane into the local row of the portal's record.
  bool SaveLocalMirror(const ListItem& row);

 protected:
  /// Without a mirror nothing is kept locally.
  PagedRecordEditor(EditorLook look, const PortalRecordKind& kind, const PicturePage& picture,
                    const LocalMirror* mirror);

  void FillList() override;
  void listFilled() override;
  void commandClick(const QString& name) override;
  bool SaveRecord(ListItem& row) override;
  void onUnload() override;

  /// Picks a value for the field beside the button `name`.
  virtual void pick(const QString& name) = 0;
  /// The grid of the attributes, on the field that holds them.
  void pickAttributes(int field);
  /// Puts a picked value into a field, its id with suffix and all into the tag.
  void take(int field, const Choice& choice);

 private:
  void LoadPageCount();
  void LoadPage(qint32 page);
  void nextPage();

  const LocalMirror* mirror_;
  PageWalk pages_;
  bool attributesOpened_ = false;
};

}  // namespace qinghe
