#pragma once

namespace qinghe {

/// A port that is free on 127.0.0.1 and 127.0.0.2, out of the range from which the system gives
/// ports to connections, so that no other test gets it by chance.
int freePort();

}  // namespace qinghe
