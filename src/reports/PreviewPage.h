#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QPixmap>

#include "reports/engine/PageLayout.h"
#include "reports/engine/ReportPainter.h"

namespace qinghe {

/// The pages of a report one below the other, each painted when it comes into view.
class PreviewPage : public QAbstractScrollArea {
  Q_OBJECT

 public:
  static constexpr double kLeastZoom = 0.25;
  static constexpr double kMostZoom = 4.0;

  /// The pages must outlive it.
  explicit PreviewPage(PageLayout& pages, QWidget* parent = nullptr);

  int currentPage() const;  ///< from 1: the one at the middle of the view
  void showPage(int page);  ///< from 1; the nearest there is

  double zoom() const { return zoom_; }  ///< 1 is the paper's own size on the screen
  void setZoom(double zoom);
  /// The page as wide as the view, and so again after each resize until another zoom is set.
  void fitWidth();
  bool isFittedToWidth() const { return fitted_; }

  /// To be called when more pages were found.
  void pagesFound();

 signals:
  void currentPageChanged(int page);
  void zoomChanged(double zoom);
  /// Reading the data failed while a page was made; once for each cause.
  void failed(const QString& description);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  double pixelsPerMillimetre() const;
  QSize pageSize() const;
  QRect pageRect(int index) const;
  int pageAt(int y) const;
  void applyZoom(double zoom);
  void updateScrollBars();
  const QPixmap* painted(int index);

  PageLayout& pages_;
  ReportPainter painter_;
  QCache<int, QPixmap> painted_;
  double zoom_ = 1;
  bool fitted_ = true;
  int lastPage_ = 1;
  QString lastFailure_;
};

}  // namespace qinghe
