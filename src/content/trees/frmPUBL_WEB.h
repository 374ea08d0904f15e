#pragma once

#include "content/trees/TreeScreen.h"

namespace qinghe {

/// "论坛管理": the forums that the company may see, and under each its posts as threads. The
/// company makes and renames forums of its own, and deletes posts without replies.
class frmPUBL_WEB : public TreeScreen {
  Q_OBJECT

 public:
  frmPUBL_WEB();

 protected:
  void nodeClick(TreeNode& node) override;
  void buttonClick(const QString& key) override;
  bool LoadChildren(TreeNode& node) override;

 private:
  bool LoadForums(TreeNode& root);
  bool LoadPosts(TreeNode& node);
  bool ShowPost(double id);
  bool SaveForum();
  bool DeletePost();
};

}  // namespace qinghe
