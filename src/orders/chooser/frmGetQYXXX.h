#pragma once

#include "orders/chooser/DetailForm.h"

namespace qinghe {

/// "发行商详细信息": the enterprise `gPartnerId` of the portal.
class frmGetQYXXX : public DetailForm {
  Q_OBJECT

 public:
  frmGetQYXXX();

 protected:
  qint32 recordId() const override;
};

}  // namespace qinghe
