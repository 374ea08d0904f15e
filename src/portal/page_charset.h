#pragma once

#include <QByteArrayView>
#include <QString>

namespace qinghe {

/// The text of a page that anybody may have made, by the charset that it declares: in a byte order
/// mark, in the "Content-Type" of the answer, or in itself, the first of these that names a charset
/// known here. Code page text where none does.
///
/// Bytes that are none of the charset's become U+FFFD.
QString declaredText(QByteArrayView page, QByteArrayView contentType);

}  // namespace qinghe
