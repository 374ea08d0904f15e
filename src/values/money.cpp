#include "values/money.h"

#include <cmath>

#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

namespace {
constexpr qint64 scale = 10'000;
constexpr double unitLimit = 9'223'372'036'854'775'808.0;  // 2^63
}  // namespace

Money::Money(double value) {
  const double units = roundHalfEven(value * static_cast<double>(scale));
  if (!(units >= -unitLimit && units < unitLimit)) throw Overflow(textOf(value));
  units_ = static_cast<qint64>(units);
}

Money Money::fromUnits(qint64 tenThousandths) {
  Money result;
  result.units_ = tenThousandths;
  return result;
}

double Money::toDouble() const {
  return static_cast<double>(units_) / static_cast<double>(scale);
}

QString Money::text() const {
  // By whole numbers: a double would lose digits beyond 2^53.
  QString result = QString::number(units_ / scale);
  const qint64 fraction = std::abs(units_ % scale);
  if (units_ < 0 && units_ > -scale) result.prepend(u'-');
  if (fraction == 0) return result == QStringLiteral("-0") ? QStringLiteral("0") : result;
  QString decimals = QString::number(fraction).rightJustified(4, u'0');
  while (decimals.endsWith(u'0')) decimals.chop(1);
  return result + u'.' + decimals;
}

Money Money::operator+(Money other) const {
  qint64 sum = 0;
  if (__builtin_add_overflow(units_, other.units_, &sum)) throw Overflow(text());
  return fromUnits(sum);
}

Money Money::operator-(Money other) const {
  qint64 difference = 0;
  if (__builtin_sub_overflow(units_, other.units_, &difference)) throw Overflow(text());
  return fromUnits(difference);
}

}  // namespace qinghe
