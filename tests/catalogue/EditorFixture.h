#pragma once

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <optional>

#include "catalogue/RecordEditor.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// A record editor, driven through its controls.
template <class Screen>
class EditorFixture : public ClientFixture {
 protected:
  Screen& screen() {
    auto& form = defaultInstance<Screen>();
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

  void clickRow(int row) {
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier,
                      list().cellRect(list().itemAt(row), 0).center());
  }
  void clickCheckBox(int row) {
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier,
                      list().checkRect(list().itemAt(row)).center());
  }

  /// The portal takes a save and gives this id.
  void portalGives(const QString& id) { portal.answerWith({page({{id}})}); }
};

}  // namespace qinghe
