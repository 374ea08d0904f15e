#include <QString>

#include "reports/engine/ReportLayout.h"
#include "reports/engine/layout_parts.h"

namespace qinghe {

using namespace Qt::StringLiterals;
using namespace layout_parts;

namespace {

constexpr auto kRight = ReportBox::Align::Right;
constexpr double kNameWidth = 42;
const QString& kFormat() {
  static const QString format = u"0.000"_s;
  return format;
}

std::vector<Column> columns() {
  constexpr double kWidth = 23;
  return {{u"数量:"_s, u"shli"_s, kWidth, kRight},     {u"金额:"_s, u"jine"_s, kWidth, kRight},
          {u"退货数量:"_s, u"thsl"_s, kWidth, kRight}, {u"退货金额:"_s, u"thje"_s, kWidth, kRight},
          {u"应收:"_s, u"ynsh"_s, kWidth, kRight},     {u"退货应收:"_s, u"thys"_s, kWidth, kRight}};
}

/// Quantities of different goods do not add up to anything, so above the goods only money is
/// summed.
const QStringList& moneyFields() {
  static const QStringList fields = {u"jine"_s, u"thje"_s, u"ynsh"_s, u"thys"_s};
  return fields;
}

/// Where the three statistics differ.
struct Difference {
  QString name;
  QString title;
  QString groupMember;
  QString goodsMember;
  QString lineMember;
  QString keyField;
};

ReportSection goodsFooter(const Difference& difference) {
  ReportSection footer;
  footer.height = 7;
  ReportBox goods = bold(field(u"ximu"_s, 0, 0.6, kNameWidth - 1));
  goods.member = difference.goodsMember;
  footer.boxes = {line(kNameWidth, 0.3, kPortraitWidth - kNameWidth, 0.1), goods};
  addSums(&footer, columns(), kNameWidth, 0.6,
          {u"SHLI"_s, u"JINE"_s, u"THSL"_s, u"THJE"_s, u"YNSH"_s, u"THYS"_s}, kFormat());
  footer.boxes.push_back(line(0, 6.3, kPortraitWidth, 0.06));
  return footer;
}

ReportSection keyFooter(const Difference& difference) {
  ReportSection footer;
  footer.height = 9;
  footer.boxes = {line(0, 0.3, kPortraitWidth, 0.2),
                  named(u"txtlebi"_s, bold(field(difference.keyField, 0, 1, kNameWidth + 20)))};
  addSums(&footer, columns(), kNameWidth, 1, moneyFields(), kFormat());
  footer.boxes.push_back(line(0, 6.8, kPortraitWidth, 0.35));
  return footer;
}

ReportSection totalsFooter() {
  ReportSection footer;
  footer.height = 9;
  footer.boxes = {named(u"Label13"_s, bold(label(u"总计"_s, 0, 1, kNameWidth)))};
  addSums(&footer, columns(), kNameWidth, 1, moneyFields(), kFormat());
  footer.boxes.push_back(line(0, 6.6, kPortraitWidth, 0.2));
  footer.boxes.push_back(line(0, 7.4, kPortraitWidth, 0.2));
  return footer;
}

ReportLayout statistics(const Difference& difference) {
  using Align = ReportBox::Align;
  ReportLayout layout;
  layout.name = difference.name;
  layout.caption = u"商品出入库统计单"_s;
  layout.reportHeader.height = 18;
  layout.reportHeader.boxes = {image(u"Image1"_s),
                               title(u"Label8"_s, difference.title, kPortraitWidth)};

  layout.pageHeader.height = 8.5;
  layout.pageHeader.boxes = {line(0, 0.5, kPortraitWidth, 0.35)};
  addTitles(&layout.pageHeader, columns(), kNameWidth, 1.5);
  layout.pageHeader.boxes.push_back(line(0, 7.5, kPortraitWidth, 0.2));

  layout.groups = {{difference.groupMember, {}, keyFooter(difference)},
                   {difference.goodsMember, {}, goodsFooter(difference)}};
  layout.detailMember = difference.lineMember;
  layout.detail.height = 5.2;
  addFields(&layout.detail, columns(), kNameWidth, 0.1, kFormat());

  layout.pageFooter.height = 8;
  layout.pageFooter.boxes = {
      line(0, 1.5, kPortraitWidth, 0.1), named(u"Label14"_s, label(u"%d"_s, 0, 2.5, 50)),
      named(u"Label15"_s, aligned(Align::Center, label(u"第[%p]页"_s, 65, 2.5, 50))),
      named(u"Label16"_s, aligned(Align::Right, label(u"共[%P]页"_s, 130, 2.5, 50)))};
  layout.reportFooter = totalsFooter();
  return layout;
}

}  // namespace

const ReportLayout& rptGOKU_LEBI() {
  static const ReportLayout layout =
      statistics({u"rptGOKU_LEBI"_s, u"商品出入库统计单-按一级类别"_s, u"Cmd_goku_lebi"_s,
                  u"Cmd_Goku_lebi_ximu"_s, u"Cmd_goku_lebi_ximu_goku"_s, u"lebi"_s});
  return layout;
}

const ReportLayout& rptGOKU_DAWE() {
  static const ReportLayout layout =
      statistics({u"rptGOKU_DAWE"_s, u"商品出入库统计单-按发行商"_s, u"Cmdgoku_gosh"_s,
                  u"Cmdgoku_gosh_ximu"_s, u"CmdGoku_gosh_ximu_Goku"_s, u"dawe"_s});
  return layout;
}

const ReportLayout& rptGOKU_MONTH() {
  static const ReportLayout layout =
      statistics({u"rptGOKU_MONTH"_s, u"商品出入库统计单-按发行月份"_s, u"Cmdgoku_month"_s,
                  u"Cmdgoku_month_ximu"_s, u"Cmdgoku_month_ximu_goku"_s, u"month_id"_s});
  return layout;
}

}  // namespace qinghe
