#pragma once

#include <QUrl>
#include <QWidget>

class QLabel;
class QPushButton;

namespace qinghe {

/// What a page view shows in place of a page: a few words, the address, and what can be done.
class PageMessage : public QWidget {
  Q_OBJECT

 public:
  explicit PageMessage(QWidget* parent = nullptr);

  /// What the buttons offer.
  enum class Offer { Nothing, SystemBrowser, Both };
  /// Shows plain text; `address` is shown below it and goes to the system's browser.
  void say(const QString& words, const QString& detail, const QUrl& address, Offer offer);

 signals:
  void retry();

 private:
  QUrl address_;
  QLabel* words_;
  QLabel* detail_;
  QLabel* where_;
  QPushButton* again_;
  QPushButton* elsewhere_;
};

}  // namespace qinghe
