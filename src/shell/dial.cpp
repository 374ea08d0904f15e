#include <QProcess>

#include "shell/LinkMonitor.h"

namespace qinghe {

using namespace Qt::StringLiterals;

void NmcliDialer::dial(const QString& entry) {
  if (entry.isEmpty()) return;
  QProcess process;
  process.setProgram(u"nmcli"_s);
  // Behind "id" the entry is a name, whatever it begins with; no shell reads it.
  process.setArguments({u"connection"_s, u"up"_s, u"id"_s, entry});
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  process.startDetached();
}

}  // namespace qinghe
