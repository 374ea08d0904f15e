#pragma once

#include <QList>
#include <QString>

namespace qinghe {

/// An address that answers nothing: connecting to it goes on and on. Its queue of connections that
/// wait to be taken is full, and nobody takes any.
class SilentAddress {
 public:
  explicit SilentAddress(int port, const QString& host = QStringLiteral("127.0.0.2"));
  ~SilentAddress();
  SilentAddress(const SilentAddress&) = delete;
  SilentAddress& operator=(const SilentAddress&) = delete;

 private:
  QList<int> descriptors_;
};

}  // namespace qinghe
