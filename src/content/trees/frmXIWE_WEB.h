#pragma once

#include "content/trees/TreeEditor.h"

namespace qinghe {

/// "新闻登记": the company's news on the portal.
class frmXIWE_WEB : public TreeEditor {
  Q_OBJECT

 public:
  frmXIWE_WEB();
};

}  // namespace qinghe
