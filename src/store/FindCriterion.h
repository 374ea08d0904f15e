#pragma once

#include <QString>
#include <optional>

namespace qinghe {

class RowBuffer;

/// "column=value" of a search, the value a number, a quoted text, True or False.
class FindCriterion {
 public:
  /// Throws `StoreError` when the text is of another form.
  explicit FindCriterion(const QString& text);

  const QString& column() const { return column_; }
  /// The key looked for: nothing when no whole number can match.
  std::optional<qint64> key() const;
  /// Numbers compare by value, text without case; a null matches nothing.
  bool matches(const RowBuffer& rows, qsizetype row, int column) const;

 private:
  QString column_;
  QString text_;
  std::optional<double> number_;
};

}  // namespace qinghe
