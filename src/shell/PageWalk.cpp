#include "shell/PageWalk.h"

#include "values/numbers.h"

namespace qinghe {

void PageWalk::takeCount(const QString& cell) {
  pageCount_ = toInt32(Val(cell));
}

bool PageWalk::next() {
  if (pageNo_ >= pageCount_) return false;
  ++pageNo_;
  return true;
}

QString PageWalk::percentage() const {
  if (pageCount_ <= 0) return {};
  return textOf(qint64{100} * pageNo_ / pageCount_) + u'%';
}

}  // namespace qinghe
