#include "browser/engine/EngineMenu.h"

#include <QMenu>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace qinghe {

namespace {

struct Entry {
  QWebEnginePage::WebAction action;
  QStringView caption;
};

constexpr Entry entries[]{
    {QWebEnginePage::Back, u"后退(&B)"},   {QWebEnginePage::Forward, u"前进(&F)"},
    {QWebEnginePage::Reload, u"刷新(&R)"}, {QWebEnginePage::Cut, u"剪切(&T)"},
    {QWebEnginePage::Copy, u"复制(&C)"},   {QWebEnginePage::Paste, u"粘贴(&P)"}};

}  // namespace

void fillPageMenu(QMenu& menu, const QWebEngineView& view) {
  for (const Entry& entry : entries) {
    QAction* action = view.page()->action(entry.action);
    action->setText(entry.caption.toString());
    if (entry.action == QWebEnginePage::Cut) menu.addSeparator();
    menu.addAction(action);
  }
}

}  // namespace qinghe
