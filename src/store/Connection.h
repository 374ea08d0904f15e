#pragma once

#include <QString>
#include <memory>

namespace qinghe {

/// An open local database file with the functions and the authorizer that commands need.
///
/// Never creates a file: the open probes with a read. Throws `StoreError`, with the number
/// `cannotOpen` when the file is missing or cannot be opened, another one when it is no database or
/// is busy.
class Connection {
 public:
  explicit Connection(const QString& path);
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
