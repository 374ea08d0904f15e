#include "portal/proxies.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <optional>

#include "values/code_page.h"

namespace qinghe {

namespace {

struct Address {
  std::array<unsigned char, 16> bytes{};
  int bits = 0;  ///< 32 or 128
};

std::optional<Address> readAddress(const QByteArray& text) {
  Address address;
  if (::inet_pton(AF_INET, text.constData(), address.bytes.data()) == 1) {
    address.bits = 32;
    return address;
  }
  if (::inet_pton(AF_INET6, text.constData(), address.bytes.data()) == 1) {
    address.bits = 128;
    return address;
  }
  return {};
}

bool isInRange(const Address& address, QByteArray range) {
  int bits = address.bits;
  if (const auto slash = range.indexOf('/'); slash >= 0) {
    bool number = false;
    bits = range.sliced(slash + 1).toInt(&number);
    if (!number || bits < 0 || bits > address.bits) return false;
    range.truncate(slash);
  }
  if (range.startsWith('[') && range.endsWith(']')) range = range.sliced(1).chopped(1);
  const auto start = readAddress(range);
  if (!start || start->bits != address.bits) return false;
  const auto whole = static_cast<size_t>(bits / 8);
  if (std::memcmp(start->bytes.data(), address.bytes.data(), whole) != 0) return false;
  if (bits % 8 == 0) return true;
  const auto difference = start->bytes[whole] ^ address.bytes[whole];
  return (difference >> (8 - bits % 8)) == 0;
}

QList<QByteArray> entriesOf(QByteArray list, char otherSeparator) {
  auto entries = list.replace(otherSeparator, ' ').simplified().split(' ');
  entries.removeAll(QByteArray());
  return entries;
}

QByteArray firstSet(std::initializer_list<const char*> names) {
  for (const char* name : names) {
    if (auto value = qgetenv(name); !value.isEmpty()) return value;
  }
  return {};
}

/// HTTP_PROXY in capitals is not read: under CGI a client can set it by a header.
QByteArray systemProxy(const WireUrl& url) {
  if (isExempt(url.host, firstSet({"no_proxy", "NO_PROXY"}))) return {};
  auto proxy =
      url.scheme == "https" ? firstSet({"https_proxy", "HTTPS_PROXY"}) : firstSet({"http_proxy"});
  return proxy.isEmpty() ? firstSet({"all_proxy", "ALL_PROXY"}) : proxy;
}

/// An entry of the list in curl's form. What is no host and port stays unusable, so that it can
/// choose no other kind of proxy and bring no byte of its own into a request.
QByteArray namedProxy(QByteArray entry) {
  if (entry.toLower().startsWith("http://")) entry.remove(0, 7);
  const auto unfit = [](char byte) {
    return !std::isalnum(static_cast<unsigned char>(byte)) &&
           !QByteArrayView(".-_:[]").contains(byte);
  };
  if (std::any_of(entry.cbegin(), entry.cend(), unfit)) return "http://[]";
  const auto hasPort = entry.lastIndexOf(':') > entry.lastIndexOf(']');
  return "http://" + entry + (hasPort ? "" : ":80");
}

QList<QByteArray> namedProxies(const QString& list) {
  QList<QByteArray> proxies;
  for (auto entry : entriesOf(toCodePage(list), ';')) {
    const auto equals = entry.indexOf('=');
    const auto protocol = entry.first(std::max<qsizetype>(equals, 0)).toLower();
    if (!protocol.isEmpty() && protocol != "http") continue;
    entry.remove(0, equals + 1);
    if (!entry.isEmpty()) proxies.append(namedProxy(entry));
  }
  return proxies;
}

}  // namespace

bool isExempt(QByteArrayView host, QByteArrayView noProxy) {
  if (noProxy.trimmed() == "*") return true;
  auto name = host.toByteArray().toLower();
  while (name.endsWith('.')) name.chop(1);
  const auto address = readAddress(name);
  for (auto entry : entriesOf(noProxy.toByteArray().toLower(), ',')) {
    if (address) {
      if (isInRange(*address, entry)) return true;
      continue;
    }
    while (entry.startsWith('.')) entry.remove(0, 1);
    while (entry.endsWith('.')) entry.chop(1);
    if (!entry.isEmpty() && (name == entry || name.endsWith('.' + entry))) return true;
  }
  return false;
}

QList<QByteArray> proxiesFor(qint16 accessType, const QString& list, const WireUrl& url) {
  if (accessType == 0) return {systemProxy(url)};
  auto proxies = accessType == 2 ? namedProxies(list) : QList<QByteArray>();
  if (proxies.isEmpty()) proxies.append(QByteArray());
  return proxies;
}

bool takesAbsoluteTarget(const QByteArray& proxy, const WireUrl& url) {
  if (proxy.isEmpty() || url.scheme != "http") return false;  // https goes through a tunnel
  const auto scheme = proxy.first(std::max<qsizetype>(proxy.indexOf("://"), 0)).toLower();
  return scheme.isEmpty() || scheme == "http" || scheme == "https";
}

}  // namespace qinghe
