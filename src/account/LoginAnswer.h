#pragma once

#include "portal/GetHtml.h"

namespace qinghe {

struct AppState;

/// Reads the row that a login answers with, seven cells, into the account variables, one by one: a
/// cell that fails its conversion throws and leaves what was written before it. False when the
/// first cell is 0, the portal's refusal, with the rest unread.
bool takeLoginRow(GetHtml& html, AppState& state);

}  // namespace qinghe
