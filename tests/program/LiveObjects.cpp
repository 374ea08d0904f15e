#include "LiveObjects.h"

#include <private/qhooks_p.h>
#include <QAbstractEventDispatcher>
#include <QAbstractSocket>
#include <QSet>
#include <QTcpServer>
#include <QTest>
#include <QThread>
#include <QWidget>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

std::mutex mutex;
QSet<QObject*> live;
Qt::HANDLE watched = nullptr;

// Called from the constructor and destructor of every object, in its own thread.
void added(QObject* object) {
  if (QThread::currentThreadId() != watched) return;
  const std::lock_guard lock(mutex);
  live.insert(object);
}
void removed(QObject* object) {
  const std::lock_guard lock(mutex);
  live.remove(object);
}

QString described(const QObject* object) {
  QString line = QString::fromLatin1(object->metaObject()->className());
  if (!object->objectName().isEmpty()) line += u" \""_s + object->objectName() + u'"';
  if (object->parent() != nullptr) line += u" of "_s + described(object->parent());
  return line;
}

bool counts(QObject* object) {
  if (object->isWidgetType()) return true;
  if (qobject_cast<QAbstractSocket*>(object) || qobject_cast<QTcpServer*>(object)) return true;
  return !QAbstractEventDispatcher::instance()->registeredTimers(object).isEmpty();
}

}  // namespace

LiveObjects::LiveObjects() {
  watched = QThread::currentThreadId();
  qtHookData[QHooks::AddQObject] = reinterpret_cast<quintptr>(&added);
  qtHookData[QHooks::RemoveQObject] = reinterpret_cast<quintptr>(&removed);
}

LiveObjects::~LiveObjects() {
  qtHookData[QHooks::AddQObject] = 0;
  qtHookData[QHooks::RemoveQObject] = 0;
  const std::lock_guard lock(mutex);
  live.clear();
}

QStringList LiveObjects::leftOver() const {
  QStringList lines;
  // An object that another thread destroys meanwhile waits in its destructor.
  const std::lock_guard lock(mutex);
  for (QObject* object : std::as_const(live)) {
    if (counts(object)) lines.append(described(object));
  }
  lines.sort();
  return lines;
}

bool LiveObjects::becomesEmpty() const {
  return QTest::qWaitFor([this] { return leftOver().isEmpty(); }, 60'000);
}
