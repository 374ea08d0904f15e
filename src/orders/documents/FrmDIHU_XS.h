#pragma once

#include "orders/documents/OrderScreen.h"

namespace qinghe {

/// "销售订货单": the seller on a retail order. Its lines come packed in two lists of the header and
/// cannot be edited, it has no local copy, and a save is one request.
class FrmDIHU_XS : public OrderScreen {
  Q_OBJECT

 public:
  FrmDIHU_XS();

 protected:
  bool LoadLines() override;
  bool SaveOrder() override;
  QList<SummedTexts> summedLines() const override;
  void enterCell(ListItem& row, LineInput input, const QString& text) override;
};

}  // namespace qinghe
