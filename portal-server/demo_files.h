#pragma once

#include <string_view>
#include <vector>

namespace qinghe::portal_server {

struct DemoFile {
  std::string_view name;  ///< the file's name; mostly that of the stored table
  std::string_view text;
};

/// The files of `data/demo/`, as they stood when the program was built.
std::vector<DemoFile> demoFiles();

}  // namespace qinghe::portal_server
