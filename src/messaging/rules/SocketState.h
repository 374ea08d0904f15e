#pragma once

namespace qinghe {

/// The states of a `PeerSocket`, with the numbers that the messenger's rules name.
enum class SocketState {
  Closed = 0,
  Open = 1,
  Listening = 2,
  ConnectionPending = 3,
  Resolving = 4,
  HostResolved = 5,
  Connecting = 6,
  Connected = 7,
  Closing = 8,  ///< the other end has gone, or does not read any more
  Failed = 9,   ///< an attempt to connect has failed
};

}  // namespace qinghe
