#include "catalogue/pickers/category_nodes.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

bool addCategories(TreeView& tree, TreeNode& parent, double categoryId, const QString& tag) {
  const QString url =
      RequestBuilder(app().gWebServer, paths::loginRows)
          .encoded(u"STABLE"_s, u"LEBI"_s)
          .encoded(u"STRDATA"_s, u"id,lebi,"_s)
          .encoded(u"STOTHER"_s,
                   u"P_ID=%1 AND HAYE_ID=%2"_s.arg(textOf(categoryId)).arg(app().gHayeId))
          .url();
  return readPortal(url, EmptyAnswer::IsNoRows, [&](GetHtml& html) {
    const QString key = html.GetRowItem() + u" XID"_s;
    tree.addChild(parent, html.GetRowItem(), u"Lebi"_s, tag)->Key = key;
    return true;
  });
}

}  // namespace qinghe
