#pragma once

#include "account/registration/ReferencePicker.h"

namespace qinghe {

/// "选择地区": a city of the province chosen last.
class frmGetAREA : public ReferencePicker {
  Q_OBJECT

 public:
  frmGetAREA();

  TextBox* TextArea_id;  ///< the choice: "12 ID"
  TextBox* TextArea;     ///< the city's name
};

}  // namespace qinghe
