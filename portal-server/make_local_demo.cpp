// Writes the statements for one demo enterprise's local database: make_local_demo NUMBER FILE.

#include <exception>
#include <fstream>
#include <iostream>

#include "local_demo.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: make_local_demo NUMBER FILE\n";
    return 2;
  }
  try {
    std::ofstream file(argv[2], std::ios::binary | std::ios::trunc);
    file << qinghe::portal_server::localDemoSql(argv[1]);
    return file.good() ? 0 : 1;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
