#include "ForeignPage.h"

#include <curl/curl.h>
#include <sys/socket.h>

#include <algorithm>
#include <boost/asio/ip/address.hpp>
#include <cstring>
#include <memory>
#include <mutex>
#include <string_view>

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

using Endpoint = boost::asio::ip::tcp::endpoint;

constexpr std::size_t mostHeaders = 256U << 10U;
constexpr std::size_t longestCharset = 40;

struct Fetch {
  const ForeignLimits& limits;
  const MayConnect& mayConnect;
  const std::atomic<bool>& stop;
  ForeignPage page;
  std::size_t headers = 0;
  bool refused = false;  // a place that must not be connected to
  bool tooLarge = false;
};

struct CloseEasy {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct CloseUrl {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};

std::size_t onBody(char* data, std::size_t size, std::size_t count, void* self) {
  auto& fetch = *static_cast<Fetch*>(self);
  const std::size_t length = size * count;
  if (length > fetch.limits.size - fetch.page.body.size()) {
    fetch.tooLarge = true;
    return 0;
  }
  fetch.page.body.append(data, length);
  return length;
}

std::size_t onHeader(char*, std::size_t size, std::size_t count, void* self) {
  auto& fetch = *static_cast<Fetch*>(self);
  fetch.headers += size * count;
  fetch.tooLarge = fetch.tooLarge || fetch.headers > mostHeaders;
  return fetch.tooLarge ? 0 : size * count;
}

int onProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  return static_cast<Fetch*>(self)->stop ? 1 : 0;
}

// What is checked here is what is connected to: a name that leads somewhere else the next time it
// is looked up gains nothing by it.
curl_socket_t openSocket(void* self, curlsocktype, curl_sockaddr* address) {
  auto& fetch = *static_cast<Fetch*>(self);
  Endpoint place;
  const bool known = address->family == AF_INET || address->family == AF_INET6;
  if (known && address->addrlen <= place.capacity()) {
    std::memcpy(place.data(), &address->addr, address->addrlen);
    place.resize(address->addrlen);
    if (fetch.mayConnect(place)) {
      return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    }
  }
  fetch.refused = true;
  return CURL_SOCKET_BAD;
}

/// The charset of a content type, if it looks like the name of one.
std::string charsetOf(std::string_view contentType) {
  const std::string type = lowered(contentType);
  const std::size_t at = type.find("charset=");
  if (at == std::string::npos) return {};
  std::string name = type.substr(at + std::strlen("charset="));
  if (name.starts_with('"') || name.starts_with('\'')) name.erase(0, 1);
  const auto belongs = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("-_.:").find(c) != std::string_view::npos;
  };
  name.erase(std::find_if_not(name.begin(), name.end(), belongs), name.end());
  return name.size() <= longestCharset ? name : std::string();
}

void prepare(CURL* easy, CURLU* url, Fetch& fetch) {
  curl_easy_setopt(easy, CURLOPT_CURLU, url);
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy, CURLOPT_MAXREDIRS, fetch.limits.redirects);
  curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(fetch.limits.time.count()));
  curl_easy_setopt(easy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(fetch.limits.size));
  // A proxy would connect on our behalf to places that nobody has checked.
  curl_easy_setopt(easy, CURLOPT_PROXY, "");
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  // A name server that does not answer must not hold up the end.
  curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
  curl_easy_setopt(easy, CURLOPT_USERAGENT, "qinghe-portal");
  curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");
  curl_easy_setopt(easy, CURLOPT_OPENSOCKETFUNCTION, &openSocket);
  curl_easy_setopt(easy, CURLOPT_OPENSOCKETDATA, &fetch);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &onBody);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, &fetch);
  curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &onHeader);
  curl_easy_setopt(easy, CURLOPT_HEADERDATA, &fetch);
  curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &onProgress);
  curl_easy_setopt(easy, CURLOPT_XFERINFODATA, &fetch);
  curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
}

std::string reasonOf(const Fetch& fetch, CURLcode result) {
  if (fetch.tooLarge || result == CURLE_FILESIZE_EXCEEDED) return "too large";
  if (fetch.refused) return "an address that is not allowed";
  return curl_easy_strerror(result);
}

}  // namespace

ForeignPage fetchForeignPage(const std::string& url, const ForeignLimits& limits,
                             const MayConnect& mayConnect, const std::atomic<bool>& stop) {
  static std::once_flag once;
  std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });

  Fetch fetch{.limits = limits, .mayConnect = mayConnect, .stop = stop, .page = {}};
  const std::unique_ptr<CURL, CloseEasy> easy(curl_easy_init());
  const std::unique_ptr<CURLU, CloseUrl> parsed(curl_url());
  // Chinese in a path or query goes out escaped.
  if (!easy || !parsed ||
      curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), CURLU_URLENCODE | CURLU_ALLOW_SPACE) !=
          CURLUE_OK) {
    fetch.page.failure = "not an address";
    return std::move(fetch.page);
  }
  prepare(easy.get(), parsed.get(), fetch);
  const CURLcode result = curl_easy_perform(easy.get());
  if (result != CURLE_OK) {
    fetch.page.body.clear();
    fetch.page.failure = reasonOf(fetch, result);
    return std::move(fetch.page);
  }
  const char* type = nullptr;
  curl_easy_getinfo(easy.get(), CURLINFO_CONTENT_TYPE, &type);
  curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &fetch.page.status);
  if (type != nullptr) fetch.page.charset = charsetOf(type);
  return std::move(fetch.page);
}

}  // namespace qinghe::portal_server
