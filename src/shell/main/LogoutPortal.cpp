#include "shell/main/LogoutPortal.h"

#include "forms/HourGlass.h"
#include "portal/RequestBuilder.h"
#include "portal/url_encode.h"
#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

bool LogoutPortal() {
  AppState& state = app();
  const HourGlass busy;
  try {
    GetHtml html(state, state.inetQuotes);
    // The encoder writes its replacements back into the user number itself.
    const QString url = RequestBuilder(state.gWebServer, paths::logout)
                            .raw(u"USER_NO"_s, UrlEncodeField(state.gUserNo))
                            .url();
    state.gResponse = html.ParseResponse(html.GetUrl(state.gUnicode, url));
    if (state.gResponse.isEmpty()) return false;
    // No cell is read, so a row in the answer would be met for ever: the loop also ends when the
    // cursor no longer moves.
    for (qsizetype before = -1; !state.gResponse.isEmpty() && state.gResponse.length() != before;) {
      before = state.gResponse.length();
      state.gResponse = html.GetRow(state.gResponse);
    }
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace qinghe
