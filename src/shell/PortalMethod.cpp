#include "shell/PortalMethod.h"

#include "forms/HourGlass.h"
#include "shell/AppState.h"

namespace qinghe {

bool readPortal(const QString& url, EmptyAnswer empty,
                const std::function<bool(GetHtml&)>& eachRow) {
  return readPortal([&url](GetHtml& html) { return html.GetUrl(app().gUnicode, url); }, empty,
                    eachRow);
}

bool readPortal(const PageFetch& fetch, EmptyAnswer empty,
                const std::function<bool(GetHtml&)>& eachRow) {
  auto& state = app();
  const HourGlass glass;
  try {
    GetHtml html(state, state.inetQuotes);
    const QString page = fetch(html);
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
  const FormRegistry::Hold hold(state.forms.registry);  // the wait for another post lets all run
  try {
    GetHtml(state, state.inetQuotes).PostUrl(url, body);
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace qinghe
