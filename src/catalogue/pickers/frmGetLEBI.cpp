#include "catalogue/pickers/frmGetLEBI.h"

#include <QVBoxLayout>

#include "catalogue/pickers/category_nodes.h"
#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 360;
constexpr int firstHeight = 440;

const QString categoryTag = u"lebi"_s;

}  // namespace

frmGetLEBI::frmGetLEBI()
    : Picker(u"frmGetLEBI"_s, u"选择类别"_s),
      TreeView1(new TreeView(u"TreeView1"_s, this)),
      TextLebi_id(hiddenBox(u"TextLebi_id"_s)),
      TextLebi(hiddenBox(u"TextLebi"_s)) {
  TreeView1->setAccessibleName(u"类别"_s);
  TreeView1->setRootIsDecorated(true);
  TreeView1->setExpandsOnDoubleClick(false);  // the first press has expanded it already
  auto* all = new QVBoxLayout(this);
  all->addWidget(TreeView1, 1);
  addButtons(*all);
  setTabOrder(TreeView1, commandC);
  setTabOrder(commandC, commandT);
  resize(firstWidth, firstHeight);
  connect(TreeView1, &TreeView::mouseDown, this,
          [this](Qt::MouseButton /*button*/, const QPoint& position) {
            if (auto* node = TreeView1->nodeUnder(position)) press(*node);
          });
  connect(TreeView1, &TreeView::nodeKey, this, [this](TreeNode* node) { press(*node); });
}

void frmGetLEBI::onLoad() {
  TreeNode* root = TreeView1->addRoot(app().gHayeName, u"Bume"_s, u"bume"_s);
  loadChildren(*root, 0);
  root->setExpanded(true);
  TreeView1->setFocus();
}

void frmGetLEBI::loadChildren(TreeNode& parent, double id) {
  (void)addCategories(*TreeView1, parent, id, categoryTag);
  for (int child = 0; child < parent.childCount(); ++child) {
    parent.childNode(child)->setExpanded(true);
  }
}

void frmGetLEBI::press(TreeNode& node) {
  if (node.Tag != categoryTag) return;
  if (node.childCount() == 0) {
    loadChildren(node, Val(node.Key));
    node.setExpanded(true);
  }
  TextLebi_id->setText(node.Key);
  TextLebi->setText(node.text());
}

Choice frmGetLEBI::choice() const {
  return {TextLebi_id->text(), TextLebi->text()};
}

void frmGetLEBI::clearChoice() {
  TextLebi_id->setText({});
  TextLebi->setText({});
}

}  // namespace qinghe
