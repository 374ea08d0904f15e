#include "content/views/frmHELP.h"

#include <QVBoxLayout>

#include "forms/Splitter.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 820;
constexpr int firstHeight = 560;
constexpr int topicsWidth = 280;
constexpr int barWidth = 5;
constexpr int leastPane = 630 / 15;

const QString image = u"Help"_s;
const QString rootKind = u"haye"_s;
const QString topicKind = u"help"_s;

RequestBuilder help(const QString& fields, const QString& condition) {
  RequestBuilder request(app().gWebServer, paths::loginRows);
  request.encoded(u"STABLE"_s, u"HELP"_s)
      .encoded(u"STRDATA"_s, fields)
      .encoded(u"STOTHER"_s, condition);
  return request;
}

}  // namespace

frmHELP::frmHELP()
    : Form(Kind::Child, u"frmHELP"_s, u"系统帮助"_s),
      TreeView1(new TreeView(u"TreeView1"_s, this)),
      txtFields(new TextBox(u"txtFields"_s, TextBox::Lines::Many, this)),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      panes_(new SplitPane(TreeView1, txtFields, this)) {
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"Exit"_s);
  TreeView1->setAccessibleName(u"帮助主题"_s);
  txtFields->editor()->setAccessibleName(u"帮助内容"_s);
  txtFields->setReadOnly(true);
  panes_->setBarWidth(barWidth);
  panes_->setLeastPane(leastPane);
  panes_->setClamping(true);
  layOut();

  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    if (key == u"Exit") unload();
  });
  connect(TreeView1, &TreeView::mouseDown, this, [this](Qt::MouseButton, const QPoint& position) {
    press(TreeView1->nodeUnder(position));
  });
  connect(TreeView1, &TreeView::nodeKey, this, &frmHELP::press);
}

void frmHELP::layOut() {
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addWidget(panes_, 1);
  resize(firstWidth, firstHeight);
  panes_->setPosition(topicsWidth);
  setTabOrder(TreeView1, txtFields->editor());
}

void frmHELP::onLoad() {
  TreeNode* root = TreeView1->addRoot(u"欢迎使用青禾云集帮助"_s, image, rootKind);
  LoadTopics(*root, 0);
}

void frmHELP::press(TreeNode* node) {
  if (node == nullptr || node->Tag != topicKind) return;
  const double id = Val(node->Key);
  if (node->childCount() == 0) LoadTopics(*node, id);
  ShowTopic(id);
}

void frmHELP::LoadTopics(TreeNode& parent, double parentId) {
  const QString url = help(u"id,help_no,"_s, u"P_ID="_s + textOf(parentId)).url();
  readPortal(url, EmptyAnswer::IsFailure, [this, &parent](GetHtml& html) {
    const QString id = html.GetRowItem();
    const QString name = html.GetRowItem();
    TreeView1->addChild(parent, name, image, topicKind)->Key = id + u" XID"_s;
    parent.setExpanded(true);
    return true;
  });
}

void frmHELP::ShowTopic(double id) {
  const QString url = help(u"help,"_s, u"ID="_s + textOf(id)).url();
  readPortal(url, EmptyAnswer::IsFailure, [this](GetHtml& html) {
    txtFields->setText(html.GetRowItem());
    return true;
  });
}

}  // namespace qinghe
