#include "messaging/rules/ConnectWatch.h"

namespace qinghe {

namespace {

constexpr qint16 mostTicks = 3;

}  // namespace

ConnectWatch::Verdict ConnectWatch::tick(SocketState state) {
  if (state == SocketState::Connecting && ++ticks_ < mostTicks) return Verdict::Wait;
  ticks_ = 0;
  return state == SocketState::Connected ? Verdict::SayHello : Verdict::GiveUp;
}

}  // namespace qinghe
