#pragma once

namespace qinghe {

class Form;

/// Shows a form modally as every screen does: the tray waits meanwhile, and behind it the
/// connection is looked at, whatever the answer. The form may have been unloaded when it comes
/// back.
void showModalWaiting(Form& form);

}  // namespace qinghe
