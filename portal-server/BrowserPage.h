#pragma once

#include <string>
#include <string_view>

#include "PortalRequest.h"

namespace qinghe::portal_server {

/// A whole page for a browser, written piece by piece, in UTF-8 until it leaves.
///
/// Texts are stored texts: they keep their own entities and line breaks, and no other markup.
class BrowserPage {
 public:
  explicit BrowserPage(std::string_view title);

  /// An element with a text; `kind` is its class, one of the style sheet's own.
  BrowserPage& element(std::string_view tag, std::string_view text, std::string_view kind = {});
  BrowserPage& link(std::string_view address, std::string_view text, std::string_view kind = {});
  /// Markup of our own, as it stands.
  BrowserPage& raw(std::string_view html);

  PortalAnswer finish(unsigned status = 200) &&;

 private:
  std::string html_;
};

}  // namespace qinghe::portal_server
