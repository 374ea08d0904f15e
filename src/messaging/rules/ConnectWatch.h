#pragma once

#include <QtGlobal>

#include "messaging/rules/SocketState.h"

namespace qinghe {

/// Watches an attempt to connect, tick by tick: three ticks of connecting are one too many, and any
/// state but connecting and connected ends it at once, that of looking up a name included.
class ConnectWatch {
 public:
  enum class Verdict {
    Wait,
    SayHello,  ///< connected: greet, and stop watching
    GiveUp,    ///< close, and stop watching
  };

  Verdict tick(SocketState state);
  qint16 ticks() const { return ticks_; }  ///< spent connecting; kept while nobody watches

 private:
  qint16 ticks_ = 0;
};

}  // namespace qinghe
