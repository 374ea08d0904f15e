#pragma once

#include "forms/CellEditor.h"
#include "forms/ListView.h"
#include "shell/Picker.h"

namespace qinghe {

/// "其它属性": the attribute names of the industry and of `gShxiKind`, with a value typed to each.
/// The values travel as one text, each with a comma behind it, in the order of the names. The names
/// are those of the opener that loaded it.
class frmGetSHXI : public Picker {
  Q_OBJECT

 public:
  frmGetSHXI();

  /// Shows it on a field's text and gives the new one, empty when it was cancelled.
  QString edit(const QString& text);

  ListView* ListView1;
  TextBox* txtSelect;  ///< lies over the value that is being typed

  /// The values: the opener's before the showing, the user's behind it.
  QString Tag;

  /// The text, in both parts.
  Choice choice() const override { return {Tag, Tag}; }

 protected:
  void onLoad() override;
  void onActivate() override;
  void showEvent(QShowEvent* event) override;
  void accept() override;
  void clearChoice() override;

 private:
  void place();

  CellEditor* cells_;
  bool filled_ = false;  ///< since it was shown
};

}  // namespace qinghe
