#pragma once

#include <QIcon>
#include <QString>

namespace qinghe {

/// The icon of an image key ("Ximu", "Save", ...), drawn in the palette's text colour where it is
/// an outline; an empty icon for an unknown key.
QIcon iconFor(const QString& key);

}  // namespace qinghe
