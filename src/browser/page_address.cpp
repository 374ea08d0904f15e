#include "browser/page_address.h"

#include "portal/WireUrl.h"
#include "portal/proxies.h"
#include "values/code_page.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestAddress = 8192;

bool isWeb(const QUrl& address) {
  const QString scheme = address.scheme();
  return scheme == "http"_L1 || scheme == "https"_L1 || scheme == "ws"_L1 || scheme == "wss"_L1;
}

int portOf(const QUrl& address) {
  const bool secure = address.scheme() == "https"_L1 || address.scheme() == "wss"_L1;
  return address.port(secure ? 443 : 80);
}

}  // namespace

QUrl pageAddress(const QString& typed) {
  QString text = typed.trimmed();
  if (text.isEmpty() || text.size() > longestAddress) return {};
  // "localhost:8180/x" has a host and a port, not a scheme.
  if (!text.contains("://"_L1)) text.prepend("http://"_L1);
  const QUrl address(text, QUrl::TolerantMode);
  const QString scheme = address.scheme();
  const bool known = scheme == "http"_L1 || scheme == "https"_L1 || scheme == "ftp"_L1;
  return address.isValid() && known && !address.host().isEmpty() ? address : QUrl();
}

bool isBlankPage(const QString& typed) {
  return typed.trimmed().isEmpty() ||
         typed.trimmed().compare("about:blank"_L1, Qt::CaseInsensitive) == 0;
}

bool isSameHost(const QUrl& one, const QUrl& other) {
  return one.scheme() == other.scheme() && one.host() == other.host() &&
         portOf(one) == portOf(other);
}

bool isOpenToPages(const QUrl& address) {
  const QString scheme = address.scheme();
  return isWeb(address) || scheme == "data"_L1 || scheme == "blob"_L1 || scheme == "about"_L1;
}

QNetworkProxy pageProxy(qint16 accessType, const QString& list, const QUrl& address) {
  const auto wire = WireUrl::parse(address.toEncoded());
  if (!wire) return QNetworkProxy(QNetworkProxy::NoProxy);
  QByteArray first = proxiesFor(accessType, list, *wire).constFirst();
  if (first.isEmpty()) return QNetworkProxy(QNetworkProxy::NoProxy);
  if (!first.contains("://")) first.prepend("http://");
  const QUrl proxy = QUrl::fromEncoded(first, QUrl::TolerantMode);
  const auto kind =
      proxy.scheme().startsWith("socks"_L1) ? QNetworkProxy::Socks5Proxy : QNetworkProxy::HttpProxy;
  // A host that nobody has keeps an unusable entry from going out without any proxy.
  const QString host = proxy.host().isEmpty() ? u"proxy.invalid"_s : proxy.host();
  const int usual = kind == QNetworkProxy::Socks5Proxy ? 1080 : 80;
  return {kind, host, static_cast<quint16>(proxy.port(usual)), proxy.userName(), proxy.password()};
}

}  // namespace qinghe
