#include "orders/save_order.h"

namespace qinghe {

bool SaveOrder(qsizetype lineCount, const SaveOrderSteps& steps) {
  bool sent = steps.SaveHeaderToPortal();
  for (qsizetype line = 0; sent && line < lineCount; ++line) sent = steps.SaveLineToPortal(line);
  if (!steps.SaveHeaderLocal()) return false;
  for (qsizetype line = 0; line < lineCount; ++line) {
    if (!steps.SaveLineLocal(line)) return false;
  }
  return true;
}

}  // namespace qinghe
