#pragma once

#include "forms/TextBox.h"
#include "orders/chooser/DetailForm.h"

namespace qinghe {

/// "商品详细信息": the goods item `gGoodsId` of the portal, with the attributes that its industry
/// knows.
class frmGetXIMUX : public DetailForm {
  Q_OBJECT

 public:
  frmGetXIMUX();

  TextBox* Text1;  ///< never seen: the attribute values, each with a comma behind it
  TextBox* Text2;  ///< the introduction

 protected:
  void onLoad() override;
  qint32 recordId() const override;
  void takeRest(GetHtml& html) override;

 private:
  bool addAttributes();
  void showAttributeValues();
};

}  // namespace qinghe
