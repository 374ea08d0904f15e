#include "resources/resources.h"

#include <QtGlobal>

// The macro declares a function of the global namespace, so it cannot stand inside ours.
static void initIcons() {
  Q_INIT_RESOURCE(icons);
}

void qinghe::initResources() {
  initIcons();
}
