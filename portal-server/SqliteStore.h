#pragma once

#include <chrono>

#include "SqliteConnection.h"

namespace qinghe::portal_server {

/// The store in one SQLite file, made and brought up to the table of tables when it is opened.
class SqliteStore final : public Store {
 public:
  /// How long one statement may read.
  struct Patience {
    std::chrono::milliseconds atOnce{50};
    std::chrono::milliseconds search{5'000};
  };

  explicit SqliteStore(const std::string& path) : SqliteStore(path, Patience()) {}
  SqliteStore(const std::string& path, Patience patience);

  StoreReader& reader() override { return reading_; }
  std::uint32_t versionRead() override { return reading_.versionRead(); }
  std::uint32_t versionNow() override { return reading_.versionNow(); }
  StoreReader& patientReader() override { return searching_; }
  void transact(const std::function<void(StoreWriter&)>& work) override;

 private:
  SqliteConnection writing_;
  SqliteConnection reading_;
  SqliteConnection searching_;
};

}  // namespace qinghe::portal_server
