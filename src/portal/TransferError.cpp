#include "portal/TransferError.h"

namespace qinghe {

namespace {
constexpr int transferErrorNumber = 1000;  // outside the numbers of the other failures
}

TransferError::TransferError(const QString& what) : Failure(transferErrorNumber, what) {}

}  // namespace qinghe
