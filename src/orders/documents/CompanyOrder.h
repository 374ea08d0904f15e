#pragma once

#include <memory>

#include "orders/documents/OrderScreen.h"
#include "orders/order_print.h"
#include "store/GetData.h"

namespace qinghe {

/// How a side asks for its lines in their order.
enum class LineOrderSent { Encoded, Literal };

/// An order between two enterprises: lines that are rows of their own, a local copy of the whole
/// document, and printing from that copy.
class CompanyOrder : public OrderScreen {
  Q_OBJECT

 protected:
  CompanyOrder(const OrderLook& look, LineOrderSent lineOrder);

  bool LoadLines() override;
  bool SaveOrder() override;
  QList<SummedTexts> summedLines() const override;
  void enterCell(ListItem& row, LineInput input, const QString& text) override;
  void press(const QString& key) override;

  QList<OrderLineRow> lines() const;
  /// Puts these lines into the list: those that it has, row for row, and the others behind them.
  void showLines(const QList<OrderLineRow>& rows);

  PrintedParty mSellerInfo;
  PrintedParty mBuyerInfo;
  ListItem* mLineRow = nullptr;  ///< the row being saved
  qint32 mLocalOrderId = 0;

 private:
  bool SaveHeaderToPortal();
  bool SaveLineToPortal();
  bool SaveHeaderLocal();
  bool SaveLineLocal();
  void print();
  bool LoadSellerInfo();
  bool LoadBuyerInfo();
  bool loadParty(const QString& id, PrintedParty& party);
  GetData& localStore();

  LineOrderSent lineOrder_;
  std::unique_ptr<GetData> store_;
};

}  // namespace qinghe
