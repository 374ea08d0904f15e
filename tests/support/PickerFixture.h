#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "forms/ListView.h"
#include "shell/Picker.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// Pickers, driven through their controls while they are shown modally.
class PickerFixture : public ClientFixture {
 protected:
  ~PickerFixture() override { EXPECT_EQ(awaited_, 0) << "a form was never shown"; }

  /// Runs the steps in the next modal form of this class, once it is shown and no portal read runs,
  /// and ends a form that they leave on the screen.
  template <class Screen>
  void whileShown(const std::function<void(Screen&)>& steps) {
    auto& form = defaultInstance<Screen>();
    ++awaited_;
    auto* look = new QTimer(&form);
    // A read on the way to it takes time on a busy machine, and timers run meanwhile.
    look->callOnTimeout(&form, [this, &form, look, steps] {
      if (!form.isVisible() || state.forms.gate.isHeld()) return;
      look->stop();
      look->deleteLater();
      --awaited_;
      QApplication::setActiveWindow(&form);
      steps(form);
      form.hideForm();
    });
    look->start(1);
  }

  /// Opens the picker as a screen does and gives what the screen gets.
  template <class Screen>
  Choice pick(const std::function<void(Screen&)>& steps) {
    whileShown<Screen>(steps);
    return defaultInstance<Screen>().choose();
  }

  static void press(QPushButton* button) {
    ASSERT_TRUE(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
  }
  static void pressRow(ListView* list, int row, Qt::MouseButton button = Qt::LeftButton) {
    ASSERT_NE(list->itemAt(row), nullptr);
    QTest::mouseClick(list->viewport(), button, Qt::NoModifier,
                      list->cellRect(list->itemAt(row)).center());
  }
  static void pressEmptySpace(ListView* list) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->viewport()->rect().bottomLeft() + QPoint(5, -5));
  }

 private:
  int awaited_ = 0;
};

}  // namespace qinghe
