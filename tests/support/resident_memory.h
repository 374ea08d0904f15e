#pragma once

#include <QFile>

namespace qinghe {

/// What the process has in memory, in KiB. Of no use under the address sanitizer, which keeps what
/// was freed.
inline qint64 residentMemory() {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : status.readAll().split('\n')) {
    if (line.startsWith("VmRSS:")) return line.sliced(6).simplified().split(' ')[0].toLongLong();
  }
  return 0;
}

#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool memoryCanBeMeasured = false;
#else
inline constexpr bool memoryCanBeMeasured = true;
#endif

}  // namespace qinghe
