#pragma once

namespace qinghe {

/// Tells the portal that the user leaves, whoever is logged in. False when the answer is empty and
/// on any failure.
bool LogoutPortal();

}  // namespace qinghe
