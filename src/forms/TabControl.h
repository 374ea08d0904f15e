#pragma once

#include <QTabWidget>

namespace qinghe {

/// Pages under tabs. When it is walked by code only, the tabs show where one is and take neither
/// mouse nor keys.
class TabControl : public QTabWidget {
  Q_OBJECT

 public:
  enum class WalkedBy { User, Code };

  explicit TabControl(const QString& name, WalkedBy walkedBy = WalkedBy::User,
                      QWidget* parent = nullptr);

  /// Adds an empty page at the end.
  QWidget* addPage(const QString& caption);
  int tab() const { return currentIndex(); }  ///< from 0
  void setTab(int tab);

 private:
  WalkedBy walkedBy_;
};

}  // namespace qinghe
