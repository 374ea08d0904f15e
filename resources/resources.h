#pragma once

namespace qinghe {

/// Makes the icons reachable under ":/icons/<Key>.svg". A static library's resources are not found
/// by themselves; calling this again does nothing.
void initResources();

}  // namespace qinghe
