#pragma once

#include <QString>

namespace qinghe {

/// The one online test, asked before all portal work. It updates the tray, and with `gAutoDial` and
/// no link it shows the notice and starts the dialer. Access types 0 and 1 ask the links, 2 is
/// always online, any other is never.
bool CheckConnection();

/// The dial-up entry that the user's desktop names as its default; empty when there is none.
QString GetDefaultDialEntry();

/// Starts the dialer on the default entry; nothing happens without one.
void StartDialer();

}  // namespace qinghe
