#include "shell/Settings.h"

#include <QSettings>
#include <QStandardPaths>
#include <QVariant>

#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

QString pathIn(const QString& group, const QString& key) {
  return group + u'/' + key;
}

QString configPath(const QString& key) {
  return pathIn(u"config"_s, key);
}

QString oneText(const QVariant& value) {
  // A bare comma in a file written by hand makes a list of what is one text.
  if (value.typeId() == QMetaType::QStringList) return value.toStringList().join(u',');
  return value.toString();
}

}  // namespace

QString Settings::filePath() const {
  if (!path_.isEmpty()) return path_;
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         u"/qinghe/qinghe.ini"_s;
}

QString Settings::groupText(const QString& group, const QString& key) const {
  const QSettings file(filePath(), QSettings::IniFormat);
  return oneText(file.value(pathIn(group, key)));
}

QString Settings::text(const QString& key) const {
  return groupText(u"config"_s, key);
}

qint16 Settings::number(const QString& key) const {
  try {
    return toInt16(Val(text(key)));
  } catch (const Failure&) {
    return 0;
  }
}

void Settings::set(const QString& key, const QString& value) {
  QSettings file(filePath(), QSettings::IniFormat);
  file.setValue(configPath(key), value);
}

void Settings::remove(const QString& key) {
  QSettings file(filePath(), QSettings::IniFormat);
  file.remove(configPath(key));
}

}  // namespace qinghe
