#pragma once

#include "values/failure.h"

namespace qinghe {

/// A transfer that brought no whole answer: no connection, time-out, broken or oversized body.
class TransferError : public Failure {
 public:
  explicit TransferError(const QString& what);
};

}  // namespace qinghe
