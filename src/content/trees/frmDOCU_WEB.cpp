#include "content/trees/frmDOCU_WEB.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

TreeEditorKind documents() {
  return {
      .form = u"frmDOCU_WEB"_s,
      .caption = u"文件登记"_s,
      .table = u"docu"_s,
      .rootText = u"文档"_s,
      .newItemText = u"新添文件"_s,
      .ownKind = u"docu"_s,
      .textName = u"文件内容"_s,
      .ownCondition = u" and(qiye_id=0 or qiye_id="_s,
  };
}

}  // namespace

frmDOCU_WEB::frmDOCU_WEB() : TreeEditor(documents()) {}

}  // namespace qinghe
