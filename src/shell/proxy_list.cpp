#include "shell/proxy_list.h"

#include <algorithm>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {
constexpr QStringView prefix = u"HTTP=";
}

QStringList SplitProxyList(const QString& text) {
  QStringList entries;
  qsizetype start = text.indexOf(prefix);
  for (;;) {
    const qsizetype next = text.indexOf(prefix, start + 1);
    if (next < 0) break;
    // An entry that itself begins with the prefix leaves no room for the blank before it.
    const qsizetype length = std::max<qsizetype>(next - start - prefix.size() - 1, 0);
    entries << text.mid(start + prefix.size(), length);
    start = next;
  }
  return entries << text.mid(start + prefix.size());
}

QString JoinProxyList(const QStringList& entries) {
  return entries.isEmpty() ? QString() : u"HTTP="_s + entries.join(u" HTTP="_s);
}

}  // namespace qinghe
