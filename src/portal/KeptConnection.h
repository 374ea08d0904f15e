#pragma once

#include <curl/curl.h>

#include <memory>

namespace qinghe {

/// The curl handles that requests run on one after the other, so that the connection is kept.
/// One thread at a time; only `curl_multi_wakeup` may be called beside it.
class KeptConnection {
 public:
  /// Throws `TransferError` when curl cannot be set up.
  KeptConnection();

  CURL* easy() const { return easy_.get(); }
  CURLM* multi() const { return multi_.get(); }

 private:
  struct Deleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
  };
  struct MultiDeleter {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
  };
  std::unique_ptr<CURLM, MultiDeleter> multi_;
  std::unique_ptr<CURL, Deleter> easy_;  // goes before the multi handle that it stands in
};

}  // namespace qinghe
