#pragma once

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <optional>

#include "catalogue/FrmXIMU.h"
#include "portal/url_encode.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// The local goods register of a company with two goods, one live and known to the portal, one not.
class GoodsFixture : public ClientFixture {
 protected:
  GoodsFixture() {
    beCompany(1, 0);
    addGoods(1, 71, QStringLiteral("大学语文"), true);
    addGoods(2, 0, QStringLiteral("高等数学"), false);
    store.exec(
        QStringLiteral("UPDATE XIMU SET LEBI='教材',LEBI_ID=12,CHYE='青禾出版社',CHYE_ID=5,"
                       "JISH='第一行'||char(13)||char(10)||'第二行',SHXI='平装' WHERE id=1"));
  }

  void addGoods(int id, int portalId, const QString& name, bool live, int owner = 1) {
    store.exec(
        QStringLiteral("INSERT INTO XIMU (id,R_ID,QIYE_ID,qiye,XIMU_NO,XIMU,JIGEX,ZHKO,GESH,"
                       "NOTH) VALUES (%1,%2,%3,'青禾书店','N%1','%4','25.50','说明','010',%5)")
            .arg(id)
            .arg(portalId)
            .arg(owner)
            .arg(name)
            .arg(live ? 1 : 0));
  }

  /// Rows beyond the two, so that the list has `count`.
  void fillUpTo(int count) {
    for (int id = 3; id <= count; ++id) addGoods(id, 0, QStringLiteral("书%1").arg(id), true);
  }

  FrmXIMU& screen() {
    auto& form = defaultInstance<FrmXIMU>();
    QApplication::setActiveWindow(form.window());
    return form;
  }

  ListView& list() { return *screen().ListView1; }
  QString status() { return screen().StatusBar1->text(); }
  QString field(int index) { return screen().txtFields(index)->text(); }

  void press(const QString& key) {
    QAction* action = screen().Toolbar1->button(key);
    ASSERT_NE(action, nullptr);
    ASSERT_TRUE(action->isEnabled()) << key.toStdString();
    QWidget* button = screen().Toolbar1->widgetForAction(action);
    QTest::mouseClick(button, Qt::LeftButton);
  }
  bool isEnabled(const QString& key) { return screen().Toolbar1->button(key)->isEnabled(); }

  /// Types over the whole field.
  void type(int index, const QString& text) {
    QWidget* editor = screen().txtFields(index)->editor();
    editor->setFocus();
    screen().txtFields(index)->selectAll();
    if (auto* line = qobject_cast<QLineEdit*>(editor); line != nullptr) {
      line->insert(text);
    } else {
      screen().txtFields(index)->setText(text);
    }
  }

  QPoint pointOf(int row) { return list().visualRect(list().model()->index(row, 0)).center(); }
  void clickRow(int row) {
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, pointOf(row));
  }
  void clickCheckBox(int row) {
    QStyleOptionViewItem option;
    option.initFrom(&list());
    option.rect = list().visualRect(list().model()->index(row, 0));
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    option.viewItemPosition = QStyleOptionViewItem::OnlyOne;
    const QRect box =
        list().style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &list());
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, box.center());
  }

  /// The portal takes a save and gives this id.
  void portalGives(const QString& id) { portal.answerWith({page({{id}})}); }
};

}  // namespace qinghe
