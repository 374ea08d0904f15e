#include "content/trees/frmPUBL_WEB.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

const QString forumKind = u"forum"_s;
const QString postKind = u"publish"_s;
const QString forumImage = u"Forum"_s;

TreeLook forumsLook() {
  return {
      .form = u"frmPUBL_WEB"_s,
      .caption = u"论坛管理"_s,
      .rootText = u"论坛"_s,
      .rootImage = u"Bume"_s,
      .textName = u"帖子内容"_s,
      .buttons = {{u"Add"_s, u"增加"_s, u"Add"_s},
                  {u"Update"_s, u"保存"_s, u"Save"_s},
                  {u"Delete"_s, u"删除"_s, u"Delete"_s},
                  {u"Exit"_s, u"退出"_s, u"Exit"_s}},
  };
}

RequestBuilder rowsOf(const QString& table, const QString& fields, const QString& condition) {
  RequestBuilder request(app().gWebServer, paths::productRows);
  request.encoded(u"STABLE"_s, table)
      .encoded(u"STRDATA"_s, fields)
      .encoded(u"STOTHER"_s, condition);
  return request;
}

}  // namespace

frmPUBL_WEB::frmPUBL_WEB() : TreeScreen(forumsLook()) {
  // Posts are written elsewhere.
  txtFields(0)->setReadOnly(true);
}

bool frmPUBL_WEB::LoadChildren(TreeNode& node) {
  return node.Tag == rootKind ? LoadForums(node) : LoadPosts(node);
}

bool frmPUBL_WEB::LoadForums(TreeNode& root) {
  const QString url = rowsOf(u"forum"_s, u"id,forum_name,border_id,"_s,
                             u"border_id=0 or border_id="_s + textOf(app().gQiyeId))
                          .encoded(u"STORDER"_s, u"ID"_s)
                          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [this, &root](GetHtml& html) {
    const QString key = html.GetRowItem() + u" FID"_s;
    const QString name = html.GetRowItem();
    const bool own = Val(html.GetRowItem()) != 0;
    addNode(root, key, name, own ? forumImage : u"Glob"_s, own ? forumKind : globalKind.toString());
    return true;
  });
}

bool frmPUBL_WEB::LoadPosts(TreeNode& node) {
  const QString id = textOf(idOf(node));
  const QString condition =
      node.Tag == forumKind ? u"p_id=0 and forum_id="_s + id : u"P_ID="_s + id;
  const QString url =
      rowsOf(u"publish"_s, u"id,content,"_s, condition).encoded(u"STORDER"_s, u"ID"_s).url();
  return readPortal(url, EmptyAnswer::IsFailure, [this, &node](GetHtml& html) {
    const QString key = html.GetRowItem() + u" PID"_s;
    addNode(node, key, html.GetRowItem(), u"Publish"_s, postKind);
    return true;
  });
}

bool frmPUBL_WEB::ShowPost(double id) {
  const QString url =
      rowsOf(u"publish"_s, u"user_name,publish_time,return_num,content,"_s, u"ID="_s + textOf(id))
          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [this](GetHtml& html) {
    QStringList lines;
    for (int cell = 0; cell < 4; ++cell) lines.append(html.GetRowItem());
    txtFields(0)->setText(lines.join(u"\r\n"_s));
    return true;
  });
}

void frmPUBL_WEB::nodeClick(TreeNode& node) {
  // A forum of all is passed over: what the node clicked before allows stays allowed.
  if (node.Tag != globalKind) {
    mCanAdd = node.Tag == rootKind;
    mCanUpdate = node.Tag == forumKind;
    mCanDelete = node.Tag == postKind && node.childCount() == 0;
  }
  const bool holdsPosts = node.Tag == forumKind || node.Tag == postKind;
  if (holdsPosts && node.childCount() == 0) LoadPosts(node);
  if (node.Tag == postKind) ShowPost(idOf(node));
  UpdateToolbar();
}

void frmPUBL_WEB::buttonClick(const QString& key) {
  if (key == u"Add") {
    if (addBelowSelected(u"新添论坛"_s, forumImage, forumKind) == nullptr) return;
    mCanUpdate = true;
    UpdateToolbar();
  } else if (key == u"Update") {
    reportSave(SaveForum());
  } else if (key == u"Delete") {
    StatusBar1->setText(DeletePost() ? u"删除成功！！！"_s : u"删除失败！！！"_s);
  } else {
    TreeScreen::buttonClick(key);
  }
}

bool frmPUBL_WEB::SaveForum() {
  TreeNode* node = TreeView1->selectedNode();
  if (node == nullptr) return false;
  const QString url = RequestBuilder(app().gWebServer, paths::productAdd)
                          .encoded(u"stable"_s, u"forum"_s)
                          .encoded(u"stother"_s, u"id="_s + textOf(idOf(*node)))
                          .encoded(u"BORDER_ID"_s, textOf(app().gQiyeId))
                          .encoded(u"BORDER_NAME"_s, app().gUserName)
                          .encoded(u"FORUM_NAME"_s, node->text())
                          .encoded(u"NOTH"_s, textOf(node->isChecked()))
                          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [node](GetHtml& html) {
    const QString id = html.GetRowItem();
    if (Val(id) == 0) return false;  // the portal's refusal
    node->Key = id + u" ID"_s;
    return true;
  });
}

bool frmPUBL_WEB::DeletePost() {
  TreeNode* node = TreeView1->selectedNode();
  if (node == nullptr) return false;
  const QString url = RequestBuilder(app().gWebServer, paths::productDelete)
                          .encoded(u"stable"_s, u"publish"_s)
                          .encoded(u"stother"_s, u"id="_s + textOf(idOf(*node)))
                          .url();
  return readPortal(url, EmptyAnswer::IsFailure, [this, &node](GetHtml& html) {
    if (Val(html.GetRowItem()) != 0) return true;  // the portal has kept it
    TreeView1->removeNode(node);
    node = nullptr;
    return true;
  });
}

}  // namespace qinghe
