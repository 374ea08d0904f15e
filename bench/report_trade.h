#pragma once

#include <QString>
#include <cstdint>

struct sqlite3;
struct sqlite3_stmt;

/// A bare handle of a local file, closed with the object; failures throw `std::runtime_error`.
class BareStore {
 public:
  explicit BareStore(const QString& path);
  ~BareStore();
  BareStore(const BareStore&) = delete;
  BareStore& operator=(const BareStore&) = delete;

  void exec(const char* sql);
  sqlite3_stmt* prepare(const char* sql);

 private:
  sqlite3* handle_ = nullptr;
};

/// Makes a local file at `path` in which company 25 is the customer of orders of ten lines each, of
/// goods of ten suppliers in fifty categories over two years; one line in twenty is a return.
void makeTrade(const QString& path, int lines);
