#pragma once

#include <QString>
#include <stdexcept>

namespace qinghe {

/// A run-time failure with the number and the words that a message box may show.
///
/// Screens catch it at the one place where a method turns a failure into a false; nothing else
/// lets it pass a screen.
class Failure : public std::runtime_error {
 public:
  Failure(int number, const QString& description);

  int number() const { return number_; }
  const QString& description() const { return description_; }

 private:
  int number_;
  QString description_;
};

/// A number that does not fit the width asked for.
class Overflow : public Failure {
 public:
  explicit Overflow(const QString& what);
};

/// A text that is not wholly of the type asked for.
class TypeMismatch : public Failure {
 public:
  explicit TypeMismatch(const QString& what);
};

/// A position or length that an operation on text cannot take.
class InvalidCall : public Failure {
 public:
  explicit InvalidCall(const QString& what);
};

}  // namespace qinghe
