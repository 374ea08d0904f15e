#include "account/LoginAnswer.h"

#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

bool takeLoginRow(GetHtml& html, AppState& state) {
  state.gQiyeId = toInt16(html.GetRowItem());
  if (state.gQiyeId == 0) return false;
  state.gUserNo = html.GetRowItem();
  state.gUserName = html.GetRowItem();
  state.gUnicode = toInt16(html.GetRowItem());
  state.gHayeId = toInt16(html.GetRowItem());
  state.gHayeName = html.GetRowItem();
  state.gUserLevel = toInt16(html.GetRowItem());
  return true;
}

}  // namespace qinghe
