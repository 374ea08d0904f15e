#pragma once

#include <QMenu>
#include <array>

#include "orders/documents/CompanyOrder.h"

namespace qinghe {

/// "进货订货单": the buyer on an order. Takes lines from the goods chooser, and can copy a
/// supplier's goods item into the company's own catalogue.
class FrmGOHU_JH : public CompanyOrder {
  Q_OBJECT

 public:
  FrmGOHU_JH();

  QMenu* mnuGohu;  ///< over a row: `mnuXimux`, `mnuList`, `mnuImport`

 protected:
  void onUnload() override;
  void press(const QString& key) override;
  void setUsable(const QString& control, bool usable) override;

 private:
  void makeMenu();
  void popUpMenu(const ListItem& row, const QPoint& at);
  void chooseBySupplier();
  void choose();
  void TakeChosenLines();
  void importGoods();
  bool FetchGoodsForImport(qint16 goodsId);
  bool AddGoodsToOwnCatalogue(qint16 goodsId);

  bool mChooserUsed = false;
  /// A goods row on its way to the own catalogue.
  std::array<QString, 13> mGoodsFields;
};

}  // namespace qinghe
