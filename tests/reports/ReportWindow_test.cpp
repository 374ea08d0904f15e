#include "reports/ReportWindow.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QPointer>
#include <QPrinter>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <cmath>

#include "reports/PreviewPage.h"
#include "shell/AppState.h"
#include "tests/reports/engine/MemorySet.h"
#include "tests/support/ScriptedPrompts.h"
#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<MemorySet> goods(int count) {
  auto set = memorySet({}, {u"XIMU_NO"_s, u"XIMU"_s, u"GESH"_s, u"JIGEX"_s});
  for (int i = 1; i <= count; ++i) {
    set->add({u"N%1"_s.arg(i), u"书名%1"_s.arg(i), u"20"_s, u"25.50"_s});
  }
  return set;
}

/// Fails as a store does whose file has gone.
class BrokenSet : public MemorySet {
 public:
  BrokenSet() : MemorySet({}, {u"XIMU"_s}) { add({1}); }
  QVariant value(qint64, int) const override { throw Failure(7, u"读取数据出错"_s); }
};

class ReportWindowTest : public testing::Test {
 protected:
  ReportWindowTest() : boxes_(new ScriptedPrompts) { state_.forms.prompts.reset(boxes_); }

  ~ReportWindowTest() override {
    for (const auto& window : opened_) delete window;
  }

  ReportWindow& open(const ShapedSetPtr& data, const ReportLayout& layout = rptXIMU()) {
    const auto before = QApplication::topLevelWidgets();
    showReport(layout, data);
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* window = qobject_cast<ReportWindow*>(widget);
      if (window == nullptr || before.contains(widget)) continue;
      opened_.append(window);
      EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
      return *window;
    }
    throw std::runtime_error("no window was opened");
  }

  static QAction& action(ReportWindow& window, const QString& name) {
    auto* found = window.findChild<QAction*>(name);
    if (found == nullptr) throw std::runtime_error("no action " + name.toStdString());
    return *found;
  }
  static PreviewPage& view(ReportWindow& window) { return *window.findChild<PreviewPage*>(); }
  static QSpinBox& pageEntry(ReportWindow& window) {
    return *window.findChild<QSpinBox*>(u"txtPage"_s);
  }
  QString path(const QString& name) const { return folder_.filePath(name); }
  static QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static qsizetype pagesIn(const QByteArray& pdf) { return pdf.count("/Type /Page\n"); }

  QTemporaryDir folder_;
  AppState state_;
  ScriptedPrompts* boxes_;
  QList<QPointer<ReportWindow>> opened_;
};

TEST_F(ReportWindowTest, IsFoundByTheReportsNameAndTitledByItsCaption) {
  ReportWindow& window = open(goods(3));
  EXPECT_EQ(window.objectName(), u"rptXIMU"_s);
  EXPECT_EQ(window.windowTitle(), u"商品目录单"_s);
  EXPECT_TRUE(window.isWindow());
  EXPECT_EQ(window.windowModality(), Qt::NonModal);
}

TEST_F(ReportWindowTest, OpensAsManyTimesAsAsked) {
  ReportWindow& first = open(goods(3));
  ReportWindow& second = open(goods(4));
  EXPECT_NE(&first, &second);
  EXPECT_TRUE(first.isVisible());
  EXPECT_TRUE(second.isVisible());
}

TEST_F(ReportWindowTest, ShowsAnEmptyReportWithoutAMessage) {
  ReportWindow& window = open(nullptr);
  EXPECT_EQ(window.pages().pageCount(), 1);
  EXPECT_TRUE(boxes_->asked.isEmpty());
}

TEST_F(ReportWindowTest, HasItsActionsByName) {
  ReportWindow& window = open(goods(3));
  for (const QString& name :
       {u"Print"_s, u"PDF"_s, u"HTML"_s, u"CSV"_s, u"ZoomIn"_s, u"ZoomOut"_s, u"FitWidth"_s,
        u"First"_s, u"Previous"_s, u"Next"_s, u"Last"_s, u"Close"_s}) {
    EXPECT_FALSE(action(window, name).text().isEmpty());
  }
}

