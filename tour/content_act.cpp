// What a company publishes beside its goods, and what the portal tells it.

#include <QTest>

#include "acts.h"
#include "catalogue/FrmQUST_WEB.h"
#include "catalogue/FrmXIMU.h"
#include "content/trees/frmDOCU_WEB.h"
#include "content/trees/frmPUBL_WEB.h"
#include "content/trees/frmXIWE_WEB.h"
#include "content/views/FrmView.h"
#include "content/views/FrmView2.h"
#include "content/views/frmHELP.h"
#include "hands.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

template <class Screen>
TreeNode* firstNode() {
  if (!isShown<Screen>()) return nullptr;
  TreeNode* root = defaultInstance<Screen>().TreeView1->root(0);
  return root == nullptr || root->childCount() == 0 ? nullptr : root->childNode(0);
}

/// The first node below the root of a screen's tree.
template <class Screen>
TourStep nodeStep(const QString& name) {
  return {name, [] { return firstNode<Screen>() != nullptr; },
          [] { clickNode(*defaultInstance<Screen>().TreeView1, firstNode<Screen>()); }};
}

/// A forum of the company; the public ones show no threads.
TreeNode* ownForum() {
  const TreeNode* first = firstNode<frmPUBL_WEB>();
  if (first == nullptr) return nullptr;
  TreeNode* root = first->parentNode();
  for (int i = 0; i < root->childCount(); ++i) {
    if (root->childNode(i)->Tag == u"forum") return root->childNode(i);
  }
  return nullptr;
}

void clickInForum(const TreeNode* node) {
  clickNode(*defaultInstance<frmPUBL_WEB>().TreeView1, node);
}

template <class Screen>
TourStep serviceStep(const QString& name) {
  return {name,
          [] { return isShown<Screen>() && defaultInstance<Screen>().ListView1->itemCount() > 0; },
          [] { clickRow(*defaultInstance<Screen>().ListView1, 0); }};
}

template <class Screen>
bool hasData() {
  return defaultInstance<Screen>().ListView2->itemCount() > 0;
}

bool hasTopic() {
  return !defaultInstance<frmHELP>().txtFields->text().isEmpty();
}

}  // namespace

QList<TourStep> contentSteps() {
  return {
      {u"main-window"_s, isLoggedIn, [] { choose(u"mnuForum_WEB"_s); }},
      {u"forum-opened"_s, [] { return ownForum() != nullptr; }, [] { clickInForum(ownForum()); }},
      {u"forum-threads"_s, [] { return ownForum()->childCount() > 0; },
       [] { clickInForum(ownForum()->childNode(0)); }},
      {u"forum"_s, isShown<frmPUBL_WEB>, [] { choose(u"mnuXiwe_WEB"_s); }},
      nodeStep<frmXIWE_WEB>(u"news-opened"_s),
      {u"news"_s, isShown<frmXIWE_WEB>, [] { choose(u"mnuDocu_WEB"_s); }},
      nodeStep<frmDOCU_WEB>(u"documents-opened"_s),
      {u"documents"_s, isShown<frmDOCU_WEB>, [] { choose(u"mnuQust_WEB"_s); }},
      {u"surveys"_s, isShown<FrmQUST_WEB>, [] { choose(u"mnuView"_s); }},
      serviceStep<FrmView>(u"live-information-opened"_s),
      {u"live-information"_s, hasData<FrmView>, [] { choose(u"mnuView2"_s); }},
      serviceStep<FrmView2>(u"fixed-information-opened"_s),
      {u"fixed-information"_s, hasData<FrmView2>, [] { choose(u"mnuXimu"_s); }},
      {u"help-asked"_s, isShown<FrmXIMU>,
       [] { QTest::keyClick(defaultInstance<FrmXIMU>().ListView1, Qt::Key_F1); }},
      nodeStep<frmHELP>(u"help-opened"_s),
      {u"help"_s, hasTopic, leaveProgram},
  };
}

}  // namespace qinghe
