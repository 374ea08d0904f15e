#include "reports/ReportWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QDate>
#include <QGuiApplication>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>

#include "forms/FormTimer.h"
#include "forms/HourGlass.h"
#include "forms/Icons.h"
#include "forms/Prompts.h"
#include "reports/PreviewPage.h"
#include "reports/ReportPrinter.h"
#include "values/failure.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// Pages looked for at once: some milliseconds.
constexpr int kPagesAtOnce = 400;
constexpr double kZoomStep = 1.25;

QSize firstSize(const PaperFormat& paper) {
  const QSize wished = paper.width > paper.height ? QSize(1120, 820) : QSize(900, 980);
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen != nullptr ? wished.boundedTo(screen->availableSize() * 0.95) : wished;
}

}  // namespace

void showReport(const ReportLayout& layout, const ShapedSetPtr& data) {
  try {
    auto* window = new ReportWindow(layout, data);
    window->show();
  } catch (const Failure& failure) {
    Message message;
    message.text = failure.description();
    message.mark = Mark::Critical;
    prompts().ask(nullptr, message);
  }
}

ReportWindow::ReportWindow(const ReportLayout& layout, const ShapedSetPtr& rows)
    : pages_(layout, rows, QDate::currentDate()),
      view_(new PreviewPage(pages_, this)),
      finder_(new FormTimer(u"timerPages"_s, 1, this)) {
  setObjectName(layout.name);
  setWindowTitle(layout.caption);
  setWindowIcon(iconFor(u"Print"_s));
  setAttribute(Qt::WA_DeleteOnClose);
  // A report left open must not keep the program alive, and must be gone before the data is.
  setAttribute(Qt::WA_QuitOnClose, false);
  connect(qApp, &QCoreApplication::aboutToQuit, this, &QObject::deleteLater);
  setContextMenuPolicy(Qt::NoContextMenu);

  setCentralWidget(view_);
  makeActions();
  choosePrinter = [this](QPrinter& printer) {
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, pages_.pageCount());
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    return dialog.exec() == QDialog::Accepted;
  };
  connect(view_, &PreviewPage::currentPageChanged, this, &ReportWindow::showState);
  connect(view_, &PreviewPage::zoomChanged, this, &ReportWindow::showState);
  connect(view_, &PreviewPage::failed, this,
          [this](const QString& description) { statusBar()->showMessage(description); });
  connect(finder_, &FormTimer::timer, this, &ReportWindow::findPages);

  resize(firstSize(pages_.paper()));
  view_->setFocus();
  findPages();
}

ReportWindow::~ReportWindow() {
  // The pages are a member and go before the child widgets would.
  delete view_;
}

QAction* ReportWindow::addAction(QToolBar* bar, const QString& key, const QString& text,
                                 const QList<QKeySequence>& keys,
                                 const std::function<void()>& run) {
  QAction* action = bar->addAction(iconFor(key), text);
  action->setObjectName(key);
  action->setShortcuts(keys);
  QString tip = text;
  if (!keys.isEmpty()) tip += u" ("_s + keys.first().toString(QKeySequence::NativeText) + u')';
  action->setToolTip(tip);
  connect(action, &QAction::triggered, this, run);
  return action;
}

void ReportWindow::makeActions() {
  auto* bar = addToolBar(u"报表"_s);
  bar->setObjectName(u"Toolbar1"_s);
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  addAction(bar, u"Print"_s, u"打印"_s, {QKeySequence::Print}, [this] { print(); });
  bar->addSeparator();
  addAction(bar, u"PDF"_s, u"PDF"_s, {}, [this] {
    exportTo(u"pdf"_s, u"PDF (*.pdf)"_s,
             [](PageLayout& pages, const QString& path) { return exportPdf(pages, path); });
  });
  addAction(bar, u"HTML"_s, u"HTML"_s, {},
            [this] { exportTo(u"html"_s, u"HTML (*.html)"_s, exportHtml); });
  addAction(bar, u"CSV"_s, u"CSV"_s, {},
            [this] { exportTo(u"csv"_s, u"CSV (*.csv)"_s, exportCsv); });
  bar->addSeparator();
  // The toolbar shows these by their icon alone.
  const auto icon = [](QAction* action) {
    action->setPriority(QAction::LowPriority);
    return action;
  };
  icon(addAction(bar, u"ZoomOut"_s, u"缩小"_s, {QKeySequence::ZoomOut},
                 [this] { view_->setZoom(view_->zoom() / kZoomStep); }));
  icon(addAction(bar, u"ZoomIn"_s, u"放大"_s, {QKeySequence::ZoomIn, QKeySequence(u"Ctrl+="_s)},
                 [this] { view_->setZoom(view_->zoom() * kZoomStep); }));
  icon(addAction(bar, u"FitWidth"_s, u"适合宽度"_s, {QKeySequence(u"Ctrl+0"_s)},
                 [this] { view_->fitWidth(); }));
  bar->addSeparator();
  first_ = icon(addAction(bar, u"First"_s, u"首页"_s, {QKeySequence(u"Ctrl+Home"_s)},
                          [this] { view_->showPage(1); }));
  previous_ = icon(addAction(bar, u"Previous"_s, u"上一页"_s, {QKeySequence(u"Ctrl+PgUp"_s)},
                             [this] { view_->showPage(view_->currentPage() - 1); }));
  makePageEntry(bar);
  next_ = icon(addAction(bar, u"Next"_s, u"下一页"_s, {QKeySequence(u"Ctrl+PgDown"_s)},
                         [this] { view_->showPage(view_->currentPage() + 1); }));
  last_ = icon(addAction(bar, u"Last"_s, u"末页"_s, {QKeySequence(u"Ctrl+End"_s)},
                         [this] { showLastPage(); }));
  auto* close = new QAction(u"关闭"_s, this);
  close->setObjectName(u"Close"_s);
  close->setShortcuts({QKeySequence(Qt::Key_Escape), QKeySequence(u"Ctrl+W"_s)});
  connect(close, &QAction::triggered, this, &QWidget::close);
  QMainWindow::addAction(close);
  zoomText_ = new QLabel(this);
  statusBar()->addPermanentWidget(zoomText_);
}

