#pragma once

#include "content/trees/TreeEditor.h"

namespace qinghe {

/// "文件登记": the company's documents on the portal.
class frmDOCU_WEB : public TreeEditor {
  Q_OBJECT

 public:
  frmDOCU_WEB();
};

}  // namespace qinghe
