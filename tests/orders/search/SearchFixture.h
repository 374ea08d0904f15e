#pragma once

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include "orders/search/FrmSelect.h"
#include "portal/url_encode.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// The goods search of company 25 in the industry 图书, driven through its controls. The first
/// request of every test is that for the upper categories.
class SearchFixture : public ClientFixture {
 protected:
  SearchFixture() {
    using namespace Qt::StringLiterals;
    beCompany(1, 0);
    state.gPageSize = 2;
    portal.answerWith({page({{u"13"_s, u"文学"_s}, {u"22"_s, u"教育"_s}})});
  }

  FrmSelect& screen() {
    auto& form = defaultInstance<FrmSelect>();
    QApplication::setActiveWindow(form.window());
    return form;
  }
  ListView& list() { return *screen().ListView1; }

  /// A result row in the order of the portal's answer.
  static QStringList found(const QString& id, const QString& name) {
    using namespace Qt::StringLiterals;
    return {id,      u"978-7-"_s + id, name, u"12.5"_s, u"八折"_s, u"云集书社"_s, u"青禾文库"_s,
            u"31"_s, u"501"_s};
  }
  static QByteArray count(const QString& pages) { return page({{pages}}); }

  QStringList names() {
    QStringList result;
    for (int row = 0; row < list().itemCount(); ++row) {
      result << list().itemAt(row)->subItem(1);
    }
    return result;
  }

  /// Answers from here on, and forgets the requests so far.
  void nextAnswers(const QList<QByteArray>& pages) {
    screen();
    portal.answerWith(pages);
    portal.clear();
  }

  void click(QPushButton* button) {
    ASSERT_TRUE(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
  }
  void press(ListView& where, int row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(where.viewport(), button, {}, where.cellRect(where.itemAt(row)).center());
  }
  void clickNode(TreeNode* node) {
    auto* tree = screen().TreeView1;
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->labelRect(node).center());
  }
  void clickTitle(int column) {
    auto* header = list().header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 10, header->height() / 2});
  }
  QAction* entry(const QString& name) { return screen().mnuGetx->findChild<QAction*>(name); }
  /// Runs the query of a category, which is the shortest way to a result.
  void fillResult(const QList<QStringList>& rows, const QString& pages = QStringLiteral("1")) {
    nextAnswers({page({}), page(rows), count(pages)});
    clickNode(screen().TreeView1->root(0)->childNode(0));
    portal.clear();
  }
  /// Opens the menu over a result row and chooses an entry.
  void choose(int row, const QString& name) {
    press(list(), row, Qt::RightButton);
    ASSERT_TRUE(screen().mnuGetx->isVisible());
    QTest::mouseClick(screen().mnuGetx, Qt::LeftButton, {},
                      screen().mnuGetx->actionGeometry(entry(name)).center());
  }

  static QString encoded(const QString& text) { return UrlEncodeField(QString(text)); }
  static QString rowsTarget(const QString& folder, const QString& table, const QString& fields,
                            const QString& condition) {
    using namespace Qt::StringLiterals;
    return u"/"_s + folder + u"/_vti_detail_field_s.asp?STABLE="_s + encoded(table) +
           u"&STRDATA="_s + encoded(fields) + u"&STOTHER="_s + encoded(condition);
  }
  static QString categoriesTarget(int parent) {
    using namespace Qt::StringLiterals;
    return rowsTarget(u"_vti_login"_s, u"LEBI"_s, u"id,lebi,"_s,
                      u"P_ID=%1 AND HAYE_ID=3"_s.arg(parent));
  }
  static QString pageTarget(const QString& query, int number = 1) {
    using namespace Qt::StringLiterals;
    return u"/_vti_product/_vti_detail_onepage.asp?STABLE="_s + encoded(u"XIMU"_s) +
           u"&STRDATA="_s + encoded(u"id,ximu_no,ximu,jigex,zhko,qiye,chye,qiye_id,chye_id,"_s) +
           u"&STOTHER="_s + encoded(query) + u"&STPAGE="_s + encoded(QString::number(number)) +
           u"&STPAGESIZE="_s + encoded(u"2"_s) + u"&STORDER="_s + encoded(u"NOTH,ID"_s);
  }
  static QString countTarget(const QString& query) {
    using namespace Qt::StringLiterals;
    return u"/_vti_product/_vti_detail_page.asp?STABLE="_s + encoded(u"XIMU"_s) + u"&STOTHER="_s +
           encoded(query) + u"&STPAGESIZE="_s + encoded(u"2"_s);
  }
  /// The two requests of a query, in their order.
  static QStringList queryTargets(const QString& query) {
    return {pageTarget(query), countTarget(query)};
  }
};

}  // namespace qinghe
