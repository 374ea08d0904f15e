#pragma once

#include <QString>
#include <chrono>
#include <memory>

namespace qinghe {

/// An open local database file with the functions and the authorizer that commands need.
///
/// Never creates a file: the open probes with a read. Throws `StoreError`, with the number
/// `cannotOpen` when the file is missing or cannot be opened, another one when it is no database or
/// is busy.
class Connection {
 public:
  static constexpr std::chrono::milliseconds defaultBusyTimeout{5000};

  /// `busyTimeout` is how long a command waits for another process to leave the file.
  explicit Connection(const QString& path,
                      std::chrono::milliseconds busyTimeout = defaultBusyTimeout);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  QString path() const;

  struct Private;
  Private& internals() { return *d; }

 private:
  std::unique_ptr<Private> d;
};

}  // namespace qinghe
