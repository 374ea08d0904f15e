#include "reports/engine/BoxTexts.h"

#include "reports/engine/page_text.h"
#include "values/numbers.h"

namespace qinghe {

int levelOfMember(const ReportLayout& layout, const ShapedSetPtr& top, const QString& member) {
  if (top && top->name().compare(member, Qt::CaseInsensitive) == 0) return 0;
  for (int level = 0; level <= static_cast<int>(layout.groups.size()); ++level) {
    if (memberOfLevel(layout, level).compare(member, Qt::CaseInsensitive) == 0) return level;
  }
  return -1;
}

BoxTexts::BoxTexts(const ReportLayout& layout, ShapedSetPtr top)
    : layout_(layout), top_(top), sums_(layout, std::move(top)) {}

QString BoxTexts::text(const ReportBox& box, const BandCursor& cursor) {
  switch (box.kind) {
    case ReportBox::Kind::Label:
      return box.text;
    case ReportBox::Kind::Field:
      return fieldText(box, cursor);
    case ReportBox::Kind::Sum:
      return sumText(box, cursor);
    case ReportBox::Kind::Image:
    case ReportBox::Kind::Line:
      break;
  }
  return {};
}

QString BoxTexts::fieldText(const ReportBox& box, const BandCursor& cursor) {
  if (cursor.band() == Band::ReportFooter || cursor.band() == Band::End) return {};
  Binding& binding = bindings_[&box];
  if (binding.level < 0) {
    binding.level =
        box.member.isEmpty() ? cursor.level() : levelOfMember(layout_, top_, box.member);
    if (binding.level < 0) return {};
  }
  const ShapedSet* set = cursor.set(binding.level);
  if (set == nullptr || cursor.row(binding.level) >= set->rowCount()) return {};
  if (set != binding.set) {
    binding.set = set;
    binding.column = set->columnIndex(box.field);
  }
  if (binding.column < 0) return {};
  const qint64 row = cursor.row(binding.level);
  if (!box.format.isEmpty()) {
    const QVariant value = set->value(row, binding.column);
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::LongLong) {
      return formatNumber(value.toDouble(), box.format);
    }
  }
  return formatText(set->text(row, binding.column), box.format);
}

QString BoxTexts::sumText(const ReportBox& box, const BandCursor& cursor) {
  switch (cursor.band()) {
    case Band::ReportHeader:
    case Band::ReportFooter:
      return formatNumber(sums_.value(box, cursor, -1), box.format);
    case Band::GroupHeader:
    case Band::GroupFooter:
      return formatNumber(sums_.value(box, cursor, cursor.level()), box.format);
    case Band::Detail:
    case Band::End:
      break;
  }
  return {};
}

}  // namespace qinghe
