// Whatever a peer sends is read without a failure, and what it is read as can be written again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "messaging/rules/peer_frame.h"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const qinghe::PeerFrame frame = qinghe::readFrame(bytes);
  require(frame.body.size() <= bytes.size());
  require(!frame.body.contains(QChar(QChar::ReplacementCharacter)));
  require(frame.name || frame.body.isEmpty());
  if (frame.name) {
    require(!frame.name->contains(u','));
    require(frame.name->size() + frame.body.size() + 2 <= bytes.size());
  }
  if (!frame.id || !frame.name) return 0;
  const qinghe::PeerFrame again =
      qinghe::readFrame(qinghe::writeFrame(*frame.id, *frame.name, frame.body));
  require(again.id == frame.id && again.name == frame.name && again.body == frame.body);
  return 0;
}
