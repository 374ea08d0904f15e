#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <optional>

#include "catalogue/GoodsRecord.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/StatusBar.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "store/GetData.h"

class QGridLayout;
class QPushButton;
class QVBoxLayout;

namespace qinghe {

class SplitPane;
class TabControl;

/// One text box of an editor's detail pane.
struct EditorField {
  int index;                             ///< of `txtFields`; members may be missing in between
  QString label;                         ///< caption of `LabelXM`, empty for none
  std::optional<QString> afterAdd = {};  ///< what Add puts there
  bool industry = false;                 ///< shows the company's industry, read-only, saved nowhere
  bool numeric = false;                  ///< refused on leaving unless it is a number
  bool memo = false;                     ///< many lines
  QString accessibleName = {};           ///< for screen readers, where there is no label
  QString labelName = {};                ///< the label's name where it is no member of `LabelXM`
  bool keptByAdd = false;                ///< Add leaves the text of the row shown before
  bool industryAfterAdd = false;         ///< Add puts the company's industry there
  int tab = 0;                           ///< which tab it lies on, where the editor has tabs
  QString command = {};                  ///< name of the button beside it that picks its value
  QString commandCaption = {};           ///< of that button; an arrow when empty
};

struct EditorButton {
  QString key;
  QString caption;
  QString toolTip;
};

/// What tells one record editor from another on the screen.
struct EditorLook {
  QString form;
  QString caption;
  QString listColumn;
  int listColumnInset;  ///< the first column is as wide as the list less this, in pixels
  QString rowIcon;
  QString newRowText;  ///< text of a row that Add makes
  bool searchBox;      ///< has the box `txtSelect`, which nothing reads
  QList<EditorField> fields;
  QList<EditorButton> buttons;
  QStringList tabs = {};  ///< of `SSTab1`; none when the fields stand on the screen itself
};

/// The pattern of all record editors: a list with check boxes, a bar, a detail pane of text boxes,
/// a toolbar and a status bar. A row's key is its record's id + " ID", its check box the record's
/// live flag.
class RecordEditor : public Form {
  Q_OBJECT

 public:
  /// Null for a member that the array does not have.
  TextBox* txtFields(int index) const;
  /// The button of that name beside a field; null when there is none.
  QPushButton* command(const QString& name) const;

  Toolbar* Toolbar1;
  ListView* ListView1;
  StatusBar* StatusBar1;
  TabControl* SSTab1 = nullptr;  ///< null in an editor without tabs

 protected:
  explicit RecordEditor(const EditorLook& look);

  virtual void BuildColumns();
  virtual void UpdateToolbar();
  virtual void itemClick(ListItem& item) = 0;
  virtual void itemCheck(ListItem& item) = 0;
  virtual void buttonClick(const QString& key) = 0;
  /// A button beside a field was pressed.
  virtual void commandClick(const QString& /*name*/) {}
  /// The save that closing with "Yes" makes.
  virtual bool saveOnClose() = 0;

  void onQueryUnload(Cancel& cancel) override;

  /// A row by Add: checked and selected, without key and icon; the fields are cleared, then get
  /// their values in order. Tags stay.
  virtual void addRow();
  void clearFields();
  void setFieldsAfterAdd();
  /// The industry field takes the company's industry.
  void showIndustry();

  /// "数据尚未保存，是否保存" with yes, no and cancel.
  Answer askToSave();
  /// Clears `mDirty` when a save worked, and puts the result into the status bar.
  void reportSave(bool saved, const QString& success, const QString& failure);

  const EditorLook& look() const { return look_; }
  QString fieldText(int index) const { return txtFields(index)->text(); }
  /// A row's id: the leading number of its key; 0 for a row not saved yet.
  static double idOf(const ListItem& row);
  static QString keyOf(const QString& id) { return id + QStringLiteral(" ID"); }
  /// What a request says for a value of `row`.
  QString portalValue(const SavedValue& value, const ListItem& row) const;
  /// What a local row says for it.
  QVariant localValue(const SavedValue& value, const ListItem& row) const;

  void setCommandsEnabled(bool enabled);
  void addBelowList(QWidget* widget);
  /// The screen's own data access, made on first use.
  GetData& localStore();

  bool AddAllowed = true;
  bool SaveAllowed = false;
  bool mDirty = false;

 private:
  QWidget* buildListPane();
  QWidget* buildDetailPane();
  QWidget* buildTabs();
  QWidget* buildFields(int tab, QWidget* pane);
  void addField(QGridLayout& grid, const EditorField& field);
  void addLabel(QGridLayout& grid, int row, const EditorField& field);
  void addCommand(QGridLayout& grid, int row, const EditorField& field);
  bool validateNumber(TextBox& box);

  EditorLook look_;
  std::map<int, TextBox*> fields_;
  QList<QPushButton*> commands_;
  QVBoxLayout* listPane_ = nullptr;
  SplitPane* panes_ = nullptr;
  std::unique_ptr<GetData> localStore_;
};

}  // namespace qinghe
