#pragma once

#include <QObject>
#include <QStringList>

/// What the window thread has made since this object was made, and has not destroyed: its widgets,
/// its sockets, and whatever has a timer running. One at a time.
class LiveObjects {
 public:
  LiveObjects();
  ~LiveObjects();
  LiveObjects(const LiveObjects&) = delete;
  LiveObjects& operator=(const LiveObjects&) = delete;

  /// One line an object, with its class and name and those it belongs to; sorted.
  QStringList leftOver() const;
  /// Whether nothing of it is left, waiting for that with events running.
  bool becomesEmpty() const;
};
