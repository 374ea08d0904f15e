#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QTimer>
#include <functional>

namespace qinghe {

/// One step of the tour: when `ready` is true, `act` is done and, once the windows have settled, a
/// picture is taken under the step's number and name.
struct TourStep {
  QString name;
  std::function<bool()> ready;
  std::function<void()> act = {};
};

/// Walks through the steps from the event loop, so that modal windows do not stop it. A step that
/// is not ready within its limit ends the program with 1 and says which it was.
class Tour : public QObject {
  Q_OBJECT

 public:
  /// The pictures' paths begin with `files`.
  Tour(QList<TourStep> steps, const QString& files);
  /// Without pictures it need not wait until windows have painted, and hurries.
  void setTakesPictures(bool takes) { takesPictures_ = takes; }
  void start();
  bool isFailed() const { return failed_; }

 private:
  void tick();
  void fail();
  void takePicture() const;

  QList<TourStep> steps_;
  QString files_;
  QTimer timer_;
  QElapsedTimer waiting_;
  qsizetype next_ = 0;
  int settling_ = 0;
  bool takesPictures_ = true;
  bool failed_ = false;
};

}  // namespace qinghe
