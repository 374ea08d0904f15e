#pragma once

#include "forms/Form.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "forms/TreeView.h"

namespace qinghe {

class SplitPane;

/// "系统帮助": the portal's help tree. A press on a topic reads what stands below it, unless that
/// is there already, and its text.
class frmHELP : public Form {
  Q_OBJECT

 public:
  frmHELP();

  TreeView* TreeView1;
  TextBox* txtFields;
  Toolbar* Toolbar1;

 protected:
  void onLoad() override;

 private:
  void layOut();
  void press(TreeNode* node);
  void LoadTopics(TreeNode& parent, double parentId);
  void ShowTopic(double id);

  SplitPane* panes_;
};

}  // namespace qinghe
