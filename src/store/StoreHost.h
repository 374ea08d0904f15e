#pragma once

#include <QString>

namespace qinghe {

/// What the store asks of the program around it; it shows nothing itself.
class StoreHost {
 public:
  virtual ~StoreHost() = default;

  virtual QString programDirectory() const = 0;

  virtual QString databaseSetting() const = 0;  ///< `dbAddress`, empty when unset
  virtual void setDatabaseSetting(const QString& path) = 0;
  virtual void removeDatabaseSetting() = 0;

  /// Shows the open dialog for `fileName`; throws `Failure` when the user cancels.
  virtual QString askForFile(const QString& fileName) = 0;
  virtual void showMessage(const QString& text) = 0;
  /// Shows a critical message and ends the program; does not return.
  [[noreturn]] virtual void endProgram(const QString& title, const QString& text) = 0;
};

}  // namespace qinghe
