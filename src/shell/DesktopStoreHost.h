#pragma once

#include <functional>

#include "store/StoreHost.h"

namespace qinghe {

struct AppState;

/// What the local store asks of the desktop: the setting of the database's path, the boxes, the
/// open dialog, and the end of the program.
class DesktopStoreHost : public StoreHost {
 public:
  explicit DesktopStoreHost(AppState& state);

  QString programDirectory() const override;
  QString databaseSetting() const override;
  void setDatabaseSetting(const QString& path) override;
  void removeDatabaseSetting() override;
  QString askForFile(const QString& fileName) override;
  void showMessage(const QString& text) override;
  [[noreturn]] void endProgram(const QString& title, const QString& text) override;

  /// What ends the program; it must not return. Tests put a throw here.
  std::function<void()> endAction;

 private:
  AppState& state_;
};

}  // namespace qinghe