TEST_F(ReportWindowTest, ExportsThroughTheFileDialog) {
  const struct {
    QString action, preset;
    QByteArray begins;
  } cases[] = {
      {u"PDF"_s, u"商品目录单.pdf"_s, "%PDF-"},
      {u"HTML"_s, u"商品目录单.html"_s, "<!DOCTYPE html>"},
      {u"CSV"_s, u"商品目录单.csv"_s, "\xEF\xBB\xBF"},
  };
  ReportWindow& window = open(goods(3));
  for (const auto& c : cases) {
    boxes_->expectFile(path(c.preset));
    action(window, c.action).trigger();
    EXPECT_EQ(boxes_->filesAsked.last().fileName, c.preset);
    EXPECT_EQ(boxes_->filesAsked.last().suffix, c.action.toLower());
    EXPECT_TRUE(contentOf(path(c.preset)).startsWith(c.begins));
    EXPECT_TRUE(window.statusBar()->currentMessage().contains(path(c.preset)));
  }
  EXPECT_TRUE(boxes_->asked.isEmpty());
}

TEST_F(ReportWindowTest, WritesNothingWhenTheFileDialogIsCancelled) {
  ReportWindow& window = open(goods(3));
  for (const QString& name : {u"PDF"_s, u"HTML"_s, u"CSV"_s}) {
    boxes_->expectFile(std::nullopt);
    action(window, name).trigger();
  }
  EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

TEST_F(ReportWindowTest, TellsWhenAFileCannotBeWrittenAndLeavesNothing) {
  ReportWindow& window = open(goods(2000));
  for (const QString& name : {u"PDF"_s, u"HTML"_s, u"CSV"_s}) {
    for (const QString& target : {path(u"no/folder/a"_s), u"/dev/full"_s}) {
      boxes_->expectFile(target);
      boxes_->expect(Answer::Ok);
      action(window, name).trigger();
      EXPECT_TRUE(boxes_->asked.last().text.startsWith(u"文件无法写入："_s + target));
      EXPECT_EQ(boxes_->asked.last().mark, Mark::Critical);
    }
  }
  EXPECT_EQ(boxes_->asked.size(), 6);
  EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

TEST_F(ReportWindowTest, PrintsOnTheChosenPrinter) {
  ReportWindow& window = open(goods(80));
  int asked = 0;
  window.choosePrinter = [&](QPrinter& printer) {
    ++asked;
    EXPECT_EQ(printer.pageLayout().pageSize().id(), QPageSize::A4);
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Portrait);
    EXPECT_EQ(printer.docName(), u"商品目录单"_s);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path(u"out.pdf"_s));
    return true;
  };
  QTest::keyClick(&view(window), Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(pagesIn(contentOf(path(u"out.pdf"_s))), window.pages().pageCount());
}

TEST_F(ReportWindowTest, PrintsOnlyTheChosenPages) {
  ReportWindow& window = open(goods(200));
  window.choosePrinter = [&](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path(u"out.pdf"_s));
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 3);
    return true;
  };
  action(window, u"Print"_s).trigger();
  EXPECT_EQ(pagesIn(contentOf(path(u"out.pdf"_s))), 2);
}

TEST_F(ReportWindowTest, PrintsNothingWhenThePrintDialogIsCancelled) {
  ReportWindow& window = open(goods(3));
  window.choosePrinter = [&](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path(u"out.pdf"_s));
    return false;
  };
  action(window, u"Print"_s).trigger();
  EXPECT_FALSE(QFileInfo::exists(path(u"out.pdf"_s)));
}

TEST_F(ReportWindowTest, TellsWhenTheDataCannotBeReadForThePrintDialog) {
  ReportWindow& window = open(goods(3));
  window.choosePrinter = [](QPrinter&) -> bool { throw Failure(7, u"读取数据出错"_s); };
  boxes_->expect(Answer::Ok);
  action(window, u"Print"_s).trigger();
  EXPECT_EQ(boxes_->texts(), QStringList{u"读取数据出错"_s});
}

TEST_F(ReportWindowTest, TellsWhenPrintingFails) {
  ReportWindow& window = open(goods(3));
  window.choosePrinter = [&](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path(u"no/folder/out.pdf"_s));
    return true;
  };
  boxes_->expect(Answer::Ok);
  action(window, u"Print"_s).trigger();
  ASSERT_EQ(boxes_->asked.size(), 1);
  EXPECT_TRUE(boxes_->asked[0].text.contains(u"文件无法写入"_s));
}

