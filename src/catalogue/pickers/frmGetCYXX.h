#pragma once

#include "catalogue/pickers/PagedPicker.h"

namespace qinghe {

/// "选择生产商": a producer of the company's industry.
class frmGetCYXX : public PagedPicker {
  Q_OBJECT

 public:
  frmGetCYXX();

  TextBox* TextCyxx_id;  ///< the choice: "12 ID"
  TextBox* TextCyxx;     ///< the producer's name
};

}  // namespace qinghe
