#pragma once

#include "catalogue/PicturedRecordEditor.h"

namespace qinghe {

/// "图片登记": the company's picture records on the portal. The smallest editor of the family: no
/// pages, no pickers, no rule for numbers.
class FrmTUPI_WEB : public PicturedRecordEditor {
  Q_OBJECT

 public:
  FrmTUPI_WEB();
};

}  // namespace qinghe
