#pragma once

#include "catalogue/PagedRecordEditor.h"

namespace qinghe {

/// "商品登记": the company's goods on the portal, with the local table `XIMU` as a mirror that
/// lacks the attribute text. Category, brand and attributes are picked here and nowhere else.
class FrmXIMU_WEB : public PagedRecordEditor {
  Q_OBJECT

 public:
  FrmXIMU_WEB();

 protected:
  void buttonClick(const QString& key) override;
  void pick(const QString& name) override;
  void onUnload() override;

 private:
  void print();
  void pickCategory();
  void pickBrand();

  bool categoriesOpened_ = false;
  bool brandsOpened_ = false;
};

}  // namespace qinghe
