#include "shell/main/own_window.h"

#include <QApplication>
#include <QWidget>

#include "forms/Prompts.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

bool postClose(QWidget& window) {
  return QMetaObject::invokeMethod(&window, &QWidget::close, Qt::QueuedConnection);
}

}  // namespace

void closeWindowTitled(const QString& title, const std::function<bool(QWidget&)>& post) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->windowTitle() != title) continue;
    if (!(post ? post(*window) : postClose(*window))) {
      prompts().ask(nullptr, {u"Error posting message."_s});
    }
    return;
  }
  prompts().ask(nullptr, {u"并未开启"_s + title});
}

}  // namespace qinghe
