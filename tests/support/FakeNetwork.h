#pragma once

#include <QList>
#include <QStringList>

#include "shell/AppState.h"
#include "shell/LinkMonitor.h"

namespace qinghe {

/// Links that a test says, and a record of how often they were asked.
class FakeLinks : public LinkMonitor {
 public:
  std::optional<QStringList> entries = QStringList{QStringLiteral("eth0")};
  QStringList connected;
  QStringList asked;
  int enumerations = 0;

  std::optional<QStringList> enumerate() override {
    ++enumerations;
    return entries;
  }
  bool isConnected(const QString& entry) override {
    asked << entry;
    return connected.contains(entry);
  }
};

/// Records what is dialled and how the tray stood then.
class FakeDialer : public Dialer {
 public:
  QStringList dialled;
  QList<Tray::State> trayStates;

  void dial(const QString& entry) override {
    dialled << entry;
    trayStates << app().tray.state();
  }
};

}  // namespace qinghe
