#include "content/trees/TreeEditor.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/ras.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

const QString itemImage = u"Ximu"_s;

TreeLook lookOf(const TreeEditorKind& kind) {
  return {
      .form = kind.form,
      .caption = kind.caption,
      .rootText = kind.rootText,
      .rootImage = u"Lebi"_s,
      .textName = kind.textName,
      .buttons = {{u"Add"_s, u"增加"_s, u"Add"_s},
                  {u"Update"_s, u"保存"_s, u"Save"_s},
                  {u"Exit"_s, u"退出"_s, u"Exit"_s}},
  };
}

}  // namespace

TreeEditor::TreeEditor(const TreeEditorKind& kind) : TreeScreen(lookOf(kind)), kind_(kind) {
  mCanAdd = true;
}

bool TreeEditor::LoadItems(TreeNode& node, double parentId) {
  const QString url =
      RequestBuilder(app().gWebServer, paths::productRows)
          .encoded(u"STABLE"_s, kind_.table)
          .encoded(u"STRDATA"_s, u"id,docu_no,noth,qiye_id,"_s)
          .encoded(u"STOTHER"_s, u"P_ID="_s + textOf(parentId) + kind_.ownCondition +
                                     textOf(app().gQiyeId) + u")"_s)
          .encoded(u"STORDER"_s, u"ID"_s)
          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [this, &node](GetHtml& html) {
    const QString key = html.GetRowItem() + u" ID"_s;
    const QString title = html.GetRowItem();
    const bool published = html.GetRowItem() == u"True";
    const bool own = Val(html.GetRowItem()) != 0;
    addNode(node, key, title, itemImage, own ? kind_.ownKind : globalKind.toString())
        .setChecked(published);
    return true;
  });
}

bool TreeEditor::ShowItem(double id) {
  const QString url = RequestBuilder(app().gWebServer, paths::productRows)
                          .encoded(u"STABLE"_s, kind_.table)
                          .encoded(u"STRDATA"_s, u"docu,"_s)
                          .encoded(u"STOTHER"_s, u"ID="_s + textOf(id))
                          .encoded(u"STORDER"_s, u"ID"_s)
                          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [this](GetHtml& html) {
    txtFields(0)->setText(html.GetRowItem());
    return true;
  });
}

void TreeEditor::allowFor(const TreeNode& node) {
  mCanAdd = node.Tag != rootKind;
  mCanUpdate = node.Tag == kind_.ownKind;
}

void TreeEditor::nodeClick(TreeNode& node) {
  if (!CheckConnection()) return;
  allowFor(node);
  if (node.childCount() == 0) LoadChildren(node);
  UpdateToolbar();
  ShowItem(idOf(node));
}

void TreeEditor::nodeCheck(TreeNode& node) {
  if (!CheckConnection()) return;
  allowFor(node);
  if (TreeView1->selectedNode() != &node) TreeView1->setSelectedNode(&node);
  mChecked = true;
  UpdateToolbar();
}

void TreeEditor::buttonClick(const QString& key) {
  if (key == u"Add") {
    if (addBelowSelected(kind_.newItemText, itemImage, kind_.ownKind) == nullptr) return;
    txtFields(0)->setText(kind_.newItemText);
    mCanUpdate = true;
    UpdateToolbar();
  } else if (key == u"Update") {
    reportSave(saveSelected());
  } else {
    TreeScreen::buttonClick(key);
  }
}

bool TreeEditor::saveSelected() {
  TreeNode* node = TreeView1->selectedNode();
  return node != nullptr && SaveItemHead(*node) && SaveItemBody(*node);
}

bool TreeEditor::SaveItemHead(TreeNode& node) {
  const TreeNode* parent = node.parentNode();
  if (parent == nullptr) return false;  // the root is no item
  const QString url = RequestBuilder(app().gWebServer, paths::productAdd)
                          .encoded(u"stable"_s, kind_.table)
                          .encoded(u"stother"_s, u"id="_s + textOf(idOf(node)))
                          .encoded(u"QIYE_ID"_s, textOf(app().gQiyeId))
                          .encoded(u"QIYE"_s, app().gUserName)
                          .encoded(u"P_ID"_s, textOf(idOf(*parent)))
                          .encoded(u"DOCU_NO"_s, node.text())
                          .encoded(u"NOTH"_s, textOf(node.isChecked()))
                          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [&node](GetHtml& html) {
    const QString id = html.GetRowItem();
    if (Val(id) == 0) return false;  // the portal's refusal
    node.Key = id + u" ID"_s;
    return true;
  });
}

bool TreeEditor::SaveItemBody(const TreeNode& node) {
  const RequestBuilder request = RequestBuilder(app().gWebServer, paths::productAdd)
                                     .encoded(u"stable"_s, kind_.table)
                                     .encoded(u"stother"_s, u"id="_s + textOf(idOf(node)))
                                     .encoded(u"DOCU"_s, txtFields(0)->text());
  return postToPortal(request.page(), request.body());
}

}  // namespace qinghe
