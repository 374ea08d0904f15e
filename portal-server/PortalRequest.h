#pragma once

#include <string>
#include <string_view>

#include "Parameters.h"

namespace qinghe::portal_server {

/// A request for one of the portal's pages, apart from how it travelled.
struct PortalRequest {
  std::string path;  ///< lower case, without the leading "/"
  Parameters parameters;
  std::string address;  ///< of the asking client
  std::string host;     ///< lower case, as the client named the portal; empty if it did not
};

/// What a page answers.
struct PortalAnswer {
  unsigned status = 200;
  std::string body = {};  ///< code page bytes
  std::string note = {};  ///< for the log
  bool loginRefused = false;
  bool forBrowser = false;  ///< shown by a browser, not read by the client
};

/// A request target as it stood in a request line or in the relay's parameter.
struct RequestTarget {
  std::string host;  ///< lower case, empty for a plain path
  std::string path;  ///< lower case, without the leading "/"
  std::string_view query;
};

/// Takes a target apart: up to its first blank, with or without scheme and host.
RequestTarget parseTarget(std::string_view target);

}  // namespace qinghe::portal_server
