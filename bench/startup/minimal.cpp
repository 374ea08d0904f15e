#include <QApplication>
#include <QMenuBar>
#include <QToolBar>
#include <QTreeWidget>

#include "FirstPaint.h"

// What the client is measured against: a main window with a menu, a tool bar and a tree.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  FirstPaint watch;
  application.installEventFilter(&watch);
  QMainWindow window;
  QMenu* menu = window.menuBar()->addMenu(QStringLiteral("系统"));
  QToolBar* bar = window.addToolBar(QStringLiteral("工具栏"));
  for (int i = 0; i < 10; ++i) bar->addAction(menu->addAction(QStringLiteral("命令%1").arg(i)));
  auto* tree = new QTreeWidget;
  for (int i = 0; i < 10; ++i) {
    tree->addTopLevelItem(new QTreeWidgetItem({QStringLiteral("条目%1").arg(i)}));
  }
  window.setCentralWidget(tree);
  window.resize(1180, 760);
  window.show();
  return QApplication::exec();
}
