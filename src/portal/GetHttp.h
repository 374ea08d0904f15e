#pragma once

#include <QString>

namespace qinghe {

/// A second, independent fetch: direct, with the agent name "vb wininet", read in small blocks.
class GetHttp {
 public:
  /// The page's text; empty when it cannot be opened or read whole. Blocks the caller, with no
  /// painting meanwhile. Each block of 256 bytes becomes text by itself, so a two-byte character
  /// on the border of two blocks is lost.
  QString GetUrl(const QString& url);
};

}  // namespace qinghe
