#pragma once

#include "catalogue/pickers/PagedPicker.h"

namespace qinghe {

/// "选择品牌": a brand of any company.
class frmGetMUMU : public PagedPicker {
  Q_OBJECT

 public:
  frmGetMUMU();

  TextBox* TextMumu_id;  ///< the choice: "12 ID"
  TextBox* TextMumu;     ///< the brand's name
};

}  // namespace qinghe
