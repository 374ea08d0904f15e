#include <QString>

#include "reports/engine/ReportLayout.h"
#include "reports/engine/layout_parts.h"

namespace qinghe {

using namespace Qt::StringLiterals;
using namespace layout_parts;

namespace {

constexpr auto kRight = ReportBox::Align::Right;
constexpr double kLineHeight = 5.2;
constexpr double kLabelWidth = 18;

/// A title and the field behind it.
struct Entry {
  QString title;
  QString field;
};

void addEntry(ReportSection* section, const Entry& entry, double x, double y, double width) {
  section->boxes.push_back(label(entry.title, x, y, kLabelWidth));
  section->boxes.push_back(field(entry.field, x + kLabelWidth, y, width - kLabelWidth - 2));
}

/// One party's block, line by line from above.
void addBlock(ReportSection* section, const std::vector<Entry>& entries, double x, double y) {
  for (const auto& entry : entries) {
    addEntry(section, entry, x, y, kPortraitWidth / 2);
    y += kLineHeight;
  }
}

std::vector<Entry> party(const QString& name, const QString& prefix) {
  return {{name, prefix + u"MC"_s},           {u"地址:"_s, prefix + u"DZ"_s},
          {u"邮编:"_s, prefix + u"YB"_s},     {u"电话:"_s, prefix + u"DH"_s},
          {u"联系人:"_s, prefix + u"LX"_s},   {u"开户银行:"_s, prefix + u"KH"_s},
          {u"银行帐户:"_s, prefix + u"ZH"_s}, {u"税号:"_s, prefix + u"SH"_s}};
}

void addTotals(ReportSection* section, double y) {
  const std::vector<Entry> entries = {{u"数量合计:"_s, u"SHLI"_s}, {u"码洋合计:"_s, u"JINE"_s},
                                      {u"折扣合计:"_s, u"ZHKO"_s}, {u"实洋合计:"_s, u"YNSH"_s},
                                      {u"其它费用:"_s, u"FEYO"_s}, {u"税款合计:"_s, u"SHER"_s},
                                      {u"应收合计:"_s, u"HEJI"_s}};
  constexpr size_t kInLine = 4;
  for (size_t i = 0; i < entries.size(); ++i) {
    addEntry(section, entries[i], static_cast<double>(i % kInLine) * kPortraitWidth / kInLine,
             y + static_cast<double>(i / kInLine) * kLineHeight, kPortraitWidth / kInLine);
  }
}

std::vector<Column> columns() {
  // A book number is shown whole.
  return {{u"编号:"_s, u"XIMU_BH"_s, 14},      {u"条码:"_s, u"XIMU_NO"_s, 29},
          {u"名称:"_s, u"XIMU"_s, 42},         {u"定价:"_s, u"JIGE"_s, 15, kRight},
          {u"折扣:"_s, u"ZHKO"_s, 12, kRight}, {u"数量:"_s, u"SHLI"_s, 14, kRight},
          {u"金额:"_s, u"JINE"_s, 18, kRight}, {u"应收:"_s, u"YNSH"_s, 18, kRight},
          {u"包箱:"_s, u"BAXI"_s, 10, kRight}, {u"零:"_s, u"LING"_s, 8, kRight}};
}

ReportSection orderHeader() {
  constexpr double kBlocks = 25;
  constexpr double kShipping = kBlocks + 8 * kLineHeight + 1.5;
  constexpr double kTotals = kShipping + kLineHeight + 1.5;
  constexpr double kTitles = kTotals + 2 * kLineHeight + 2;
  ReportSection header;
  header.height = kTitles + 7.5;
  header.boxes = {image(u"Image1"_s), title(u"Label7"_s, u"商品订货清单"_s, kPortraitWidth)};
  addEntry(&header, {u"订货单号:"_s, u"GOHU_NO"_s}, 0, 17.5, kPortraitWidth / 2);
  addEntry(&header, {u"销售日期:"_s, u"GHRQ"_s}, kPortraitWidth / 2, 17.5, kPortraitWidth / 2);
  header.boxes.push_back(named(u"Line1"_s, line(0, kBlocks - 1, kPortraitWidth, 0.35)));
  addBlock(&header, party(u"供商名称:"_s, u"GS"_s), 0, kBlocks);
  addBlock(&header, party(u"客户名称:"_s, u"KH"_s), kPortraitWidth / 2, kBlocks);
  addEntry(&header, {u"发货方式:"_s, u"FHFS"_s}, 0, kShipping, kPortraitWidth / 2);
  addEntry(&header, {u"发货日期:"_s, u"FHRQ"_s}, kPortraitWidth / 2, kShipping, kPortraitWidth / 2);
  addTotals(&header, kTotals);
  header.boxes.push_back(named(u"Line2"_s, line(0, kTitles - 0.6, kPortraitWidth, 0.35)));
  addTitles(&header, columns(), 0, kTitles + 0.4);
  header.boxes.push_back(line(0, kTitles + 6.4, kPortraitWidth, 0.2));
  return header;
}

ReportLayout order() {
  ReportLayout layout;
  layout.name = u"rptGOHU"_s;
  layout.caption = u"商品订货清单"_s;
  layout.groups = {{u"Cmd_Gohu"_s, orderHeader(), {}}};
  layout.detailMember = u"Cmd_goku"_s;
  layout.detail.height = 5.6;
  addFields(&layout.detail, columns(), 0, 0.2);
  for (auto& box : layout.detail.boxes) box.points = 8.5;
  layout.detail.boxes.push_back(line(0, 5.4, kPortraitWidth, 0.06));
  layout.pageFooter = dateAndPageFooter(kPortraitWidth);
  return layout;
}

}  // namespace

const ReportLayout& rptGOHU() {
  static const ReportLayout layout = order();
  return layout;
}

}  // namespace qinghe
