#pragma once

#include <QApplication>
#include <QHeaderView>
#include <QTest>

#include "content/views/InformationView.h"
#include "portal/url_encode.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// An information view, driven through its controls.
template <class View>
class ViewFixture : public ClientFixture {
 protected:
  ViewFixture() { beCompany(1, 0); }

  View& screen() {
    auto& form = defaultInstance<View>();
    QApplication::setActiveWindow(form.window());
    return form;
  }
  ListView& services() { return *screen().ListView1; }
  ListView& data() { return *screen().ListView2; }

  void clickService(int row) {
    QTest::mouseClick(services().viewport(), Qt::LeftButton, Qt::NoModifier,
                      services().cellRect(services().itemAt(row)).center());
  }

  /// The texts of a data row, its sub-items up to the last that is not empty.
  QStringList dataRow(int row) {
    const ListItem* item = data().itemAt(row);
    if (item == nullptr) return {};
    QStringList cells{item->text()};
    for (int column = 1; column < 12; ++column) cells.append(item->subItem(column));
    while (cells.size() > 1 && cells.last().isEmpty()) cells.removeLast();
    return cells;
  }
  QStringList headers() {
    QStringList titles;
    const auto* model = data().model();
    for (int column = 0; column < model->columnCount(); ++column) {
      titles.append(model->headerData(column, Qt::Horizontal).toString());
    }
    return titles;
  }

  static QString rowsTarget(const QString& table, const QString& fields,
                            const QString& condition = {}) {
    QString target = QStringLiteral("/_vti_login/_vti_detail_field_s.asp?STABLE=") +
                     UrlEncodeField(table) + QStringLiteral("&STRDATA=") + UrlEncodeField(fields);
    if (!condition.isEmpty()) target += QStringLiteral("&STOTHER=") + UrlEncodeField(condition);
    return target;
  }

  void dragBarTo(int x) {
    auto* bar = screen().template findChild<QWidget*>(QStringLiteral("Splitter"));
    ASSERT_NE(bar, nullptr);
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, QPoint(2, 50));
    QTest::mouseMove(bar, QPoint(x - bar->x() + 2, 50));
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, QPoint(x - bar->x() + 2, 50));
  }
};

}  // namespace qinghe
