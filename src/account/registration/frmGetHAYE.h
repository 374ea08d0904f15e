#pragma once

#include "account/registration/ReferencePicker.h"

namespace qinghe {

/// "选择行业": an industry.
class frmGetHAYE : public ReferencePicker {
  Q_OBJECT

 public:
  frmGetHAYE();

  TextBox* TextHaye_id;  ///< the choice: "12 ID"
  TextBox* TextHaye;     ///< the industry's name
};

}  // namespace qinghe
