#pragma once

#include <QString>
#include <QStringView>

namespace qinghe {

/// The user's settings: texts by key in the group "config" of an INI file under the program's name
/// in the standard configuration folder. An unset key reads as the empty text.
class Settings {
 public:
  QString text(const QString& key) const;
  /// The leading number of the text; 0 when it does not fit 16 bits.
  qint16 number(const QString& key) const;
  void set(const QString& key, const QString& value);
  void remove(const QString& key);

  /// A value of another group, such as the desktop's default dial entry.
  QString groupText(const QString& group, const QString& key) const;

  /// Where the file stands; settable before first use, for tests and the demo.
  QString filePath() const;
  void setFilePath(const QString& path) { path_ = path; }

 private:
  QString path_;
};

}  // namespace qinghe
