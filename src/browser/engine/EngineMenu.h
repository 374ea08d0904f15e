#pragma once

class QMenu;
class QWebEngineView;

namespace qinghe {

/// What a page offers to the right mouse button: going back and forth, and the clipboard. Fills
/// `menu` with what is possible at the moment.
void fillPageMenu(QMenu& menu, const QWebEngineView& view);

}  // namespace qinghe
