#pragma once

#include <QAction>
#include <QApplication>
#include <QTest>
#include <memory>

#include "shell/main/MDIFrmMAIN.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// The main window over a client that has been set up before, so that no first-run dialog comes.
class MainWindowFixture : public ClientFixture {
 protected:
  MainWindowFixture() {
    state.settings.set(QStringLiteral("WebServer"), portal.host());
    state.settings.set(QStringLiteral("AccessType"), QStringLiteral("2"));
    state.settings.set(QStringLiteral("Unicode"), QStringLiteral("2"));
    // The logout page in the portal's form: marked, and without a row.
    portal.answerWith({ScriptedServer::table({})});
  }

  MDIFrmMAIN& start() {
    frame = std::make_unique<MDIFrmMAIN>();
    frame->load();
    return *frame;
  }

  QAction* entry(const QString& name) { return frame->command(name); }

  std::unique_ptr<MDIFrmMAIN> frame;
};

}  // namespace qinghe
