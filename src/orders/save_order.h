#pragma once

#include <QtGlobal>
#include <functional>

namespace qinghe {

/// The four operations of a save; the lines by their position in the list. Local ones may throw.
struct SaveOrderSteps {
  std::function<bool()> SaveHeaderToPortal;
  std::function<bool(qsizetype)> SaveLineToPortal;
  std::function<bool()> SaveHeaderLocal;
  std::function<bool(qsizetype)> SaveLineLocal;
};

/// Saves an order to the portal and then into the local copy.
///
/// No line goes out after a header that failed, nor after a line that failed. The result speaks
/// for the local copy only: the next save sends everything again. What a local step throws passes.
bool SaveOrder(qsizetype lineCount, const SaveOrderSteps& steps);

}  // namespace qinghe
