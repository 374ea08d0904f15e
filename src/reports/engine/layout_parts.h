#pragma once

#include <vector>

#include "reports/engine/ReportLayout.h"

namespace qinghe::layout_parts {

inline constexpr double kPortraitWidth = 180;  ///< millimetres between the margins
inline constexpr double kLandscapeWidth = 267;

/// A column of a report's table: its title and the field under it.
struct Column {
  QString title;
  QString field;  ///< empty for a column that stays blank
  double width;
  ReportBox::Align align = ReportBox::Align::Left;
};

ReportBox label(const QString& text, double x, double y, double width, double height = 5);
ReportBox field(const QString& name, double x, double y, double width, double height = 5);
ReportBox sum(const QString& name, double x, double y, double width, double height = 5);
ReportBox line(double x, double y, double width, double weight);
ReportBox image(const QString& name);

ReportBox named(const QString& name, ReportBox box);
ReportBox aligned(ReportBox::Align align, ReportBox box);
ReportBox bold(ReportBox box);
/// The title of a report, centred over the width.
ReportBox title(const QString& name, const QString& text, double width);

/// Titles of the columns at the height `y`.
void addTitles(ReportSection* section, const std::vector<Column>& columns, double x, double y);
/// The fields of the columns; a blank column gets an empty box.
void addFields(ReportSection* section, const std::vector<Column>& columns, double x, double y,
               const QString& format = {});
/// Sums under those columns whose field is in the list.
void addSums(ReportSection* section, const std::vector<Column>& columns, double x, double y,
             const QStringList& fields, const QString& format = {});

/// "%D" at the left, "%p" "/" "%P" in the middle.
ReportSection dateAndPageFooter(double width);

}  // namespace qinghe::layout_parts
