#pragma once

#include <QString>

namespace qinghe {

/// Encodes a field's value for a URL or a body: first "<", ">" and CR LF become "&lt;", "&gt;" and
/// "<br>" in the value itself (written back), then every byte of it in the code page becomes "%"
/// and its hexadecimal value in capitals without a leading zero ("%41", "%9").
QString UrlEncodeField(QString& value);

/// The same for a value that nobody keeps, or that must stay as it is.
QString UrlEncodeField(QString&& value);
QString UrlEncodeField(const QString& value);

}  // namespace qinghe
