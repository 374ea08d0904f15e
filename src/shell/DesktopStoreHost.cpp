#include "shell/DesktopStoreHost.h"

#include <cstdlib>

#include "shell/AppState.h"
#include "values/failure.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {
QString addressKey() {
  return u"dbAddress"_s;
}
constexpr int dialogCancelled = 32755;
}  // namespace

DesktopStoreHost::DesktopStoreHost(AppState& state) : state_(state) {}

QString DesktopStoreHost::programDirectory() const {
  return state_.programDirectory;
}

QString DesktopStoreHost::databaseSetting() const {
  return state_.settings.text(addressKey());
}

void DesktopStoreHost::setDatabaseSetting(const QString& path) {
  state_.settings.set(addressKey(), path);
}

void DesktopStoreHost::removeDatabaseSetting() {
  state_.settings.remove(addressKey());
}

QString DesktopStoreHost::askForFile(const QString& fileName) {
  const auto path =
      state_.forms.prompts->openFile(nullptr, {
                                                  .title = u"请查找"_s + fileName,
                                                  .directory = state_.programDirectory,
                                                  .fileName = fileName,
                                                  // File names have a case here.
                                                  .filter = u"Access (*.mdb *.MDB)"_s,
                                                  .suffix = {},
                                              });
  if (!path) throw Failure(dialogCancelled, u"没有选择数据库文件"_s);
  return *path;
}

void DesktopStoreHost::showMessage(const QString& text) {
  state_.forms.prompts->ask(nullptr, {.text = text, .title = {}});
}

void DesktopStoreHost::endProgram(const QString& title, const QString& text) {
  state_.forms.prompts->ask(nullptr, {.text = text, .title = title, .mark = Mark::Critical});
  if (endAction) endAction();
  state_.tray.remove();
  // At once, from deep inside a screen that is half made: nothing may run on behind this.
  std::_Exit(EXIT_FAILURE);
}

}  // namespace qinghe
