#pragma once

#include <QList>
#include <QString>
#include <array>
#include <functional>

namespace qinghe {

/// What `RefreshCommands` makes of an entry in one login mode.
enum class Offer { Off, On, Untouched };

/// An entry of the menu, in menu order.
struct Command {
  QString name;
  QString caption;
  /// By login mode 0, 1, 2.
  std::array<Offer, 3> offers{Offer::Untouched, Offer::Untouched, Offer::Untouched};
  bool neverOffered = false;  ///< switched off and hidden, for good
  bool onToolbar = false;
  std::function<void()> run = {};
};

/// A separator has a name and nothing else.
inline bool isSeparator(const Command& command) {
  return command.caption.isEmpty();
}

class MDIFrmMAIN;

/// The whole command table of the program.
QList<Command> commandTable(MDIFrmMAIN& frame);

/// Lets the screens that stand below them open the help window and the registration.
void offerScreensFromBelow();

}  // namespace qinghe
