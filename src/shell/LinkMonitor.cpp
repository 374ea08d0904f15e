#include "shell/LinkMonitor.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <QFile>
#include <memory>

#include "shell/default_route.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

using Addresses = std::unique_ptr<ifaddrs, decltype(&freeifaddrs)>;

// Asked directly, because only here a failure can be told from a machine without links.
Addresses readAddresses() {
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) != 0) first = nullptr;
  return {first, &freeifaddrs};
}

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Every running link gives itself an IPv6 address of its own; that one says nothing.
bool isAddressOfUse(const sockaddr* address) {
  if (address == nullptr) return false;
  if (address->sa_family == AF_INET) return true;
  if (address->sa_family != AF_INET6) return false;
  const auto* ipv6 = reinterpret_cast<const sockaddr_in6*>(address);
  return !IN6_IS_ADDR_LINKLOCAL(&ipv6->sin6_addr);
}

}  // namespace

std::optional<QStringList> NetworkLinks::enumerate() {
  const Addresses addresses = readAddresses();
  if (!addresses) return std::nullopt;
  QStringList links;
  for (const ifaddrs* entry = addresses.get(); entry != nullptr; entry = entry->ifa_next) {
    const QString name = QString::fromUtf8(entry->ifa_name);
    if ((entry->ifa_flags & IFF_LOOPBACK) == 0 && !links.contains(name)) links << name;
  }
  return withDefaultRouteFirst(links, defaultRouteLinks(contentOf(u"/proc/net/route"_s),
                                                        contentOf(u"/proc/net/ipv6_route"_s)));
}

bool NetworkLinks::isConnected(const QString& entry) {
  if (entry.isEmpty()) return false;
  constexpr unsigned wanted = IFF_UP | IFF_RUNNING;
  const Addresses addresses = readAddresses();
  for (const ifaddrs* link = addresses.get(); link != nullptr; link = link->ifa_next)
    if (QString::fromUtf8(link->ifa_name) == entry &&
        (link->ifa_flags & (wanted | IFF_LOOPBACK)) == wanted && isAddressOfUse(link->ifa_addr))
      return true;
  return false;
}

}  // namespace qinghe
