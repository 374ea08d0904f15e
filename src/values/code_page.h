#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace qinghe {

/// The system's multi-byte code page, GBK. What does not fit it becomes "?".
QByteArray toCodePage(QStringView text);

/// Text from code page bytes; invalid bytes become U+FFFD, one for each.
QString fromCodePage(QByteArrayView bytes);

}  // namespace qinghe
