#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

std::string readAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  if (!in || text.fail()) throw std::runtime_error("cannot read " + path.string());
  return text.str();
}

void apply(SQLite::Database& database, const std::filesystem::path& script) {
  try {
    database.exec(readAll(script));
  } catch (const SQLite::Exception& error) {
    throw std::runtime_error(script.string() + ": " + error.what());
  }
}

// Made beside its place and moved there when whole, so that a run that fails leaves no half file.
void make(const std::filesystem::path& target, char** scripts, int count) {
  const std::filesystem::path draft = target.string() + ".new";
  std::filesystem::remove(draft);
  {
    SQLite::Database database(draft.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    for (int i = 0; i < count; ++i) apply(database, scripts[i]);
  }
  std::filesystem::rename(draft, target);
}

}  // namespace

/// qinghe-mkdata FILE SCRIPT...: makes the database FILE by running the SQL scripts in turn,
/// replacing what was there.
int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: qinghe-mkdata FILE SCRIPT.sql...\n");
    return 2;
  }
  try {
    make(argv[1], argv + 2, argc - 2);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "qinghe-mkdata: %s\n", error.what());
    return 1;
  }
  return 0;
}
