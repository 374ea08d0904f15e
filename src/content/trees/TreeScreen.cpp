#include "content/trees/TreeScreen.h"

#include <QVBoxLayout>

#include "forms/Splitter.h"
#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 860;
constexpr int firstHeight = 560;
constexpr int treeWidth = 340;
constexpr int barWidth = 5;
constexpr int leastPane = 42;
constexpr int vip = 2;

}  // namespace

TreeScreen::TreeScreen(const TreeLook& look)
    : Form(Kind::Child, look.form, look.caption),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      TreeView1(new TreeView(u"TreeView1"_s, this)),
      StatusBar1(new StatusBar(u"StatusBar1"_s, this)),
      look_(look),
      text_(new TextBox(u"txtFields(0)"_s, TextBox::Lines::Many, this)) {
  for (const TreeButton& button : look_.buttons) {
    Toolbar1->addButton(button.key, button.caption, button.toolTip);
  }
  TreeView1->setCheckBoxes(true);
  TreeView1->setLabelEdit(true);
  TreeView1->setRootIsDecorated(true);
  TreeView1->setAccessibleName(look_.rootText);
  text_->editor()->setAccessibleName(look_.textName);
  layOut();

  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    // The toolbar takes no focus, so a label may still be open under it.
    TreeView1->finishLabelEdit();
    buttonClick(key);
  });
  connect(TreeView1, &TreeView::nodeClick, this, [this](TreeNode* node) { nodeClick(*node); });
  connect(TreeView1, &TreeView::nodeCheck, this, [this](TreeNode* node) { nodeCheck(*node); });
}

void TreeScreen::layOut() {
  auto* panes = new SplitPane(TreeView1, text_, this);
  panes->setBarWidth(barWidth);
  panes->setLeastPane(leastPane);
  panes->setClamping(true);
  panes->setPosition(treeWidth);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addWidget(panes, 1);
  all->addWidget(StatusBar1);
  resize(firstWidth, firstHeight);
  setTabOrder(TreeView1, text_->editor());
}

void TreeScreen::onLoad() {
  TreeNode* root = TreeView1->addRoot(look_.rootText, look_.rootImage, rootKind.toString());
  root->Key = u"0 ID"_s;
  root->setExpanded(true);
  LoadChildren(*root);
  UpdateToolbar();
}

void TreeScreen::nodeCheck(TreeNode& /*node*/) {}

void TreeScreen::buttonClick(const QString& key) {
  if (key == u"Exit") unload();
}

void TreeScreen::UpdateToolbar() {
  Toolbar1->setButtonEnabled(u"Add"_s, app().gUserLevel == vip && mCanAdd);
  Toolbar1->setButtonEnabled(u"Update"_s, mCanUpdate);
  Toolbar1->setButtonEnabled(u"Delete"_s, mCanDelete);
}

TreeNode& TreeScreen::addNode(TreeNode& parent, const QString& key, const QString& text,
                              const QString& image, const QString& kind) {
  TreeNode* node = TreeView1->addChild(parent, text, image, kind);
  node->Key = key;
  parent.setExpanded(true);
  return *node;
}

TreeNode* TreeScreen::addBelowSelected(const QString& text, const QString& image,
                                       const QString& kind) {
  TreeNode* parent = TreeView1->selectedNode();
  if (parent == nullptr) return nullptr;
  TreeNode& node = addNode(*parent, {}, text, image, kind);
  TreeView1->setSelectedNode(&node);
  // Its name comes first, and a click to get at it would already ask for what stands below it.
  TreeView1->editItem(&node);
  return &node;
}

void TreeScreen::reportSave(bool saved) {
  StatusBar1->setText(saved ? u"保存成功！！！"_s : u"保存失败！！！"_s);
}

double TreeScreen::idOf(const TreeNode& node) {
  return Val(node.Key);
}

}  // namespace qinghe
