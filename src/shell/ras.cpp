#include "shell/ras.h"

#include "shell/AppState.h"
#include "shell/frmMsgBox.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

bool askLinks(AppState& state) {
  const auto entries = state.links->enumerate();
  if (!entries) {
    TrayShowOffline();
    state.forms.prompts->ask(nullptr, {.text = u"出错！"_s, .title = {}});
    return true;
  }
  // The first entry decides, however many there are; without any its name is empty.
  if (state.links->isConnected(entries->value(0))) {
    TrayShowConnected();
    return true;
  }
  if (state.gAutoDial == 1) {
    showNotice(u"网络连接失败！！！"_s);
    StartDialer();
  }
  TrayShowOffline();
  return false;
}

}  // namespace

bool CheckConnection() {
  auto& state = app();
  switch (state.gAccessType) {
    case 0:
    case 1:
      return askLinks(state);
    case 2:
      TrayShowConnected();
      return true;
    default:
      return false;
  }
}

QString GetDefaultDialEntry() {
  return app().settings.groupText(u"RemoteAccess"_s, u"Default"_s);
}

void StartDialer() {
  app().dialer->dial(GetDefaultDialEntry());
}

}  // namespace qinghe
