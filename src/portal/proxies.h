#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include "portal/WireUrl.h"

namespace qinghe {

/// The proxies to try in turn for a URL, in curl's form; an empty entry stands for no proxy. There
/// is always at least one.
///
/// `accessType` 0 takes the system's settings, which on Linux are the environment's http_proxy,
/// https_proxy, all_proxy and no_proxy; 2 takes `list`, entries "HTTP=host:port" with blanks
/// between them, direct when it names none; anything else is direct.
QList<QByteArray> proxiesFor(qint16 accessType, const QString& list, const WireUrl& url);

/// Whether a request for `url` through `proxy` names the whole URL in its first line.
bool takesAbsoluteTarget(const QByteArray& proxy, const WireUrl& url);

/// Whether `host` is one of those that no_proxy lists: "*", a name, which stands for its
/// subdomains too, an address or a range of addresses as 10.0.0.0/8.
bool isExempt(QByteArrayView host, QByteArrayView noProxy);

}  // namespace qinghe
