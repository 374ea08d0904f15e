#pragma once

#include <QString>
#include <compare>

namespace qinghe {

/// An amount with four decimals in 64 bits. Made from a double it is the value times 10000,
/// rounded half to even; beyond 64 bits it throws `Overflow`.
class Money {
 public:
  Money() = default;
  explicit Money(double value);
  static Money fromUnits(qint64 tenThousandths);

  qint64 units() const { return units_; }
  double toDouble() const;
  /// Up to four decimals, no padding: "12.5".
  QString text() const;

  Money operator+(Money other) const;
  Money operator-(Money other) const;
  auto operator<=>(const Money&) const = default;

 private:
  qint64 units_ = 0;
};

}  // namespace qinghe
