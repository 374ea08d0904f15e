#pragma once

#include "catalogue/PortalRecordEditor.h"

namespace qinghe {

/// "调查登记": the company's survey questions on the portal.
class FrmQUST_WEB : public PortalRecordEditor {
  Q_OBJECT

 public:
  FrmQUST_WEB();

 protected:
  void listFilled() override;
  void addRow() override;
};

}  // namespace qinghe
