#pragma once

#include <QByteArray>
#include <QStringList>

namespace qinghe {

/// The links that carry a default route by the kernel's tables (the texts of `/proc/net/route` and
/// `/proc/net/ipv6_route`), the preferred one first, IPv4 before IPv6, each link once. Lines that
/// cannot be read are passed over.
QStringList defaultRouteLinks(const QByteArray& routes, const QByteArray& ipv6Routes);

/// `links` with those that carry a default route moved to the front, in that order.
QStringList withDefaultRouteFirst(const QStringList& links, const QStringList& defaultLinks);

}  // namespace qinghe
