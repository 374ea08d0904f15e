#pragma once

#include <QString>

namespace qinghe {

/// A second, independent fetch: direct, with the agent name "vb wininet", read in small blocks.
class GetHttp {
 public:
  /// The page's text; empty when it cannot be opened.
  QString GetUrl(const QString& url);
};

}  // namespace qinghe