TEST_F(ReportWindowTest, ZoomsInOutAndToTheWidth) {
  ReportWindow& window = open(goods(3));
  PreviewPage& page = view(window);
  const double fitted = page.zoom();
  EXPECT_TRUE(page.isFittedToWidth());
  action(window, u"ZoomIn"_s).trigger();
  EXPECT_NEAR(page.zoom(), fitted * 1.25, 1e-6);
  EXPECT_FALSE(page.isFittedToWidth());
  action(window, u"ZoomOut"_s).trigger();
  action(window, u"ZoomOut"_s).trigger();
  EXPECT_NEAR(page.zoom(), fitted / 1.25, 1e-6);
  action(window, u"FitWidth"_s).trigger();
  EXPECT_NEAR(page.zoom(), fitted, 1e-6);
  EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0);
}

TEST_F(ReportWindowTest, KeepsZoomWithinItsLimits) {
  ReportWindow& window = open(goods(3));
  for (int i = 0; i < 30; ++i) action(window, u"ZoomIn"_s).trigger();
  EXPECT_DOUBLE_EQ(view(window).zoom(), PreviewPage::kMostZoom);
  view(window).grab();
  for (int i = 0; i < 40; ++i) action(window, u"ZoomOut"_s).trigger();
  EXPECT_DOUBLE_EQ(view(window).zoom(), PreviewPage::kLeastZoom);
  view(window).grab();
}

TEST_F(ReportWindowTest, ZoomsWithControlAndTheWheelAndScrollsWithTheWheelAlone) {
  ReportWindow& window = open(goods(200));
  PreviewPage& page = view(window);
  const double before = page.zoom();
  const auto turn = [&](Qt::KeyboardModifiers modifiers) {
    const QPointF middle = page.viewport()->rect().center();
    QWheelEvent event(middle, page.viewport()->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(page.viewport(), &event);
  };
  turn(Qt::NoModifier);
  EXPECT_GT(page.verticalScrollBar()->value(), 0);
  EXPECT_DOUBLE_EQ(page.zoom(), before);
  turn(Qt::ControlModifier);
  EXPECT_NEAR(page.zoom(), before / 1.25, 1e-6);
}

TEST_F(ReportWindowTest, WalksThePages) {
  ReportWindow& window = open(goods(200));
  const int count = window.pages().pageCount();
  ASSERT_GE(count, 4);
  PreviewPage& page = view(window);
  const auto state = [&] {
    return u"%1 %2%3%4%5"_s.arg(pageEntry(window).value())
        .arg(action(window, u"First"_s).isEnabled())
        .arg(action(window, u"Previous"_s).isEnabled())
        .arg(action(window, u"Next"_s).isEnabled())
        .arg(action(window, u"Last"_s).isEnabled());
  };
  EXPECT_EQ(state(), u"1 0011"_s);
  action(window, u"Next"_s).trigger();
  EXPECT_EQ(state(), u"2 1111"_s);
  action(window, u"Last"_s).trigger();
  EXPECT_EQ(state(), u"%1 1100"_s.arg(count));
  action(window, u"Previous"_s).trigger();
  EXPECT_EQ(page.currentPage(), count - 1);
  action(window, u"First"_s).trigger();
  EXPECT_EQ(state(), u"1 0011"_s);
  EXPECT_EQ(window.findChild<QLabel*>(u"lblPages"_s)->text().trimmed(), u"/ %1"_s.arg(count));
}

TEST_F(ReportWindowTest, WalksThePagesAlsoWhenSeveralFitTheView) {
  ReportWindow& window = open(goods(200));
  PreviewPage& page = view(window);
  page.setZoom(PreviewPage::kLeastZoom);
  const int count = window.pages().pageCount();
  for (int number = page.currentPage(); number < count; ++number) {
    action(window, u"Next"_s).trigger();
    if (page.verticalScrollBar()->value() == page.verticalScrollBar()->maximum()) break;
    EXPECT_EQ(page.currentPage(), number + 1);
  }
}

TEST_F(ReportWindowTest, GoesToTheTypedPage) {
  ReportWindow& window = open(goods(200));
  pageEntry(window).setFocus();
  pageEntry(window).selectAll();
  QTest::keyClicks(&pageEntry(window), u"3"_s);
  EXPECT_EQ(view(window).currentPage(), 1);
  QTest::keyClick(&pageEntry(window), Qt::Key_Return);
  EXPECT_EQ(view(window).currentPage(), 3);
}

TEST_F(ReportWindowTest, ScrollsWithKeys) {
  ReportWindow& window = open(goods(200));
  QScrollBar& bar = *view(window).verticalScrollBar();
  QTest::keyClick(&view(window), Qt::Key_PageDown);
  const int once = bar.value();
  EXPECT_GT(once, 0);
  QTest::keyClick(&view(window), Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), 0);
  QTest::keyClick(&view(window), Qt::Key_Space);
  EXPECT_EQ(bar.value(), once);
  QTest::keyClick(&view(window), Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(bar.value(), 0);
  QTest::keyClick(&view(window), Qt::Key_End);
  EXPECT_EQ(bar.value(), bar.maximum());
  QTest::keyClick(&view(window), Qt::Key_Home);
  EXPECT_EQ(bar.value(), 0);
}

TEST_F(ReportWindowTest, ClosesWithEscapeAndControlWAndIsGone) {
  for (const auto& [key, modifiers] :
       {std::pair(Qt::Key_Escape, Qt::KeyboardModifiers()),
        std::pair(Qt::Key_W, Qt::KeyboardModifiers(Qt::ControlModifier))}) {
    const QPointer<ReportWindow> window = &open(goods(3));
    QTest::keyClick(&view(*window), key, modifiers);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); }));
  }
}