void ReportWindow::makePageEntry(QToolBar* bar) {
  pageEntry_ = new QSpinBox(bar);
  pageEntry_->setObjectName(u"txtPage"_s);
  pageEntry_->setAccessibleName(u"页码"_s);
  pageEntry_->setButtonSymbols(QAbstractSpinBox::NoButtons);
  pageEntry_->setAlignment(Qt::AlignRight);
  pageEntry_->setKeyboardTracking(false);
  pageEntry_->setRange(1, 1);
  connect(pageEntry_, &QSpinBox::valueChanged, this, [this](int page) { view_->showPage(page); });
  bar->addWidget(pageEntry_);
  pageTotal_ = new QLabel(bar);
  pageTotal_->setObjectName(u"lblPages"_s);
  pageTotal_->setTextFormat(Qt::PlainText);
  bar->addWidget(pageTotal_);
}

/// Some more pages at each turn of the event loop, so that thousands keep nobody waiting; false
/// when there are no more or they cannot be read.
bool ReportWindow::findPages() {
  bool more = false;
  try {
    more = pages_.findPages(kPagesAtOnce);
  } catch (const Failure& failure) {
    statusBar()->showMessage(failure.description());
  }
  finder_->setEnabled(more);
  view_->pagesFound();
  showState();
  return more;
}

void ReportWindow::showLastPage() {
  while (!pages_.isComplete() && findPages()) {
  }
  view_->showPage(pages_.knownPages());
}

void ReportWindow::showState() {
  const int page = view_->currentPage();
  const int known = pages_.knownPages();
  const QSignalBlocker quiet(pageEntry_);
  pageEntry_->setMaximum(known);
  pageEntry_->setValue(page);
  pageTotal_->setText(pages_.isComplete() ? u" / %1 "_s.arg(known) : u" / … "_s);
  zoomText_->setText(u"%1%"_s.arg(qRound(view_->zoom() * 100)));
  first_->setEnabled(page > 1);
  previous_->setEnabled(page > 1);
  const bool more = page < known || !pages_.isComplete();
  next_->setEnabled(more);
  last_->setEnabled(more);
}

void ReportWindow::print() {
  QPrinter printer(QPrinter::HighResolution);
  preparePrinter(pages_, &printer);
  try {
    if (!choosePrinter(printer)) return;
  } catch (const Failure& failure) {
    // The dialog needs the number of pages, and the data may be gone.
    tell(failure.description());
    return;
  }
  ExportResult result;
  {
    const HourGlass busy;
    result = printReport(pages_, printer);
  }
  tell(result.error);
}

void ReportWindow::exportTo(const QString& suffix, const QString& filter, Export run) {
  FileQuestion question;
  question.title = u"导出"_s;
  question.fileName = pages_.layout().caption + u'.' + suffix;
  question.filter = filter;
  question.suffix = suffix;
  const auto path = prompts().saveFile(this, question);
  if (!path || path->isEmpty()) return;
  ExportResult result;
  {
    const HourGlass busy;
    result = run(pages_, *path);
  }
  if (result.ok()) statusBar()->showMessage(u"已导出："_s + *path);
  tell(result.error);
}

void ReportWindow::tell(const QString& error) {
  if (error.isEmpty()) return;
  Message message;
  message.text = error;
  message.mark = Mark::Critical;
  prompts().ask(this, message);
}

}  // namespace qinghe
