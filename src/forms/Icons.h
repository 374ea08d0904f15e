#pragma once

#include <QIcon>
#include <QString>

namespace qinghe {

/// The icon of an image key ("Ximu", "Save", ...), drawn in the palette's text colour where its
/// drawing says "currentColor", sharp at any size and device pixel ratio; an empty icon for an
/// unknown key.
QIcon iconFor(const QString& key);

}  // namespace qinghe
