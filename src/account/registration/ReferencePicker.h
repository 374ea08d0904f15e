#pragma once

#include <functional>

#include "forms/ListView.h"
#include "shell/Picker.h"

namespace qinghe {

/// Where the three reference pickers differ.
struct ReferencePickerKind {
  QString form, caption;
  QString idBox, nameBox;  ///< names of the boxes of the choice
  QString table, fields;
  std::function<QString()> condition = {};  ///< asked at load; none for all rows
};

/// One of the portal's short reference tables as a list. The choice is the row clicked last; until
/// one is clicked there is none.
class ReferencePicker : public Picker {
  Q_OBJECT

 public:
  ListView* ListView1;  ///< key id + " ID", text the name

  Choice choice() const override;

 protected:
  explicit ReferencePicker(const ReferencePickerKind& kind);

  TextBox* idBox() const { return idBox_; }
  TextBox* nameBox() const { return nameBox_; }

  /// A row was clicked, or a key moved to it; `id` is its number.
  virtual void chosen(double id);
  void onLoad() override;
  void clearChoice() override;

 private:
  void take(const ListItem& item);

  ReferencePickerKind kind_;
  TextBox* idBox_;
  TextBox* nameBox_;
};

}  // namespace qinghe
