#pragma once

#include <QList>
#include <QString>
#include <array>

#include "orders/OrderForm.h"

namespace qinghe {

/// Name, address, post code, telephone, contact, bank, account and tax number of an enterprise, as
/// an order prints them. They start empty.
using PrintedParty = std::array<QString, 8>;

/// The columns that a party is read with.
QString printedPartyColumns();

/// A cell of that answer as it is printed: an empty one becomes a single blank.
QString printedText(const QString& cell);

/// The ids of the two enterprises to print: the own one stands on the side that the screen is of.
QString printedSellerId(OrderSide side, const OrderForm& form, const OrderParty& own);
QString printedBuyerId(OrderSide side, const OrderForm& form, const OrderParty& own);

/// The command that reads the local copy of an order for its report. Values are not escaped: a
/// single quote in one breaks the command.
QString orderPrintCommand(const PrintedParty& seller, const PrintedParty& buyer,
                          const QString& orderId);

}  // namespace qinghe
