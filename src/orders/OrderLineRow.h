#pragma once

#include <QList>
#include <QString>
#include <array>

namespace qinghe {

/// The columns of an order's list. The last five have width 0: they travel with the row unseen.
enum LineColumn {
  LineName,
  LineCode,
  LineQuantity,
  LinePrice,
  LineAmount,
  LineDiscount,
  LineReceivable,
  LineCartons,
  LineLoose,
  LineGoodsId,
  LineNote,
  LineCartonSize,
  LineBookNumber,
  LineCategory,
  LineColumnCount
};

struct LineColumnTitle {
  QString title;
  int width;  ///< in the list's own units
};

/// Titles and widths, one for each column from left to right.
const QList<LineColumnTitle>& orderLineColumns();

/// The inputs that open over a cell of the list.
enum class LineInput { TxtInputSL, TxtInputJG, TxtInputZK };

/// The name of its text box.
QString nameOf(LineInput input);

/// The column that an input stands for.
LineColumn columnOf(LineInput input);

/// What the message box says when an input is left with this text; empty when it is accepted.
/// Quantity and price must be numbers, a discount factor also not above 1; negative ones pass.
QString complaintOf(LineInput input, const QString& text);

/// One line of an open order as the list shows it: a key and fourteen texts.
///
/// The list is the document while it is open, so all values are text, and numbers are the leading
/// numbers of those texts. Negative quantities are returns.
struct OrderLineRow {
  static QString icon();

  /// The portal's line id followed by " ID"; empty for a line that the portal does not have yet.
  QString key;
  std::array<QString, LineColumnCount> texts;

  /// The portal's line id as decimal text, "0" for a new line.
  QString portalId() const;
  double goodsId() const;

  /// Amount: quantity × price. Throws `Overflow` and leaves the cell.
  void computeAmount();
  /// Receivable: amount × discount factor. Throws `Overflow` and leaves the cell.
  void computeReceivable();
  /// Whole cartons and loose units, both "0" when the carton size is not above 0. Throws `Failure`
  /// and leaves both cells when the size rounds to 0 or a number is beyond 32 bits.
  void computeCartons();

  /// Takes what was typed into an input and recomputes what hangs on it: a quantity everything, a
  /// price amount and receivable, a discount the receivable. A step that fails is left out and
  /// the next one goes on.
  void enter(LineInput input, const QString& text);
};

/// The columns that the cells of a line's portal answer go to, in the answer's order; the first
/// cell, which becomes the key, is not among them.
const QList<LineColumn>& lineAnswerColumns();

/// A row from the cells of a portal answer. Cells that are not there stay empty: the sales side
/// does not ask for the category.
OrderLineRow lineFromAnswer(const QList<QString>& cells);

/// The key of a row that has this portal id.
QString lineKey(const QString& portalId);

}  // namespace qinghe
