#pragma once

#include "catalogue/LocalRecordEditor.h"

namespace qinghe {

/// "商品登记(本地)": the company's goods in the local table `XIMU`, each saved row sent to the
/// portal, and the printed goods list.
class FrmXIMU : public LocalRecordEditor {
  Q_OBJECT

 public:
  FrmXIMU();

 protected:
  void buttonClick(const QString& key) override;

 private:
  void print();
};

}  // namespace qinghe
