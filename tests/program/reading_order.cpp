#include "reading_order.h"

#include <QApplication>
#include <QRadioButton>
#include <QTest>
#include <algorithm>

namespace {

constexpr int longestWalk = 100;

/// The child of `above` that the widget is or stands in.
const QWidget* branchBelow(const QWidget* above, const QWidget* widget) {
  while (widget->parentWidget() != above) widget = widget->parentWidget();
  return widget;
}

/// Tab comes to the chosen one of its group, or to the first, and the arrow keys lead from there.
bool isReachedThroughItsGroup(const QWidget* widget) {
  const auto* option = qobject_cast<const QRadioButton*>(widget);
  if (option == nullptr || option->isChecked()) return false;
  const auto together = option->parentWidget()->findChildren<QRadioButton*>();
  return std::ranges::any_of(together, [option](const QRadioButton* other) {
    return other->group() == option->group() && (other->isChecked() || isReadBefore(other, option));
  });
}

bool isTabStop(const QWidget* widget) {
  // The line inside a combo box or a date hands the focus to the whole.
  return widget->isVisible() && widget->isEnabled() && widget->focusProxy() == nullptr &&
         (widget->focusPolicy() & Qt::TabFocus) != 0;
}

}  // namespace

bool isReadBefore(const QWidget* first, const QWidget* second) {
  const QWidget* common = first->parentWidget();
  while (common != second && !common->isAncestorOf(second)) common = common->parentWidget();
  const QRect one = branchBelow(common, first)->geometry();
  const QRect other = branchBelow(common, second)->geometry();
  const int beside = std::min(one.bottom(), other.bottom()) - std::max(one.top(), other.top());
  if (2 * beside > std::min(one.height(), other.height())) return one.left() < other.left();
  return one.top() < other.top();
}

QList<QWidget*> tabStops(QWidget* inside) {
  QList<QWidget*> stops;
  for (QWidget* widget : inside->findChildren<QWidget*>()) {
    const bool here = widget->window() == inside->window();
    if (here && isTabStop(widget) && !isReachedThroughItsGroup(widget)) stops.append(widget);
  }
  std::ranges::stable_sort(stops, isReadBefore);
  return stops;
}

QList<QWidget*> walkByTab(Qt::Key key) {
  const QWidget* start = QApplication::focusWidget();
  const auto modifiers = key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier;
  QList<QWidget*> walked;
  for (int presses = 0; presses < longestWalk && QApplication::focusWidget() != nullptr;
       ++presses) {
    const QWidget* before = QApplication::focusWidget();
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    QWidget* now = QApplication::focusWidget();
    // A date is left behind its year, month and day only.
    if (now != before) walked.append(now);
    if (now != before && now == start) break;
  }
  return walked;
}
