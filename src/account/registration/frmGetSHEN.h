#pragma once

#include "account/registration/ReferencePicker.h"

namespace qinghe {

/// "选择省份": a province. Its number also becomes the one whose cities `frmGetAREA` lists.
class frmGetSHEN : public ReferencePicker {
  Q_OBJECT

 public:
  frmGetSHEN();

  TextBox* TextShen_id;  ///< the choice: "12 ID"
  TextBox* TextShen;     ///< the province's name

 protected:
  void chosen(double id) override;
};

}  // namespace qinghe
