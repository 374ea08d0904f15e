#include "reports/ReportPrinter.h"

#include <gtest/gtest.h>

#include <QPaintEngine>
#include <QPrintEngine>

#include "tests/reports/engine/MemorySet.h"
#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// What arrives at a device that prints: pages, and how large a unit of the report is on each.
class PaperTray : public QPaintEngine, public QPrintEngine {
 public:
  PaperTray() : QPaintEngine(AllFeatures) {}

  bool begin(QPaintDevice*) override {
    sheets = opens ? 1 : 0;
    return opens;
  }
  bool end() override { return true; }
  void updateState(const QPaintEngineState& now) override {
    if (now.state().testFlag(DirtyTransform)) {
      const double scale = now.transform().m11();
      if (scale != 1) smallest = std::min(smallest, scale);
    }
  }
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
  void drawTextItem(const QPointF&, const QTextItem&) override {}
  Type type() const override { return User; }

  void setProperty(PrintEnginePropertyKey, const QVariant&) override {}
  QVariant property(PrintEnginePropertyKey key) const override {
    if (key == PPK_Resolution) return kDotsPerInch;
    return key == PPK_QPageLayout ? QVariant::fromValue(paper) : QVariant();
  }
  bool newPage() override {
    ++sheets;
    return sheets <= enough;
  }
  bool abort() override {
    aborted = true;
    return true;
  }
  int metric(QPaintDevice::PaintDeviceMetric metric) const override {
    switch (metric) {
      case QPaintDevice::PdmDevicePixelRatio:
        return 1;
      case QPaintDevice::PdmDevicePixelRatioScaled:
        return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
      default:
        return kDotsPerInch;
    }
  }
  QPrinter::PrinterState printerState() const override { return QPrinter::Active; }

  static constexpr int kDotsPerInch = 1440;

  QPageLayout paper{QPageSize(QPageSize::A4), QPageLayout::Portrait, {}};
  bool opens = true;
  int enough = 1000;  // sheets of paper
  int sheets = 0;
  bool aborted = false;
  double smallest = 1000;
};

class TestPrinter : public QPrinter {
 public:
  explicit TestPrinter(PaperTray* tray) { setEngines(tray, tray); }
};

std::shared_ptr<MemorySet> goods(int count) {
  auto set = memorySet({}, {u"XIMU_NO"_s, u"XIMU"_s, u"GESH"_s, u"JIGEX"_s});
  for (int i = 1; i <= count; ++i) set->add({u"N%1"_s.arg(i), u"书名"_s, u"20"_s, u"25.50"_s});
  return set;
}

class ReportPrinter : public testing::Test {
 protected:
  PaperTray tray;
  TestPrinter printer{&tray};
  PageLayout pages{rptXIMU(), goods(200), QDate(2024, 3, 9)};
};

TEST_F(ReportPrinter, PrintsAllPagesOrThoseOfTheRange) {
  const int all = pages.pageCount();
  ASSERT_GE(all, 5);
  EXPECT_TRUE(printReport(pages, printer).ok());
  EXPECT_EQ(tray.sheets, all);
  const struct {
    int from, to, sheets;
  } cases[] = {{2, 3, 2}, {1, 1, 1}, {3, all + 9, all - 2}, {all, all, 1}};
  printer.setPrintRange(QPrinter::PageRange);
  for (const auto& c : cases) {
    printer.setFromTo(c.from, c.to);
    EXPECT_TRUE(printReport(pages, printer).ok());
    EXPECT_EQ(tray.sheets, c.sheets) << c.from << " to " << c.to;
  }
}

TEST_F(ReportPrinter, PrintsSmallerOnSmallerPaperAndNeverLarger) {
  constexpr double kFull =
      PaperTray::kDotsPerInch / 288.0;  // units of the printer in one of the report
  EXPECT_TRUE(printReport(pages, printer).ok());
  EXPECT_NEAR(tray.smallest, kFull, kFull * 0.001);
  tray.paper.setPageSize(QPageSize(QPageSize::A6));  // a quarter of it
  EXPECT_TRUE(printReport(pages, printer).ok());
  EXPECT_NEAR(tray.smallest, kFull / 2, kFull * 0.01);
  tray.smallest = 1000;
  tray.paper.setPageSize(QPageSize(QPageSize::A2));
  EXPECT_TRUE(printReport(pages, printer).ok());
  EXPECT_NEAR(tray.smallest, kFull, kFull * 0.001);
}

TEST_F(ReportPrinter, TellsWhenThePrinterCannotBeOpenedOrStops) {
  tray.enough = 2;
  EXPECT_EQ(printReport(pages, printer).error, u"打印失败，请检查打印机"_s);
  tray.opens = false;
  EXPECT_EQ(printReport(pages, printer).error, u"打印失败，请检查打印机"_s);
}

/// Fails as a store does whose file has gone.
class BrokenSet : public MemorySet {
 public:
  BrokenSet() : MemorySet({}, {u"XIMU"_s}) { add({1}); }
  QVariant value(qint64, int) const override { throw Failure(7, u"读取数据出错"_s); }
};

TEST_F(ReportPrinter, AbortsAndTellsWhenTheDataCannotBeRead) {
  PageLayout broken(rptXIMU(), std::make_shared<BrokenSet>(), QDate(2024, 3, 9));
  EXPECT_EQ(printReport(broken, printer).error, u"读取数据出错"_s);
  EXPECT_TRUE(tray.aborted);
}

}  // namespace
