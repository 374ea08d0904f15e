#include "shell/default_route.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace qinghe {

namespace {

constexpr uint routeIsUp = 0x0001;
constexpr uint routeRejects = 0x0200;

using Route = std::pair<qulonglong, QString>;  // metric and link

std::optional<Route> defaultRoute(const QList<QByteArray>& fields) {
  if (fields.size() < 8 || fields[1] != "00000000" || fields[7] != "00000000") return {};
  bool flagsRead = false;
  bool metricRead = false;
  const uint flags = fields[3].toUInt(&flagsRead, 16);
  const qulonglong metric = fields[6].toULongLong(&metricRead, 10);
  if (!flagsRead || !metricRead || (flags & routeIsUp) == 0 || (flags & routeRejects) != 0)
    return {};
  return Route(metric, QString::fromUtf8(fields[0]));
}

std::optional<Route> defaultIpv6Route(const QList<QByteArray>& fields) {
  if (fields.size() < 10 || fields[0].count('0') != 32 || fields[1] != "00") return {};
  bool flagsRead = false;
  bool metricRead = false;
  const uint flags = fields[8].toUInt(&flagsRead, 16);
  const qulonglong metric = fields[5].toULongLong(&metricRead, 16);
  if (!flagsRead || !metricRead || (flags & routeIsUp) == 0 || (flags & routeRejects) != 0)
    return {};
  return Route(metric, QString::fromUtf8(fields[9]));
}

template <class Reader>
void appendLinks(QStringList& links, const QByteArray& table, const Reader& readLine) {
  std::vector<Route> routes;
  for (const QByteArray& line : table.split('\n'))
    if (const auto route = readLine(line.simplified().split(' '))) routes.push_back(*route);
  std::ranges::stable_sort(routes, {}, &Route::first);
  for (const auto& [metric, link] : routes)
    if (!links.contains(link)) links << link;
}

}  // namespace

QStringList defaultRouteLinks(const QByteArray& routes, const QByteArray& ipv6Routes) {
  QStringList links;
  appendLinks(links, routes, defaultRoute);
  appendLinks(links, ipv6Routes, defaultIpv6Route);
  return links;
}

QStringList withDefaultRouteFirst(const QStringList& links, const QStringList& defaultLinks) {
  QStringList ordered;
  for (const QString& link : defaultLinks)
    if (links.contains(link)) ordered << link;
  for (const QString& link : links)
    if (!ordered.contains(link)) ordered << link;
  return ordered;
}

}  // namespace qinghe
