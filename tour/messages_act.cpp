// What came while the company was away, an answer to it, and the history.

#include <QPushButton>

#include "acts.h"
#include "hands.h"
#include "messaging/frmPeer.h"
#include "messaging/frmXIXI.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

frmPeer& messenger() {
  return defaultInstance<frmPeer>();
}

frmXIXI& history() {
  return defaultInstance<frmXIXI>();
}

void openMessenger() {
  app().gPartnerId = 2;
  choose(u"mnuPeer"_s);
}

}  // namespace

QList<TourStep> messagesSteps() {
  const auto isListed = [] {
    return isShown<frmPeer>() && messenger().ImageCombo1->itemCount() > 0;
  };
  const auto hasRead = [] { return !messenger().Timer3->isEnabled(); };
  return {
      {u"main-window"_s, isLoggedIn, openMessenger},
      {u"messenger"_s, isListed},
      {u"messenger-inbox"_s, hasRead,
       [] { typeInto(*messenger().txtSend, u"林先生，您订的童书今天下午发出，请留意收货。"_s); }},
      {u"messenger-typed"_s, isListed, [] { click(messenger().command1); }},
      {u"messenger-sent"_s, [] { return messenger().txtSend->text().isEmpty(); },
       [] {
         click(messenger().Command2);
         choose(u"mnuXIXI"_s);
       }},
      // What the inbox held brings the messenger up again, over the history.
      {u"history"_s, [hasRead] { return isShown<frmXIXI>() && hasRead(); },
       [] {
         if (isShown<frmPeer>()) click(messenger().Command2);
         clickRow(*history().ListView1, 0);
       }},
      {u"history-contact"_s, [] { return history().ListView2->itemCount() > 0; },
       [] { clickRow(*history().ListView2, 1); }},
      {u"message-history"_s, [] { return !history().Text1->text().isEmpty(); }, leaveProgram},
  };
}

}  // namespace qinghe
