#pragma once

#include <QNetworkProxy>
#include <QString>
#include <QUrl>

namespace qinghe {

/// The address that a typed text means: "http://" is put before one without a scheme. Invalid for
/// what no browser is to open.
QUrl pageAddress(const QString& typed);

/// Whether a text stands for a blank page.
bool isBlankPage(const QString& typed);

/// Whether two addresses have the same scheme, host and port, a default port counting as named.
bool isSameHost(const QUrl& one, const QUrl& other);

/// Whether a page may have what lies there at all: the web, and what the page itself made.
bool isOpenToPages(const QUrl& address);

/// The proxy for a page, by the program's own settings as `proxiesFor` takes them.
QNetworkProxy pageProxy(qint16 accessType, const QString& list, const QUrl& address);

}  // namespace qinghe
