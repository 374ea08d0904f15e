#include "portal/KeptConnection.h"

#include "portal/TransferError.h"

using namespace Qt::StringLiterals;

namespace qinghe {

KeptConnection::KeptConnection() {
  static const auto initialised = curl_global_init(CURL_GLOBAL_DEFAULT);
  multi_.reset(curl_multi_init());
  easy_.reset(curl_easy_init());
  if (initialised != CURLE_OK || !multi_ || !easy_) throw TransferError(u"no transfer library"_s);

  curl_multi_setopt(multi(), CURLMOPT_MAXCONNECTS, 1L);
  curl_multi_setopt(multi(), CURLMOPT_PIPELINING, CURLPIPE_NOTHING);
  curl_easy_setopt(easy(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy(), CURLOPT_QUICK_EXIT, 1L);  // ending does not wait for a name look-up
  curl_easy_setopt(easy(), CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  curl_easy_setopt(easy(), CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy(), CURLOPT_NOPROXY, "");  // who is exempt has been settled before
}

}  // namespace qinghe
