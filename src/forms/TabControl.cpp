#include "forms/TabControl.h"

#include <QKeyEvent>
#include <QTabBar>

namespace qinghe {

TabControl::TabControl(const QString& name, WalkedBy walkedBy, QWidget* parent)
    : QTabWidget(parent), walkedBy_(walkedBy) {
  setObjectName(name);
  tabBar()->installEventFilter(this);
  setFocusPolicy(Qt::NoFocus);
}

void TabControl::keyPressEvent(QKeyEvent* event) {
  const bool turns = (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) &&
                     event->modifiers().testFlag(Qt::ControlModifier);
  if (turns && walkedBy_ == WalkedBy::User) {
    tabBar()->setFocus(Qt::TabFocusReason);
    if (window()->focusWidget() != tabBar()) return;
  }
  QTabWidget::keyPressEvent(event);
}

bool TabControl::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tabBar() && event->type() == QEvent::Wheel) return true;
  return QTabWidget::eventFilter(watched, event);
}

QWidget* TabControl::addPage(const QString& caption) {
  auto* page = new QWidget;
  const int index = addTab(page, caption);
  if (walkedBy_ == WalkedBy::Code) {
    tabBar()->setTabEnabled(index, index == currentIndex());
  } else if (index > 0) {
    // A tab alone is nothing to choose from.
    tabBar()->setFocusPolicy(Qt::StrongFocus);
  }
  return page;
}

void TabControl::setTab(int tab) {
  if (tab < 0 || tab >= count()) return;
  // Tabs that are off cannot be reached by any click, key or wheel. The pages stay on.
  tabBar()->setTabEnabled(tab, true);
  setCurrentIndex(tab);
  if (walkedBy_ == WalkedBy::User) return;
  for (int other = 0; other < count(); ++other) {
    if (other != tab) tabBar()->setTabEnabled(other, false);
  }
}

}  // namespace qinghe
