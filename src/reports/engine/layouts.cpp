#include <QString>

#include "reports/engine/ReportLayout.h"
#include "reports/engine/layout_parts.h"

namespace qinghe {

using namespace Qt::StringLiterals;
using namespace layout_parts;

namespace {

constexpr auto kRight = ReportBox::Align::Right;

ReportLayout goodsList() {
  const std::vector<Column> columns = {
      {u"编号:"_s, u"XIMU_NO"_s, 33},      {u"名称:"_s, u"XIMU"_s, 65},
      {u"包箱:"_s, u"GESH"_s, 16, kRight}, {u"价格:"_s, u"JIGEX"_s, 20, kRight},
      {u"数量:"_s, QString(), 20, kRight}, {u"金额:"_s, QString(), 26, kRight}};
  ReportLayout layout;
  layout.name = u"rptXIMU"_s;
  layout.caption = u"商品目录单"_s;

  auto& header = layout.pageHeader;
  header.height = 25;
  header.boxes = {image(u"Image1"_s), title(u"Label7"_s, u"商品目录/报价单"_s, kPortraitWidth),
                  line(0, 17, kPortraitWidth, 0.35)};
  addTitles(&header, columns, 0, 18.2);
  header.boxes.push_back(line(0, 24.2, kPortraitWidth, 0.2));

  // High enough to write a quantity and an amount by hand.
  auto& detail = layout.detail;
  detail.height = 7;
  addFields(&detail, columns, 0, 1.2);
  detail.boxes.push_back(line(0, 6.8, 132, 0.06));
  detail.boxes.push_back(line(136, 6.8, 16, 0.2));
  detail.boxes.push_back(line(156, 6.8, 24, 0.2));

  layout.pageFooter = dateAndPageFooter(kPortraitWidth);
  return layout;
}

ReportLayout orderDetails() {
  const std::vector<Column> columns = {
      {u"单号:"_s, u"GOHU_NO"_s, 44},      {u"日期:"_s, u"GHRQ"_s, 33},
      {u"发行商:"_s, u"DAWE"_s, 62},       {u"数量:"_s, u"SHLI"_s, 20, kRight},
      {u"金额:"_s, u"JINE"_s, 26, kRight}, {u"单价:"_s, u"JIGE"_s, 20, kRight},
      {u"包箱:"_s, u"BAXI"_s, 18, kRight}, {u"零:"_s, u"LING"_s, 18, kRight},
      {u"应收:"_s, u"YNSH"_s, 26, kRight}};
  ReportLayout layout;
  layout.name = u"rptXIMU_GOKU"_s;
  layout.caption = u"商品订单明细表"_s;
  layout.landscape = true;
  layout.reportHeader.height = 16;
  layout.reportHeader.boxes = {title(u"Label2"_s, u"商品订单明细表"_s, kLandscapeWidth)};

  auto& header = layout.pageHeader;
  header.height = 8.5;
  header.boxes = {line(0, 0.5, kLandscapeWidth, 0.35)};
  addTitles(&header, columns, 0, 1.5);
  header.boxes.push_back(line(0, 7.5, kLandscapeWidth, 0.2));

  ReportGroup group;
  group.member = u"Cmd_Ximu_R"_s;
  group.footer.height = 8;
  group.footer.boxes = {line(0, 0.3, kLandscapeWidth, 0.1), bold(field(u"XIMU"_s, 0, 0.8, 136))};
  addSums(&group.footer, columns, 0, 0.8, {u"SHLI"_s, u"JINE"_s, u"YNSH"_s});
  group.footer.boxes.push_back(line(0, 6.2, kLandscapeWidth, 0.2));
  layout.groups = {group};

  layout.detailMember = u"Cmd_XIMU_GOKU"_s;
  layout.detail.height = 5.4;
  addFields(&layout.detail, columns, 0, 0.2);

  layout.pageFooter.height = 7;
  layout.pageFooter.boxes = {named(
      u"Label3K"_s, aligned(ReportBox::Align::Center, label(u"%p"_s, 0, 2, kLandscapeWidth)))};
  return layout;
}

}  // namespace

const ReportLayout& rptXIMU() {
  static const ReportLayout layout = goodsList();
  return layout;
}

const ReportLayout& rptXIMU_GOKU() {
  static const ReportLayout layout = orderDetails();
  return layout;
}

}  // namespace qinghe
