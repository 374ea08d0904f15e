#pragma once

#include <QString>
#include <QStringList>

namespace qinghe {

/// The entries of a proxy setting ("HTTP=a:80 HTTP=b:80"). What stands before the first "HTTP=" is
/// left out, and so is the one character before each further one. A text without "HTTP=" is one
/// entry that lacks its first four characters; the empty text is one empty entry. "HTTP=" counts in
/// capitals only.
QStringList SplitProxyList(const QString& text);

/// The setting of these entries: "HTTP=" before each, one blank between two. Empty for none.
QString JoinProxyList(const QStringList& entries);

}  // namespace qinghe
