#pragma once

#include "forms/TreeView.h"
#include "shell/Picker.h"

namespace qinghe {

/// "选择类别": a category of the company's industry, from a tree that grows as it is pressed. Every
/// level can be chosen.
class frmGetLEBI : public Picker {
  Q_OBJECT

 public:
  frmGetLEBI();

  TreeView* TreeView1;
  TextBox* TextLebi_id;  ///< the choice: "12 XID"
  TextBox* TextLebi;     ///< the category's name

  Choice choice() const override;

 protected:
  void onLoad() override;
  void clearChoice() override;

 private:
  void press(TreeNode& node);
  void loadChildren(TreeNode& parent, double id);
};

}  // namespace qinghe
