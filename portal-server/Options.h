#pragma once

#include <optional>
#include <string>
#include <vector>

#include "HouseRules.h"

namespace qinghe::portal_server {

/// What the command line asks for.
struct Options {
  std::string address = "127.0.0.1";
  unsigned short port = 8180;
  std::string database = "portal.db";
  std::string log;  ///< empty: the standard output
  HouseRules rules;
  bool demo = false;
  bool help = false;
};

/// Reads the arguments behind the program's name. On failure nothing, with the reason in `error`.
std::optional<Options> parseOptions(const std::vector<std::string>& arguments, std::string& error);

std::string usage();

}  // namespace qinghe::portal_server
