#include "FirstPaint.h"

#include <time.h>

#include <QFile>
#include <cstdio>
#include <cstdlib>

namespace {

qint64 now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

qint64 memory() {
  QFile file(QStringLiteral("/proc/self/smaps_rollup"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n')) {
    if (line.startsWith("Pss:")) return line.simplified().split(' ').value(1).toLongLong();
  }
  return 0;
}

}  // namespace

void FirstPaint::report() {
  const qint64 start = qEnvironmentVariable("QINGHE_BENCH_START").toLongLong();
  std::printf("%lld %lld\n", static_cast<long long>(now() - start),
              static_cast<long long>(memory()));
  std::fflush(stdout);
  std::_Exit(0);
}
