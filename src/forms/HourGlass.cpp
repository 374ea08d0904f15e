#include "forms/HourGlass.h"

#include <QCursor>
#include <QGuiApplication>

namespace qinghe {

HourGlass::HourGlass() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

HourGlass::~HourGlass() {
  QGuiApplication::restoreOverrideCursor();
}

}  // namespace qinghe
