#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace qinghe {

/// Posts the close message to the top-level window with this title, which in practice is the
/// program's own. Without one it says "并未开启" + title; when the post fails, "Error posting
/// message.".
void closeWindowTitled(const QString& title, const std::function<bool(QWidget&)>& post = nullptr);

}  // namespace qinghe
