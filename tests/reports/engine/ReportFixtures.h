#pragma once

#include <QDate>

#include "reports/engine/PageLayout.h"
#include "tests/reports/engine/MemorySet.h"

namespace fixtures {

using namespace Qt::StringLiterals;

inline const QDate kDay(2024, 3, 9);

inline qinghe::ReportBox box(qinghe::ReportBox::Kind kind, const QString& text, double x = 0) {
  qinghe::ReportBox made;
  made.kind = kind;
  made.x = x;
  made.width = 30;
  made.height = 5;
  (kind == qinghe::ReportBox::Kind::Label ? made.text : made.field) = text;
  return made;
}

inline qinghe::ReportSection section(double height, std::vector<qinghe::ReportBox> boxes) {
  return {height, std::move(boxes)};
}

/// Paper whose body, without page header and footer, is exactly `height` millimetres.
inline qinghe::PaperFormat paperWithBody(double height) {
  return {100, height + 20, 10, 10, 10, 10};
}

/// Rows of one column "n" with the numbers from 1.
inline std::shared_ptr<MemorySet> numbers(int count, const QString& name = {}) {
  auto set = memorySet(name, {u"n"_s});
  for (int i = 1; i <= count; ++i) set->add({qint64{i}});
  return set;
}

/// A flat list that prints "n" in rows of 10 millimetres.
inline qinghe::ReportLayout flatLayout() {
  qinghe::ReportLayout layout;
  layout.name = u"rptTest"_s;
  layout.caption = u"测试"_s;
  layout.detail = section(10, {box(qinghe::ReportBox::Kind::Field, u"N"_s)});
  return layout;
}

inline QStringList textsOf(const qinghe::ReportPage& page) {
  QStringList texts;
  for (const auto& placed : page.boxes) texts << placed.text;
  return texts;
}

/// The texts of each page, joined.
inline QStringList pagesOf(qinghe::PageLayout& pages) {
  QStringList all;
  const int count = pages.pageCount();
  for (int i = 0; i < count; ++i) all << textsOf(pages.page(i)).join(u' ');
  return all;
}

/// Two categories of goods, each goods with its lines, as the statistics read them. The second
/// goods of the first category has a return.
inline std::shared_ptr<MemorySet> statisticsTree() {
  const QStringList columns = {u"XIMU_ID"_s, u"SHLI"_s, u"JINE"_s, u"YNSH"_s,
                               u"thsl"_s,    u"thje"_s, u"thys"_s};
  const auto lines = [&](const QList<QVariantList>& rows) {
    return memorySet(u"Cmd_goku_lebi_ximu_goku"_s, columns, rows);
  };
  auto first = memorySet(u"Cmd_goku_lebi_ximu"_s, {u"LEBI"_s, u"XIMU_ID"_s, u"XIMU"_s});
  first->add({u"文学"_s, 1, u"红楼梦"_s});
  first->hang(lines({{1, 2.0, 50.5, 40.25, 0, 0, 0}, {1, 3.0, 75.75, 60.5, 0, 0, 0}}));
  first->add({u"文学"_s, 2, u"围城"_s});
  first->hang(
      lines({{2, 10.0, 200.0, 150.0, 0, 0, 0}, {2, -4.0, -80.0, -60.0, -4.0, -80.0, -60.0}}));
  auto second = memorySet(u"Cmd_goku_lebi_ximu"_s, {u"LEBI"_s, u"XIMU_ID"_s, u"XIMU"_s});
  second->add({u"历史"_s, 3, u"史记"_s});
  second->hang(lines({{3, 1.0, u"99.999"_s, u"80 元"_s, 0, 0, QVariant()}}));
  auto top = memorySet(u"Cmd_goku_lebi"_s, {u"LEBI"_s});
  top->add({u"文学"_s});
  top->hang(first);
  top->add({u"历史"_s});
  top->hang(second);
  return top;
}

}  // namespace fixtures
