#include "forms/TabControl.h"

#include <QTabBar>

namespace qinghe {

TabControl::TabControl(const QString& name, WalkedBy walkedBy, QWidget* parent)
    : QTabWidget(parent), walkedBy_(walkedBy) {
  setObjectName(name);
  if (walkedBy_ == WalkedBy::Code) setFocusPolicy(Qt::NoFocus);
}

QWidget* TabControl::addPage(const QString& caption) {
  auto* page = new QWidget;
  const int index = addTab(page, caption);
  if (walkedBy_ == WalkedBy::Code) tabBar()->setTabEnabled(index, index == currentIndex());
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
