#include <gtest/gtest.h>

#include <QMdiSubWindow>
#include <QPointer>
#include <QTimer>

#include "LiveObjects.h"
#include "MainWindowFixture.h"
#include "forms/Form.h"
#include "support/PortalProcess.h"

using namespace qinghe;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

enum class PortalIs { Up, Down, Silent };

struct Situation {
  qint16 loginMode;
  PortalIs portal;
};

/// Answers every question the way that changes least, and opens no file.
class CarefulUser : public Prompts {
 public:
  QStringList asked;

  Answer ask(QWidget* /*parent*/, const Message& message) override {
    asked.append(message.text);
    return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  }
  std::optional<QString> openFile(QWidget* /*parent*/, const FileQuestion& question) override {
    asked.append(question.title);
    return {};
  }
  std::optional<QString> saveFile(QWidget* /*parent*/, const FileQuestion& question) override {
    asked.append(question.title);
    return {};
  }
};

/// Entries that open something else than a screen of ours.
const QStringList withoutScreen = {u"mnuHelp"_s, u"mnuDial"_s};

class AllCommands : public MainWindowFixture, public testing::WithParamInterface<Situation> {
 protected:
  static void SetUpTestSuite() { realPortal = std::make_unique<PortalProcess>(); }
  static void TearDownTestSuite() { realPortal.reset(); }

  AllCommands() {
    delete boxes;
    (void)state.forms.prompts.release();
    boxes = nullptr;
    state.forms.prompts = std::make_unique<CarefulUser>();
    dismissNotices();
    // A question in the way of the next step is left like any other screen.
    closer_.callOnTimeout(&closer_, [] {
      if (auto* form = qobject_cast<Form*>(QApplication::activeModalWidget())) form->close();
    });
    closer_.start(20ms);
    state.peerAddress = u"127.0.0.1"_s;
    state.peerPort = 0;
    setUpPortal();
  }

  void setUpPortal() {
    switch (GetParam().portal) {
      case PortalIs::Up:
        state.settings.set(u"WebServer"_s, realPortal->host());
        break;
      case PortalIs::Down:
        state.settings.set(u"WebServer"_s, u"127.0.0.1:1"_s);
        break;
      case PortalIs::Silent:
        portal.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.hang = true}; });
        state.inetQuotes.timeLimit = 50ms;
        break;
    }
  }

  void logIn() {
    const qint16 mode = GetParam().loginMode;
    if (mode == 0) return;
    beCompany(mode, 2);
    state.gQiyeId = 1;
    if (mode != 1 || GetParam().portal != PortalIs::Up) return;
    GetHtml html(state, state.inetQuotes);
    const QString page = html.GetUrl(2, state.gWebServer +
                                            u"_vti_login/_vti_login2.asp?USER_NO=1001&"
                                            "USER_PASS=123456&SOFT_VER=1.0"_s);
    ASSERT_FALSE(html.ParseResponse(page).isEmpty());
  }

  QStringList openForms() {
    QStringList names;
    for (const Form* form : state.forms.registry.loaded()) names.append(form->objectName());
    return names;
  }

  /// Closes every screen by its window.
  void leaveScreens() {
    QList<QPointer<Form>> open;
    for (Form* form : state.forms.registry.loaded()) open.append(form);
    for (const QPointer<Form>& form : open) {
      if (form == nullptr) continue;
      auto* child = qobject_cast<QMdiSubWindow*>(form->parentWidget());
      const bool left = child != nullptr ? child->close() : form->close();
      EXPECT_TRUE(left) << (form == nullptr ? "" : form->objectName().toStdString());
    }
  }

  /// A whole run of the program: every entry is opened and left again, then the frame is closed.
  void openAndLeaveAll() {
    start();
    frame->Timer1->setEnabled(false);  // the login does not come by itself
    logIn();
    int opened = 0;
    for (const Command& command : commandTable(*frame)) {
      if (command.neverOffered || isSeparator(command) || command.name == u"mnuTempExit") continue;
      SCOPED_TRACE(command.name.toStdString());
      ASSERT_TRUE(command.run) << "opens nothing";
      entry(command.name)->trigger();
      QCoreApplication::processEvents();
      EXPECT_TRUE(withoutScreen.contains(command.name) || !openForms().isEmpty());
      leaveScreens();
      EXPECT_TRUE(QTest::qWaitFor([this] { return openForms().isEmpty(); }, 60'000))
          << openForms().join(u' ').toStdString();
      ++opened;
    }
    EXPECT_GT(opened, 25);
    openAndLeaveHelp();
    EXPECT_TRUE(QTest::qWaitFor([this] { return frame->findChildren<QMdiSubWindow*>().isEmpty(); },
                                60'000));
    EXPECT_TRUE(frame->close());
    frame.reset();
  }

  /// The one screen that has no entry: a key of other screens opens it.
  void openAndLeaveHelp() {
    ASSERT_TRUE(state.openHelp);
    state.openHelp();
    EXPECT_EQ(openForms(), QStringList(u"frmHELP"_s));
    leaveScreens();
    EXPECT_TRUE(QTest::qWaitFor([this] { return openForms().isEmpty(); }, 60'000));
  }

  static std::unique_ptr<PortalProcess> realPortal;

 private:
  QTimer closer_;
};

std::unique_ptr<PortalProcess> AllCommands::realPortal;

TEST_P(AllCommands, OpenAndLeaveNothingBehind) {
  // What the library makes once for its whole life is made by then.
  openAndLeaveAll();
  const LiveObjects sinceTheStart;
  openAndLeaveAll();
  EXPECT_TRUE(sinceTheStart.becomesEmpty()) << sinceTheStart.leftOver().join(u'\n').toStdString();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

std::string nameOf(const testing::TestParamInfo<Situation>& row) {
  const QStringList modes = {u"Nobody"_s, u"ACompanyOnline"_s, u"ACompanyOffline"_s};
  const QStringList portals = {u"PortalUp"_s, u"PortalDown"_s, u"PortalSilent"_s};
  return (modes[row.param.loginMode] + u"With"_s + portals[static_cast<int>(row.param.portal)])
      .toStdString();
}

INSTANTIATE_TEST_SUITE_P(Of, AllCommands,
                         testing::Values(Situation{0, PortalIs::Up}, Situation{0, PortalIs::Down},
                                         Situation{0, PortalIs::Silent}, Situation{1, PortalIs::Up},
                                         Situation{1, PortalIs::Down},
                                         Situation{1, PortalIs::Silent}, Situation{2, PortalIs::Up},
                                         Situation{2, PortalIs::Down},
                                         Situation{2, PortalIs::Silent}),
                         nameOf);

}  // namespace
