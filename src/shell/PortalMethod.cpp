#include "shell/PortalMethod.h"

#include "forms/HourGlass.h"
#include "shell/AppState.h"

namespace qinghe {

bool readPortal(const QString& url, EmptyAnswer empty,
                const std::function<bool(GetHtml&)>& eachRow) {
  auto& state = app();
  const HourGlass glass;
  try {
    GetHtml html(state, state.inetQuotes);
    const QString page = html.GetUrl(state.gUnicode, url);
    state.gResponse = page;
    state.gResponse = html.ParseResponse(page);
    if (state.gResponse.isEmpty()) return empty == EmptyAnswer::IsNoRows;
    for (;;) {
      state.gResponse = html.GetRow(state.gResponse);
      if (state.gResponse.isEmpty()) return true;
      if (!eachRow(html)) return false;
    }
  } catch (const Failure&) {
    // The caller puts the result into words.
    return false;
  }
}

bool postToPortal(const QString& url, const QString& body) {
  auto& state = app();
  const HourGlass glass;
  try {
    GetHtml(state, state.inetQuotes).PostUrl(url, body);
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace qinghe
