#pragma once

#include "SqliteConnection.h"

namespace qinghe::portal_server {

/// The store in one SQLite file, made and brought up to the table of tables when it is opened.
class SqliteStore final : public Store {
 public:
  explicit SqliteStore(const std::string& path);

  StoreReader& reader() override { return reading_; }
  void transact(const std::function<void(StoreWriter&)>& work) override;

 private:
  SqliteConnection writing_;
  SqliteConnection reading_;
};

}  // namespace qinghe::portal_server
