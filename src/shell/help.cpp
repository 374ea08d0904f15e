#include "shell/help.h"

#include <QAction>

#include "forms/Form.h"
#include "forms/Toolbar.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

void showHelp() {
  if (app().openHelp) app().openHelp();
}

void giveHelpKey(Form& form, Toolbar& bar) {
  auto* key = new QAction(&form);
  key->setObjectName(u"Help"_s);
  key->setShortcut(QKeySequence(Qt::Key_F1));
  key->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(key, &QAction::triggered, &bar, [&bar] { emit bar.buttonClick(u"Help"_s); });
  form.addAction(key);
}

}  // namespace qinghe
