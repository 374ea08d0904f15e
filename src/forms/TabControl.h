#pragma once

#include <QTabWidget>

namespace qinghe {

/// Pages under tabs. A press on a tab, or a key that turns the page, takes the focus first, so that
/// the field that is left may refuse; the wheel turns no page. Tab comes to the tabs when there is
/// more than one. When it is walked by code only, they show where one is and take neither mouse nor
/// keys.
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

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  WalkedBy walkedBy_;
};

}  // namespace qinghe
