#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace qinghe {

/// One box of a section, placed in millimetres from the section's left upper corner.
struct ReportBox {
  enum class Kind { Label, Field, Sum, Image, Line };
  enum class Align { Left, Center, Right };

  Kind kind = Kind::Label;
  QString name;  ///< "Label7", "txtlebi"; may be empty
  double x = 0, y = 0, width = 0, height = 0;
  QString text;    ///< label text; "%p" page, "%P" pages, "%d" and "%D" the date
  QString member;  ///< set that the field comes from; empty for the section's own level
  QString field;   ///< column, without regard to case
  QString format;  ///< number format such as "0.000"; empty prints the text as it is
  Align align = Align::Left;
  double points = 9;
  bool bold = false;
  double weight = 0.2;  ///< thickness of a line, millimetres
};

struct ReportSection {
  double height = 0;  ///< millimetres; 0 for a section that prints nothing
  std::vector<ReportBox> boxes;
  bool isEmpty() const { return boxes.empty(); }
};

/// One level of the tree of sets: its header stands before its rows' children, its footer behind.
struct ReportGroup {
  QString member;  ///< the set whose rows these groups are
  ReportSection header;
  ReportSection footer;
};

/// A banded report as data: sections in the order report header, page header, group headers,
/// detail, group footers, page footer, report footer. Sums run over the section's group.
struct ReportLayout {
  QString name;     ///< "rptXIMU"
  QString caption;  ///< "商品目录单"
  bool landscape = false;
  ReportSection reportHeader;
  ReportSection pageHeader;
  std::vector<ReportGroup> groups;  ///< outermost first; none for a flat list
  QString detailMember;             ///< the set of the detail rows; empty for the top set
  ReportSection detail;
  ReportSection pageFooter;
  ReportSection reportFooter;
};

/// The layouts of the program.
const ReportLayout& rptXIMU();
const ReportLayout& rptGOHU();
const ReportLayout& rptGOKU_LEBI();
const ReportLayout& rptGOKU_DAWE();
const ReportLayout& rptGOKU_MONTH();
const ReportLayout& rptXIMU_GOKU();

}  // namespace qinghe
