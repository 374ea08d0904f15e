#include "Tour.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <cstdio>

#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {
constexpr int tickLength = 50;         // milliseconds
constexpr int settlingTicks = 2;       // until the focus stands where a step brought it
constexpr int paintingTicks = 6;       // until the windows have painted what a step did
constexpr qint64 stepLimit = 120'000;  // milliseconds
}  // namespace

Tour::Tour(QList<TourStep> steps, const QString& files) : steps_(std::move(steps)), files_(files) {
  // One shot each: a repeating timer does not fire inside the event loop that a step may run.
  timer_.setSingleShot(true);
  timer_.setInterval(tickLength);
  connect(&timer_, &QTimer::timeout, this, &Tour::tick);
}

void Tour::start() {
  waiting_.start();
  timer_.start();
}

void Tour::tick() {
  if (next_ >= steps_.size()) return;
  timer_.start();
  const TourStep& step = steps_[next_];
  // While the portal is read a user's hands are tied, too.
  if (app().forms.gate.isHeld() || !step.ready()) {
    settling_ = 0;
    if (waiting_.elapsed() > stepLimit) fail();
    return;
  }
  if (++settling_ < (takesPictures_ ? paintingTicks : settlingTicks)) return;
  if (takesPictures_) takePicture();
  settling_ = 0;
  ++next_;
  waiting_.restart();
  if (step.act) step.act();
}

void Tour::takePicture() const {
  const QString number = u"%1"_s.arg(next_ + 1, 2, 10, QChar(u'0'));
  const QString file = files_ + number + u'-' + steps_[next_].name + u".png"_s;
  QGuiApplication::primaryScreen()->grabWindow(0).save(file);
}

void Tour::fail() {
  failed_ = true;
  timer_.stop();
  takePicture();
  std::fprintf(stderr, "the tour stuck at step %d, %s\n", static_cast<int>(next_ + 1),
               qPrintable(steps_[next_].name));
  QCoreApplication::exit(1);
}

}  // namespace qinghe
