#pragma once

#include <QStatusBar>

class QLabel;

namespace qinghe {

/// A status bar with one plain text that stays until the next.
class StatusBar : public QStatusBar {
  Q_OBJECT

 public:
  explicit StatusBar(const QString& name, QWidget* parent = nullptr);
  QString text() const;
  void setText(const QString& text);

 private:
  QLabel* label_;
};

}  // namespace qinghe
