#include "content/trees/frmXIWE_WEB.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

TreeEditorKind news() {
  return {
      .form = u"frmXIWE_WEB"_s,
      .caption = u"新闻登记"_s,
      .table = u"xiwe"_s,
      .rootText = u"新闻"_s,
      .newItemText = u"新添新闻"_s,
      .ownKind = u"xiwe"_s,
      .textName = u"新闻内容"_s,
      .ownCondition = u" and (qiye_id=0 or qiye_id="_s,
  };
}

}  // namespace

frmXIWE_WEB::frmXIWE_WEB() : TreeEditor(news()) {}

}  // namespace qinghe
