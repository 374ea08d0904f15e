#pragma once

#include <QTimer>

#include "forms/TextBox.h"

namespace qinghe {

/// A read-only box of many lines that grows at its top. Putting a text on top costs the same
/// however long the rest is; what is beyond the limit falls off at the end. However many texts
/// come, it paints no more often than a screen shows.
class LogBox : public TextBox {
  Q_OBJECT

 public:
  LogBox(const QString& name, qsizetype limit, QWidget* parent = nullptr);

  /// A line break is CR LF, LF or CR.
  void prepend(const QString& text);

 private:
  using TextBox::setText;
  void trim();
  void rebuild();
  void holdPainting();

  qsizetype limit_;         ///< in characters, a line break as one
  qsizetype inserted_ = 0;  ///< since the last rebuild
  QTimer painting_;         ///< runs while painting is held back
};

}  // namespace qinghe
