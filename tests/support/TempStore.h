#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

/// A program folder with a fresh `DATA.MDB` in it, made from the delivered schema, and a second way
/// into it that goes past the program.
class TempStore {
 public:
  TempStore();

  QString directory() const { return folder_.path(); }
  QString path() const;

  void exec(const QString& sql) const;
  QVariant value(const QString& sql) const;  ///< first column of the first row
  QList<QVariantList> rows(const QString& sql) const;

 private:
  QTemporaryDir folder_;
};
