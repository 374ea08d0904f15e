#include "portal/WireUrl.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>

namespace qinghe {

namespace {

bool isControl(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code < 0x20 || code == 0x7F;
}

QByteArray escapeControls(QByteArrayView text) {
  if (std::none_of(text.begin(), text.end(), isControl)) return text.toByteArray();
  QByteArray escaped;
  escaped.reserve(text.size());
  for (const char byte : text) {
    if (isControl(byte))
      escaped += '%' + QByteArray(1, byte).toHex().toUpper();
    else
      escaped += byte;
  }
  return escaped;
}

/// The host alone: "[::1]:80" gives "::1".
QByteArray hostOf(QByteArrayView hostAndPort) {
  if (hostAndPort.startsWith('[')) {
    const auto bracket = hostAndPort.indexOf(']');
    return bracket < 0 ? QByteArray() : hostAndPort.first(bracket).sliced(1).toByteArray();
  }
  const auto colon = hostAndPort.indexOf(':');
  return (colon < 0 ? hostAndPort : hostAndPort.first(colon)).toByteArray();
}

struct UrlDeleter {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};

}  // namespace

std::optional<WireUrl> WireUrl::parse(QByteArrayView url) {
  if (const auto fragment = url.indexOf('#'); fragment >= 0) url = url.first(fragment);
  const auto mark = url.indexOf("://");
  if (mark < 0) return {};
  const auto written = url.first(mark).toByteArray();
  const auto rest = url.sliced(mark + 3);
  const auto pathStart =
      std::find_if(rest.begin(), rest.end(), [](char byte) { return byte == '/' || byte == '?'; });
  const auto authority = rest.first(pathStart - rest.begin());
  const auto unsafe = [](char byte) { return isControl(byte) || byte == ' '; };

  WireUrl wire;
  wire.scheme = written.toLower();
  const auto hostAndPort = authority.sliced(authority.lastIndexOf('@') + 1);
  wire.host = hostOf(hostAndPort);
  if ((wire.scheme != "http" && wire.scheme != "https") || wire.host.isEmpty() ||
      std::any_of(authority.begin(), authority.end(), unsafe))
    return {};
  wire.origin = wire.scheme + "://" + authority.toByteArray();
  wire.target = escapeControls(rest.sliced(authority.size()));
  if (!wire.target.startsWith('/')) wire.target.prepend('/');
  // The user's name and password are for the host alone; curl sends them in a header.
  wire.absolute = written + "://" + hostAndPort.toByteArray() + wire.target;
  return wire;
}

std::optional<WireUrl> WireUrl::resolved(const QByteArray& location) const {
  constexpr unsigned flags = CURLU_URLENCODE | CURLU_ALLOW_SPACE | CURLU_NON_SUPPORT_SCHEME;
  const std::unique_ptr<CURLU, UrlDeleter> url(curl_url());
  const auto query = target.indexOf('?');
  const auto base = origin + (query < 0 ? target : target.first(query));
  char* text = nullptr;
  if (!url || curl_url_set(url.get(), CURLUPART_URL, base.constData(), flags) != CURLUE_OK ||
      curl_url_set(url.get(), CURLUPART_URL, location.constData(), flags) != CURLUE_OK ||
      curl_url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK)
    return {};
  const std::unique_ptr<char, decltype(&curl_free)> owned(text, &curl_free);
  return parse(QByteArrayView(text));
}

}  // namespace qinghe
