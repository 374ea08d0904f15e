#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "shell/AppState.h"
#include "shell/frmMsgBox.h"
#include "support/FakeNetwork.h"
#include "support/ScriptedPrompts.h"

namespace qinghe {

using namespace Qt::StringLiterals;

/// Presses the notice's button as soon as the notice stands on the screen.
class NoticePresser : public QObject {
 public:
  QStringList messages;
  QList<Tray::State> trayStates;

  NoticePresser() {
    connect(&timer_, &QTimer::timeout, this, [this] {
      if (!isLoaded<frmMsgBox>() || !defaultInstance<frmMsgBox>().isVisible()) return;
      auto& notice = defaultInstance<frmMsgBox>();
      messages << notice.Label1->text();
      trayStates << app().tray.state();
      QTest::mouseClick(notice.cmdOK, Qt::LeftButton);
    });
    timer_.start(5);
  }

 private:
  QTimer timer_;
};

/// A state of its own on a settings file in a temporary folder, with nobody at the prompts, no
/// real link and no real dialer.
class ShellTest : public testing::Test {
 protected:
  ShellTest() {
    state.settings.setFilePath(settingsPath());
    state.programDirectory = folder.path();
    auto seat = std::make_unique<ScriptedPrompts>();
    prompts = seat.get();
    state.forms.prompts = std::move(seat);
    auto fakeLinks = std::make_unique<FakeLinks>();
    links = fakeLinks.get();
    state.links = std::move(fakeLinks);
    auto fakeDialer = std::make_unique<FakeDialer>();
    dialer = fakeDialer.get();
    state.dialer = std::move(fakeDialer);
  }

  QString settingsPath() const { return folder.filePath(u"settings/qinghe.ini"_s); }

  QTemporaryDir folder;
  AppState state;
  ScriptedPrompts* prompts = nullptr;
  FakeLinks* links = nullptr;
  FakeDialer* dialer = nullptr;
};

inline std::string utf8(const QString& text) {
  return text.toStdString();
}

}  // namespace qinghe
