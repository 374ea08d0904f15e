#pragma once

#include <QRadioButton>
#include <array>

#include "forms/Form.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"

namespace qinghe {

/// "注册信息": the portal's terms of use, which must be accepted before a company registers.
class FrmRegister_OK : public Form {
  Q_OBJECT

 public:
  FrmRegister_OK();

  Toolbar* Toolbar1;
  TextBox* Text1;                        ///< the terms
  std::array<QRadioButton*, 2> OptionS;  ///< 0 not accepted, 1 accepted

 private:
  void layOut();
  void buttonClick(const QString& key);
};

}  // namespace qinghe
