// A messenger in a process of its own, driven by lines on its standard input: "show <partner id>",
// "say <text>", "list", "quit". It answers "ready" once it listens, "done" when it has obeyed a
// line, "listed <key>|<name>" for each partner when asked to list them, and "box <text>" for each
// message box.

#include <QApplication>
#include <QPushButton>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <string>

#include "messaging/frmPeer.h"
#include "resources/resources.h"
#include "shell/AppState.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

void report(const QString& line) {
  std::printf("%s\n", line.toUtf8().constData());
  std::fflush(stdout);
}

/// Presses the only button of every box.
class ReportingPrompts : public DesktopPrompts {
 public:
  Answer ask(QWidget* /*parent*/, const Message& message) override {
    report(u"box "_s + message.text);
    return Answer::Ok;
  }
};

void obey(const QString& line) {
  auto& form = defaultInstance<frmPeer>();
  const QString rest = line.section(u' ', 1);
  if (line.startsWith(u"show "_s)) {
    app().gPartnerId = rest.toInt();
    form.Timer1->setInterval(100);
    form.hideForm();
    form.showForm();
  } else if (line.startsWith(u"say "_s)) {
    form.txtSend->setText(rest);
    form.command1->click();
  } else if (line == u"list"_s) {
    for (int row = 0; row < form.ImageCombo1->itemCount(); ++row) {
      report(u"listed "_s + form.ImageCombo1->key(row) + u'|' + form.ImageCombo1->text(row));
    }
  } else if (line == u"quit"_s) {
    form.unload();
    QCoreApplication::quit();
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  initResources();
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 7) return 2;
  AppState state;
  state.forms.prompts = std::make_unique<ReportingPrompts>();
  state.programDirectory = arguments[1];
  state.gWebServer = u"HTTP://"_s + arguments[2] + u"/"_s;
  state.gUnicode = 2;
  state.inetQuotes.AccessType = 1;
  state.peerAddress = arguments[3];
  state.peerPort = arguments[4].toInt();
  state.gQiyeId = arguments[5].toShort();
  state.gUserName = arguments[6];

  defaultInstance<frmPeer>().Timer3->setEnabled(false);
  QSocketNotifier input(0, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &input, [] {
    std::string line;
    if (!std::getline(std::cin, line)) {
      QCoreApplication::quit();
      return;
    }
    obey(QString::fromStdString(line));
    report(u"done"_s);
  });
  report(u"ready"_s);
  return QApplication::exec();
}
