#pragma once

namespace qinghe {

class Form;
class Toolbar;

/// Shows the help window, by way of `AppState::openHelp`: the screens stand below it and do not
/// know it. Without one nothing happens.
void showHelp();

/// F1 in the form raises the toolbar's `buttonClick` with the key "Help", for which the bar shows
/// no button. What the key does is up to the form's own handler.
void giveHelpKey(Form& form, Toolbar& bar);

}  // namespace qinghe
