#include <gtest/gtest.h>

#include <cmath>

#include "reports/engine/ReportPainter.h"
#include "reports/engine/ReportTable.h"
#include "tests/reports/engine/ReportFixtures.h"

using namespace qinghe;
using namespace fixtures;
using Kind = ReportBox::Kind;

namespace {

const std::vector<const ReportLayout*>& all() {
  static const std::vector<const ReportLayout*> layouts = {
      &rptXIMU(), &rptGOHU(), &rptGOKU_LEBI(), &rptGOKU_DAWE(), &rptGOKU_MONTH(), &rptXIMU_GOKU()};
  return layouts;
}

std::vector<const ReportSection*> sectionsOf(const ReportLayout& layout) {
  std::vector<const ReportSection*> sections = {&layout.reportHeader, &layout.pageHeader,
                                                &layout.detail, &layout.pageFooter,
                                                &layout.reportFooter};
  for (const auto& group : layout.groups) {
    sections.push_back(&group.header);
    sections.push_back(&group.footer);
  }
  return sections;
}

QStringList labels(const ReportSection& section) {
  QStringList texts;
  for (const auto& box : section.boxes) {
    if (box.kind == Kind::Label && !box.text.isEmpty()) texts << box.text;
  }
  return texts;
}

QStringList fields(const ReportSection& section, Kind kind = Kind::Field) {
  QStringList names;
  for (const auto& box : section.boxes) {
    if (box.kind == kind) names << box.field;
  }
  return names;
}

const ReportBox* named(const ReportSection& section, const QString& name) {
  for (const auto& box : section.boxes) {
    if (box.name == name) return &box;
  }
  return nullptr;
}

TEST(Layouts, HaveTheirNamesAndCaptions) {
  const QStringList expected = {u"rptXIMU 商品目录单"_s,
                                u"rptGOHU 商品订货清单"_s,
                                u"rptGOKU_LEBI 商品出入库统计单"_s,
                                u"rptGOKU_DAWE 商品出入库统计单"_s,
                                u"rptGOKU_MONTH 商品出入库统计单"_s,
                                u"rptXIMU_GOKU 商品订单明细表"_s};
  QStringList names;
  for (const auto* layout : all()) names << layout->name + u' ' + layout->caption;
  EXPECT_EQ(names, expected);
}

TEST(Layouts, KeepEveryBoxInsideItsSectionAndThePaper) {
  for (const auto* layout : all()) {
    const PaperFormat paper = PaperFormat::forLayout(*layout);
    for (const auto* part : sectionsOf(*layout)) {
      for (const auto& box : part->boxes) {
        EXPECT_GE(box.x, 0);
        EXPECT_GE(box.y, 0);
        EXPECT_LE(box.x + box.width, paper.width - paper.left - paper.right + 1e-9)
            << layout->name.toStdString() << " " << (box.text + box.field).toStdString();
        EXPECT_LE(box.y + box.height, part->height + 1e-9)
            << layout->name.toStdString() << " " << (box.text + box.field).toStdString();
      }
    }
  }
}

TEST(Layouts, NeverLetTextBoxesOverlap) {
  for (const auto* layout : all()) {
    for (const auto* part : sectionsOf(*layout)) {
      for (size_t i = 0; i < part->boxes.size(); ++i) {
        for (size_t k = i + 1; k < part->boxes.size(); ++k) {
          const auto& a = part->boxes[i];
          const auto& b = part->boxes[k];
          if (a.kind == Kind::Line || b.kind == Kind::Line) continue;
          const QRectF shared =
              QRectF(a.x, a.y, a.width, a.height).intersected(QRectF(b.x, b.y, b.width, b.height));
          EXPECT_LT(shared.width() * shared.height(), 1e-6)
              << layout->name.toStdString() << ": " << (a.text + a.field).toStdString() << " / "
              << (b.text + b.field).toStdString();
        }
      }
    }
  }
}

TEST(Layouts, OfTheGoodsListHasTitlesFieldsAndTwoBlankColumns) {
  const auto& layout = rptXIMU();
  EXPECT_EQ(labels(layout.pageHeader),
            (QStringList{u"商品目录/报价单"_s, u"编号:"_s, u"名称:"_s, u"包箱:"_s, u"价格:"_s,
                         u"数量:"_s, u"金额:"_s}));
  EXPECT_EQ(named(layout.pageHeader, u"Label7"_s)->text, u"商品目录/报价单"_s);
  EXPECT_EQ(named(layout.pageHeader, u"Image1"_s)->kind, Kind::Image);
  EXPECT_EQ(fields(layout.detail), (QStringList{u"XIMU_NO"_s, u"XIMU"_s, u"GESH"_s, u"JIGEX"_s}));
  EXPECT_EQ(labels(layout.pageFooter), (QStringList{u"%D"_s, u"%p"_s, u"/"_s, u"%P"_s}));
  EXPECT_TRUE(layout.groups.empty());
  EXPECT_TRUE(layout.reportHeader.isEmpty());
  EXPECT_TRUE(layout.reportFooter.isEmpty());
  EXPECT_FALSE(layout.landscape);
}

TEST(Layouts, OfTheGoodsListAlignsPricesAndPacksAtTheRight) {
  for (const auto& box : rptXIMU().detail.boxes) {
    if (box.kind != Kind::Field) continue;
    const bool number = box.field == u"GESH"_s || box.field == u"JIGEX"_s;
    EXPECT_EQ(box.align == ReportBox::Align::Right, number) << box.field.toStdString();
  }
}

TEST(Layouts, PutEachTitleOverItsColumn) {
  for (const auto* layout : all()) {
    ReportTable table(*layout, nullptr);
    for (const auto& box : layout->detail.boxes) {
      if (box.kind != Kind::Field) continue;
      int titles = 0;
      const auto count = [&](const ReportSection& part) {
        for (const auto& label : part.boxes) {
          if (label.kind == Kind::Label && label.bold && label.points == 9 &&
              std::abs(label.x - box.x) < 1e-9 && std::abs(label.width - box.width) < 1e-9 &&
              label.align == box.align) {
            ++titles;
          }
        }
      };
      count(layout->pageHeader);
      for (const auto& group : layout->groups) count(group.header);
      EXPECT_EQ(titles, 1) << layout->name.toStdString() << " " << box.field.toStdString();
    }
  }
}

TEST(Layouts, OfTheThreeStatisticsDifferOnlyInTitleKeyAndMembers) {
  const struct {
    const ReportLayout& layout;
    QString title, outer, inner, lines, key;
  } cases[] = {
      {rptGOKU_LEBI(), u"商品出入库统计单-按一级类别"_s, u"cmd_goku_lebi"_s,
       u"cmd_goku_lebi_ximu"_s, u"cmd_goku_lebi_ximu_goku"_s, u"lebi"_s},
      {rptGOKU_DAWE(), u"商品出入库统计单-按发行商"_s, u"cmdgoku_gosh"_s, u"cmdgoku_gosh_ximu"_s,
       u"cmdgoku_gosh_ximu_goku"_s, u"dawe"_s},
      {rptGOKU_MONTH(), u"商品出入库统计单-按发行月份"_s, u"cmdgoku_month"_s,
       u"cmdgoku_month_ximu"_s, u"cmdgoku_month_ximu_goku"_s, u"month_id"_s},
  };
  for (const auto& c : cases) {
    const auto& layout = c.layout;
    EXPECT_EQ(named(layout.reportHeader, u"Label8"_s)->text, c.title);
    EXPECT_NE(named(layout.reportHeader, u"Image1"_s), nullptr);
    EXPECT_EQ(labels(layout.pageHeader), (QStringList{u"数量:"_s, u"金额:"_s, u"退货数量:"_s,
                                                      u"退货金额:"_s, u"应收:"_s, u"退货应收:"_s}));
    const QStringList six = {u"shli"_s, u"jine"_s, u"thsl"_s, u"thje"_s, u"ynsh"_s, u"thys"_s};
    const QStringList four = {u"jine"_s, u"thje"_s, u"ynsh"_s, u"thys"_s};
    EXPECT_EQ(fields(layout.detail), six);
    ASSERT_EQ(layout.groups.size(), 2U);
    EXPECT_EQ(layout.groups[0].member.toLower(), c.outer);
    EXPECT_EQ(layout.groups[1].member.toLower(), c.inner);
    EXPECT_EQ(layout.detailMember.toLower(), c.lines);
    EXPECT_TRUE(layout.groups[0].header.isEmpty());
    EXPECT_TRUE(layout.groups[1].header.isEmpty());
    EXPECT_EQ(fields(layout.groups[1].footer), QStringList{u"ximu"_s});
    EXPECT_EQ(fields(layout.groups[1].footer, Kind::Sum), six);
    EXPECT_EQ(named(layout.groups[0].footer, u"txtlebi"_s)->field, c.key);
    EXPECT_EQ(fields(layout.groups[0].footer, Kind::Sum), four);
    EXPECT_EQ(named(layout.reportFooter, u"Label13"_s)->text, u"总计"_s);
    EXPECT_EQ(fields(layout.reportFooter, Kind::Sum), four);
    EXPECT_EQ(named(layout.pageFooter, u"Label15"_s)->text, u"第[%p]页"_s);
    EXPECT_EQ(named(layout.pageFooter, u"Label14"_s)->text, u"%d"_s);
    EXPECT_EQ(named(layout.pageFooter, u"Label16"_s)->text, u"共[%P]页"_s);
    for (const auto& box : layout.detail.boxes) EXPECT_EQ(box.format, u"0.000"_s);
  }
}

TEST(Layouts, OfTheOrderDetailsHasNineColumnsAndSumsOfThree) {
  const auto& layout = rptXIMU_GOKU();
  EXPECT_EQ(named(layout.reportHeader, u"Label2"_s)->text, u"商品订单明细表"_s);
  EXPECT_EQ(labels(layout.pageHeader),
            (QStringList{u"单号:"_s, u"日期:"_s, u"发行商:"_s, u"数量:"_s, u"金额:"_s, u"单价:"_s,
                         u"包箱:"_s, u"零:"_s, u"应收:"_s}));
  EXPECT_EQ(fields(layout.detail),
            (QStringList{u"GOHU_NO"_s, u"GHRQ"_s, u"DAWE"_s, u"SHLI"_s, u"JINE"_s, u"JIGE"_s,
                         u"BAXI"_s, u"LING"_s, u"YNSH"_s}));
  ASSERT_EQ(layout.groups.size(), 1U);
  EXPECT_TRUE(layout.groups[0].header.isEmpty());
  EXPECT_EQ(fields(layout.groups[0].footer), QStringList{u"XIMU"_s});
  EXPECT_EQ(fields(layout.groups[0].footer, Kind::Sum),
            (QStringList{u"SHLI"_s, u"JINE"_s, u"YNSH"_s}));
  EXPECT_EQ(named(layout.pageFooter, u"Label3K"_s)->text, u"%p"_s);
  EXPECT_TRUE(layout.reportFooter.isEmpty());
}

TEST(Layouts, OfTheOrderHasBothPartiesTotalsAndLines) {
  const auto& layout = rptGOHU();
  ASSERT_EQ(layout.groups.size(), 1U);
  const auto& header = layout.groups[0].header;
  EXPECT_EQ(labels(header),
            (QStringList{
                u"商品订货清单"_s, u"订货单号:"_s, u"销售日期:"_s, u"供商名称:"_s, u"地址:"_s,
                u"邮编:"_s,        u"电话:"_s,     u"联系人:"_s,   u"开户银行:"_s, u"银行帐户:"_s,
                u"税号:"_s,        u"客户名称:"_s, u"地址:"_s,     u"邮编:"_s,     u"电话:"_s,
                u"联系人:"_s,      u"开户银行:"_s, u"银行帐户:"_s, u"税号:"_s,     u"发货方式:"_s,
                u"发货日期:"_s,    u"数量合计:"_s, u"码洋合计:"_s, u"折扣合计:"_s, u"实洋合计:"_s,
                u"其它费用:"_s,    u"税款合计:"_s, u"应收合计:"_s, u"编号:"_s,     u"条码:"_s,
                u"名称:"_s,        u"定价:"_s,     u"折扣:"_s,     u"数量:"_s,     u"金额:"_s,
                u"应收:"_s,        u"包箱:"_s,     u"零:"_s}));
  EXPECT_EQ(
      fields(header),
      (QStringList{u"GOHU_NO"_s, u"GHRQ"_s, u"GSMC"_s, u"GSDZ"_s, u"GSYB"_s, u"GSDH"_s, u"GSLX"_s,
                   u"GSKH"_s,    u"GSZH"_s, u"GSSH"_s, u"KHMC"_s, u"KHDZ"_s, u"KHYB"_s, u"KHDH"_s,
                   u"KHLX"_s,    u"KHKH"_s, u"KHZH"_s, u"KHSH"_s, u"FHFS"_s, u"FHRQ"_s, u"SHLI"_s,
                   u"JINE"_s,    u"ZHKO"_s, u"YNSH"_s, u"FEYO"_s, u"SHER"_s, u"HEJI"_s}));
  EXPECT_EQ(fields(layout.detail),
            (QStringList{u"XIMU_BH"_s, u"XIMU_NO"_s, u"XIMU"_s, u"JIGE"_s, u"ZHKO"_s, u"SHLI"_s,
                         u"JINE"_s, u"YNSH"_s, u"BAXI"_s, u"LING"_s}));
  EXPECT_NE(named(header, u"Line1"_s), nullptr);
  EXPECT_NE(named(header, u"Line2"_s), nullptr);
  EXPECT_TRUE(layout.pageHeader.isEmpty());
  EXPECT_TRUE(layout.groups[0].footer.isEmpty());
  EXPECT_EQ(labels(layout.pageFooter), (QStringList{u"%D"_s, u"%p"_s, u"/"_s, u"%P"_s}));
}

TEST(Layouts, OfOrderAndGoodsListShowWholeBookNumbers) {
  for (const ReportLayout* layout : {&rptGOHU(), &rptXIMU()}) {
    bool found = false;
    for (const auto& box : layout->detail.boxes) {
      if (box.field != u"XIMU_NO"_s) continue;
      found = true;
      TextFitter fitter(qRound(box.points * ReportPainter::kUnitsPerInch / 72.0), box.bold);
      EXPECT_LE(fitter.widthOf(u"978-7-9903-0061-1"_s),
                box.width * ReportPainter::kUnitsPerMillimetre)
          << layout->name.toStdString();
    }
    EXPECT_TRUE(found);
  }
}

TEST(Layouts, OfTheOrderPrintsHeaderAndLinesFromTheirSets) {
  auto top = memorySet(u"Cmd_Gohu"_s, {u"GOHU_NO"_s, u"GSMC"_s, u"SHLI"_s});
  top->add({u"D-1"_s, u"青山书社"_s, 7.0});
  top->hang(memorySet(u"Cmd_goku"_s, {u"XIMU"_s, u"SHLI"_s}, {{u"围城"_s, 3.0}, {u"史记"_s, 4.0}}));
  PageLayout pages(rptGOHU(), top, kDay);
  const QStringList texts = textsOf(pages.page(0));
  EXPECT_TRUE(texts.contains(u"D-1"_s));
  EXPECT_TRUE(texts.contains(u"青山书社"_s));
  EXPECT_TRUE(texts.contains(u"围城"_s));
  EXPECT_LT(texts.indexOf(u"7"_s), texts.indexOf(u"3"_s));
}

TEST(Layouts, OfEmptyStatisticsPrintOnlyHeaders) {
  for (const auto* layout : {&rptGOKU_LEBI(), &rptGOKU_DAWE(), &rptGOKU_MONTH(), &rptXIMU_GOKU()}) {
    PageLayout pages(*layout, memorySet(u"x"_s, {}), kDay);
    EXPECT_EQ(pages.pageCount(), 1);
    for (const auto& placed : pages.page(0).boxes) {
      EXPECT_NE(placed.box->kind, Kind::Sum);
      EXPECT_NE(placed.box->kind, Kind::Field);
      EXPECT_NE(placed.text, u"总计"_s);
    }
  }
}

}  // namespace