TEST_F(ReportWindowTest, ClosesWithTheProgramAndDoesNotKeepIt) {
  const QPointer<ReportWindow> window = &open(goods(3));
  EXPECT_FALSE(window->testAttribute(Qt::WA_QuitOnClose));
  QTimer::singleShot(0, qApp, &QCoreApplication::quit);
  QApplication::exec();
  EXPECT_TRUE(window.isNull());
}

TEST_F(ReportWindowTest, ReadsOnlyTheRowsOfPagesInView) {
  const auto data = goods(100000);
  ReportWindow& window = open(data);
  view(window).grab();
  EXPECT_GT(data->valuesRead, 0);
  EXPECT_LT(data->valuesRead, 2000);
  action(window, u"Last"_s).trigger();
  view(window).grab();
  EXPECT_EQ(view(window).currentPage(), window.pages().pageCount());
  EXPECT_LT(data->valuesRead, 4000);
}

TEST_F(ReportWindowTest, FindsTheRestOfThePagesWhileTheFirstIsShown) {
  ReportWindow& window = open(goods(100000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.pages().isComplete(); }, 60'000));
  const int count = window.pages().knownPages();
  EXPECT_GT(count, 2000);
  EXPECT_EQ(pageEntry(window).maximum(), count);
  EXPECT_EQ(window.findChild<QLabel*>(u"lblPages"_s)->text().trimmed(), u"/ %1"_s.arg(count));
}

TEST_F(ReportWindowTest, PaintsPagesAnewOnceTheNumberOfPagesIsKnown) {
  PageLayout pages(rptXIMU(), goods(200), QDate(2024, 3, 9));
  PreviewPage page(pages);
  page.resize(800, 400);
  page.setZoom(PreviewPage::kLeastZoom);
  const QRect first(250, 0, 300, 300);
  const QImage before = page.viewport()->grab(first).toImage();
  ASSERT_FALSE(pages.isComplete());
  pages.pageCount();
  page.pagesFound();
  EXPECT_NE(page.viewport()->grab(first).toImage(), before) << "\"1 /\" and 7";
}

TEST_F(ReportWindowTest, PaintsBlackTextOnWhitePaper) {
  ReportWindow& window = open(goods(30));
  const QImage image = view(window).viewport()->grab().toImage();
  int white = 0, dark = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const int gray = qGray(image.pixel(x, y));
      white += gray == 255;
      dark += gray < 100;
    }
  }
  EXPECT_GT(white, image.width() * image.height() / 2);
  EXPECT_GT(dark, 500);
}

TEST_F(ReportWindowTest, ShowsWhatFailedWhenTheDataCannotBeRead) {
  ReportWindow& window = open(std::make_shared<BrokenSet>());
  view(window).grab();
  EXPECT_EQ(window.statusBar()->currentMessage(), u"读取数据出错"_s);
  boxes_->expectFile(path(u"a.pdf"_s));
  boxes_->expect(Answer::Ok);
  action(window, u"PDF"_s).trigger();
  EXPECT_TRUE(boxes_->asked.last().text.contains(u"读取数据出错"_s));
  EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

}  // namespace
