#include "forms/Toolbar.h"

#include <QAction>
#include <QEvent>
#include <QToolButton>
#include <array>

#include "forms/Form.h"
#include "forms/Icons.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

struct UsualShortcut {
  QStringView key;
  QKeyCombination keys;
};

constexpr std::array usualShortcuts{
    UsualShortcut{u"Save", Qt::CTRL | Qt::Key_S}, UsualShortcut{u"Update", Qt::CTRL | Qt::Key_S},
    UsualShortcut{u"Add", Qt::CTRL | Qt::Key_N},  UsualShortcut{u"Print", Qt::CTRL | Qt::Key_P},
    UsualShortcut{u"Exit", Qt::CTRL | Qt::Key_W}, UsualShortcut{u"Find", Qt::CTRL | Qt::Key_F},
    UsualShortcut{u"Refresh", Qt::Key_F5},
};

QKeySequence shortcutOf(const QString& key) {
  for (const auto& usual : usualShortcuts) {
    if (usual.key == key) return QKeySequence(usual.keys);
  }
  return {};
}

}  // namespace

Toolbar::Toolbar(const QString& name, QWidget* parent) : QToolBar(parent) {
  setObjectName(name);
  setMovable(false);
  setFloatable(false);
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setIconSize(QSize(24, 24));
  setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
}

QAction* Toolbar::addButton(const QString& key, const QString& caption, const QString& toolTip,
                            const QString& imageKey) {
  auto* action = addAction(iconFor(imageKey.isEmpty() ? key : imageKey), caption);
  action->setObjectName(key);
  action->setToolTip(toolTip);
  const auto shortcut = shortcutOf(key);
  const auto present = actions();
  const bool taken = std::any_of(present.begin(), present.end(), [&](const QAction* other) {
    return !shortcut.isEmpty() && other->shortcut() == shortcut;
  });
  if (!taken) action->setShortcut(shortcut);
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  for (auto* button : findChildren<QToolButton*>()) button->setFocusPolicy(Qt::NoFocus);
  connect(action, &QAction::triggered, this, [this, key] { emit buttonClick(key); });
  lendShortcuts();
  return action;
}

QAction* Toolbar::button(const QString& key) const {
  for (auto* action : actions()) {
    if (action->objectName() == key) return action;
  }
  return nullptr;
}

void Toolbar::setButtonEnabled(const QString& key, bool enabled) {
  if (auto* action = button(key)) action->setEnabled(enabled);
}

bool Toolbar::event(QEvent* event) {
  if (event->type() == QEvent::Show || event->type() == QEvent::ParentChange) lendShortcuts();
  return QToolBar::event(event);
}

/// A shortcut listens where its action stands, so the actions stand at the form, too.
void Toolbar::lendShortcuts() {
  QWidget* host = parentWidget();
  while (host != nullptr && qobject_cast<Form*>(host) == nullptr && !host->isWindow()) {
    host = host->parentWidget();
  }
  if (host == nullptr) return;
  for (auto* action : actions()) {
    if (!action->shortcut().isEmpty() && !host->actions().contains(action)) host->addAction(action);
  }
}

}  // namespace qinghe
