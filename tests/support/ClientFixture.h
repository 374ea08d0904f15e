#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>

#include "shell/AppState.h"
#include "support/FakeNetwork.h"
#include "support/ScriptedPrompts.h"
#include "support/ScriptedServer.h"
#include "support/TempStore.h"

namespace qinghe {

/// A client without its main window: a fresh state, a fresh `DATA.MDB`, settings of its own, nobody
/// at the prompts, and a scripted portal that it is set to, online, in mode 2.
class ClientFixture : public testing::Test {
 public:
  ClientFixture();
  ~ClientFixture() override;

 protected:
  /// Answers every notice at once, so that no test waits out its two seconds.
  void dismissNotices();
  /// The texts of the notices dismissed, their three lines joined by "|".
  QStringList notices;

  /// As a company that is logged in to the portal, or only locally.
  void beCompany(qint16 mode, qint16 level);
  void goOffline() { links->connected.clear(); }

  /// A page in the portal's form, ready for `portal.answerWith`.
  static QByteArray page(const QList<QStringList>& rows);

  /// The targets of the requests so far, as text, in the order they came.
  QStringList targets() const;

  TempStore store;
  QTemporaryDir settingsFolder;
  ScriptedServer portal;
  AppState state;
  ScriptedPrompts* boxes;
  FakeLinks* links;
  FakeDialer* dialer;
};

}  // namespace qinghe
