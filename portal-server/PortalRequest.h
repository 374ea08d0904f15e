#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Parameters.h"
#include "picture_codec.h"

namespace qinghe::portal_server {

/// A request for one of the portal's pages, apart from how it travelled.
struct PortalRequest {
  std::string path;  ///< lower case, without the leading "/"
  Parameters parameters;
  std::string address;      ///< of the asking client
  std::string host;         ///< lower case, as the client named the portal; empty if it did not
  bool posted = false;      ///< came as a POST
  std::string origin = {};  ///< lower case, the page that a browser posted from; mostly empty
  std::string file = {};    ///< the content of the one file of a posted form
  std::optional<PictureReading> picture = {};  ///< what that file was read as
  bool byBrowser = false;                      ///< a browser asks, and not the client
};

/// What an answer means for the next attempt of that client, where attempts are slowed down.
enum class Brake : std::uint8_t { Stays, Tightens, Releases };

/// What a page answers.
struct PortalAnswer {
  unsigned status = 200;
  std::string body = {};  ///< code page bytes
  std::string note = {};  ///< for the log
  Brake brake = Brake::Stays;
  bool forBrowser = false;       ///< shown by a browser, not read by the client
  std::string contentType = {};  ///< empty: a page in the code page
  std::string location = {};     ///< where a browser is led instead, a path of this portal
  bool foreign = false;          ///< somebody else's page, in its own bytes
  bool forAll = false;           ///< whoever asks gets the same, until the store changes
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
