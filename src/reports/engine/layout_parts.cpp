#include "reports/engine/layout_parts.h"

namespace qinghe::layout_parts {

using namespace Qt::StringLiterals;

namespace {

/// Room for a column's text: a gap before the next column, none behind the last.
double textWidth(const std::vector<Column>& columns, size_t index) {
  constexpr double kGap = 2;
  return columns[index].width - (index + 1 < columns.size() ? kGap : 0);
}

ReportBox box(ReportBox::Kind kind, double x, double y, double width, double height) {
  ReportBox made;
  made.kind = kind;
  made.x = x;
  made.y = y;
  made.width = width;
  made.height = height;
  return made;
}

}  // namespace

ReportBox label(const QString& text, double x, double y, double width, double height) {
  ReportBox made = box(ReportBox::Kind::Label, x, y, width, height);
  made.text = text;
  return made;
}

ReportBox field(const QString& name, double x, double y, double width, double height) {
  ReportBox made = box(ReportBox::Kind::Field, x, y, width, height);
  made.field = name;
  return made;
}

ReportBox sum(const QString& name, double x, double y, double width, double height) {
  ReportBox made = box(ReportBox::Kind::Sum, x, y, width, height);
  made.field = name;
  made.align = ReportBox::Align::Right;
  return made;
}

ReportBox line(double x, double y, double width, double weight) {
  ReportBox made = box(ReportBox::Kind::Line, x, y, width, 0);
  made.weight = weight;
  return made;
}

ReportBox image(const QString& name) {
  return named(name, box(ReportBox::Kind::Image, 0, 0, 14, 14));
}

ReportBox named(const QString& name, ReportBox made) {
  made.name = name;
  return made;
}

ReportBox aligned(ReportBox::Align align, ReportBox made) {
  made.align = align;
  return made;
}

ReportBox bold(ReportBox made) {
  made.bold = true;
  return made;
}

ReportBox title(const QString& name, const QString& text, double width) {
  // Free of the picture at the left, and of as much at the right, to stand in the middle.
  ReportBox made = aligned(ReportBox::Align::Center, label(text, 18, 2, width - 36, 10));
  made.points = 16;
  return named(name, bold(made));
}

void addTitles(ReportSection* section, const std::vector<Column>& columns, double x, double y) {
  for (size_t i = 0; i < columns.size(); ++i) {
    section->boxes.push_back(
        bold(aligned(columns[i].align, label(columns[i].title, x, y, textWidth(columns, i)))));
    x += columns[i].width;
  }
}

void addFields(ReportSection* section, const std::vector<Column>& columns, double x, double y,
               const QString& format) {
  for (size_t i = 0; i < columns.size(); ++i) {
    const double width = textWidth(columns, i);
    ReportBox made = columns[i].field.isEmpty() ? label(QString(), x, y, width)
                                                : field(columns[i].field, x, y, width);
    made.format = format;
    section->boxes.push_back(aligned(columns[i].align, made));
    x += columns[i].width;
  }
}

void addSums(ReportSection* section, const std::vector<Column>& columns, double x, double y,
             const QStringList& fields, const QString& format) {
  for (size_t i = 0; i < columns.size(); ++i) {
    if (fields.contains(columns[i].field, Qt::CaseInsensitive)) {
      ReportBox made = bold(sum(columns[i].field, x, y, textWidth(columns, i)));
      made.format = format;
      section->boxes.push_back(made);
    }
    x += columns[i].width;
  }
}

ReportSection dateAndPageFooter(double width) {
  using Align = ReportBox::Align;
  const double middle = width / 2;
  ReportSection footer;
  footer.height = 8;
  footer.boxes = {line(0, 1.5, width, 0.1), label(u"%D"_s, 0, 2.5, 50),
                  aligned(Align::Right, label(u"%p"_s, middle - 23, 2.5, 20)),
                  aligned(Align::Center, label(u"/"_s, middle - 3, 2.5, 6)),
                  label(u"%P"_s, middle + 3, 2.5, 20)};
  return footer;
}

}  // namespace qinghe::layout_parts
