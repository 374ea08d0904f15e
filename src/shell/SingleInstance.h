#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

namespace qinghe {

/// Holds the place of the one running program of a user in a program directory.
class SingleInstance {
 public:
  explicit SingleInstance(const QString& programDirectory);
  /// False when another running program holds it.
  bool isFirst() const { return first_; }

 private:
  std::unique_ptr<QLockFile> lock_;
  bool first_ = false;
};

}  // namespace qinghe
