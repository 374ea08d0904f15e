#pragma once

#include "orders/chooser/DetailForm.h"

namespace qinghe {

/// "品牌详细信息": the brand `gChosenProducerId` of the portal. Nobody sets that id, so the rows
/// stay empty unless the portal has a brand 0.
class frmGetCYXXX : public DetailForm {
  Q_OBJECT

 public:
  frmGetCYXXX();

 protected:
  qint32 recordId() const override;
};

}  // namespace qinghe
