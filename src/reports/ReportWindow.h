#pragma once

#include <QMainWindow>
#include <functional>

#include "reports/engine/Exporter.h"
#include "reports/engine/ReportLayout.h"
#include "store/ShapedSet.h"

class QAction;
class QLabel;
class QPrinter;
class QSpinBox;
class QToolBar;

namespace qinghe {

class FormTimer;
class PreviewPage;

/// Opens the report on the data in a preview window of its own that blocks nothing: pages, zoom,
/// print, export. Its `objectName` is the report's name, its title is the caption.
void showReport(const ReportLayout& layout, const ShapedSetPtr& data);

/// The preview. It destroys itself when closed, and closes with the program without keeping it.
///
/// Its actions are found by name: "Print", "PDF", "HTML", "CSV", "ZoomIn", "ZoomOut", "FitWidth",
/// "First", "Previous", "Next", "Last", "Close"; the box for the page number is "txtPage".
class ReportWindow : public QMainWindow {
  Q_OBJECT

 public:
  ReportWindow(const ReportLayout& layout, const ShapedSetPtr& rows);
  ~ReportWindow() override;

  PageLayout& pages() { return pages_; }

  /// Asks for the printer and its settings, which it leaves in `printer`; false to print nothing.
  /// The print dialog unless replaced.
  std::function<bool(QPrinter& printer)> choosePrinter;

 private:
  using Export = ExportResult (*)(PageLayout&, const QString&);

  void makeActions();
  QAction* addAction(QToolBar* bar, const QString& key, const QString& text,
                     const QList<QKeySequence>& keys, const std::function<void()>& run);
  void makePageEntry(QToolBar* bar);
  bool findPages();
  void showLastPage();
  void showState();
  void print();
  void exportTo(const QString& suffix, const QString& filter, Export run);
  void tell(const QString& error);

  PageLayout pages_;
  PreviewPage* view_;
  FormTimer* finder_;
  QSpinBox* pageEntry_ = nullptr;
  QLabel* pageTotal_ = nullptr;
  QLabel* zoomText_ = nullptr;
  QAction* first_ = nullptr;
  QAction* previous_ = nullptr;
  QAction* next_ = nullptr;
  QAction* last_ = nullptr;
};

}  // namespace qinghe
