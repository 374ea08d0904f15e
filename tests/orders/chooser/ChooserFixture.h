#pragma once

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include "forms/Form.h"
#include "orders/chooser/frmGetXIMU.h"
#include "portal/url_encode.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// The goods chooser of company 25 on the goods of supplier 31, driven through its controls. The
/// portal answers in turn: the count of pages, then the pages.
class ChooserFixture : public ClientFixture {
 protected:
  ChooserFixture() {
    beCompany(1, 0);
    state.gPartnerId = 31;
    state.gPageSize = 2;
  }

  /// A goods row in the order of the portal's answer.
  static QStringList goods(const QString& id, const QString& name,
                           const QString& price = QStringLiteral("12.5")) {
    using namespace Qt::StringLiterals;
    return {id, name, u"文学"_s, price, u"满百册八折"_s, u"12"_s, u"B"_s + id, u"978-7-"_s + id};
  }
  static QByteArray count(const QString& pages) { return page({{pages}}); }

  /// Three rows on one page.
  void offerOnePage() {
    using namespace Qt::StringLiterals;
    portal.answerWith(
        {count(u"1"_s), page({goods(u"7"_s, u"大学语文"_s), goods(u"9"_s, u"高等数学"_s),
                              goods(u"17"_s, u"English Reader"_s)})});
  }

  frmGetXIMU& screen() {
    auto& form = defaultInstance<frmGetXIMU>();
    if (!form.isVisible()) {
      form.showForm();
      EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    return form;
  }
  ListView& list() { return *screen().ListView1; }
  ListItem& row(int index) { return *list().itemAt(index); }
  static QStringList cells(const ListItem& item) {
    QStringList texts{item.text()};
    for (int column = 1; column < ChosenColumnCount; ++column) texts << item.subItem(column);
    return texts;
  }
  QStringList names() {
    QStringList result;
    for (int index = 0; index < list().itemCount(); ++index) result << row(index).text();
    return result;
  }

  void click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }
  void clickAt(const QPoint& position, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(list().viewport(), button, {}, position);
  }
  void clickCell(int index, int column, Qt::MouseButton button = Qt::LeftButton) {
    clickAt(list().cellRect(&row(index), column).center(), button);
  }
  void clickTitle(int column) {
    auto* header = list().header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 20, header->height() / 2});
  }
  void pressExit() {
    auto* action = screen().Toolbar1->button(QStringLiteral("Exit"));
    QTest::mouseClick(screen().Toolbar1->widgetForAction(action), Qt::LeftButton);
  }
  void key(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
  }
  /// Types over what is selected.
  void type(const QString& text) {
    auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(edit, nullptr);
    edit->insert(text);
  }
  TextBox* input(const QString& name) { return screen().findChild<TextBox*>(name); }
  /// The name of the input that stands open, or nothing.
  QString open() {
    QStringList names;
    for (const auto& name : {QStringLiteral("TxtInputSL"), QStringLiteral("TxtInputJG"),
                             QStringLiteral("TxtInputZK")}) {
      if (input(name)->isVisible()) names << name;
    }
    return names.join(u' ');
  }
  /// Types into a cell and leaves it for the search box.
  void enter(int index, int column, const QString& text) {
    clickCell(index, column);
    type(text);
    QTest::mouseClick(screen().Text1->editor(), Qt::LeftButton);
  }

  static QString countTarget(const QString& size = QStringLiteral("2"),
                             const QString& partner = QStringLiteral("31")) {
    using namespace Qt::StringLiterals;
    return u"/_vti_product/_vti_detail_page.asp?STABLE="_s + UrlEncodeField(u"XIMU"_s) +
           u"&STOTHER="_s + UrlEncodeField(u"noth=true and qiye_id="_s + partner) +
           u"&STPAGESIZE="_s + UrlEncodeField(QString(size));
  }
  static QString pageTarget(int number) {
    using namespace Qt::StringLiterals;
    return u"/_vti_product/_vti_detail_onepage.asp?STABLE="_s + UrlEncodeField(u"XIMU"_s) +
           u"&STRDATA="_s + UrlEncodeField(u"id,ximu,lebi,jigex,zhko,gesh,ximu_bh,ximu_no,"_s) +
           u"&STOTHER="_s + UrlEncodeField(u"noth=true and qiye_id=31"_s) + u"&STPAGE="_s +
           UrlEncodeField(QString::number(number)) + u"&STPAGESIZE="_s + UrlEncodeField(u"2"_s) +
           u"&STORDER="_s + UrlEncodeField(u"NOTH,ID"_s);
  }
};

}  // namespace qinghe
