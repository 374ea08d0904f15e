#pragma once

#include "catalogue/PagedRecordEditor.h"

namespace qinghe {

/// "品牌登记": the company's brands, which live on the portal only. All companies of the industry
/// of brands choose among those that are live.
class FrmMUMU_WEB : public PagedRecordEditor {
  Q_OBJECT

 public:
  FrmMUMU_WEB();

 protected:
  void pick(const QString& name) override;

 private:
  template <class Picker>
  void pickInto(int field);
};

}  // namespace qinghe
