#include "orders/cell_product.h"

#include <cmath>

#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

QString cellProduct(QStringView left, QStringView right) {
  const double product = Val(left) * Val(right);
  if (!std::isfinite(product)) {
    throw Overflow(u"%1 × %2"_s.arg(textOf(Val(left)), textOf(Val(right))));
  }
  return textOf(product);
}

}  // namespace qinghe
