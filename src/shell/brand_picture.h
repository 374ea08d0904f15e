#pragma once

#include <QRectF>

class QPainter;

namespace qinghe {

/// The product's mark, the same as the program's icon, filling the square `box`.
void paintBrandMark(QPainter& painter, const QRectF& box);

/// The splash's picture: sky, clouds and a green field, with the mark at the upper right. Its left
/// and its sky are light, so that dark text is readable there.
void paintSplashPicture(QPainter& painter, const QRectF& box);

}  // namespace qinghe
