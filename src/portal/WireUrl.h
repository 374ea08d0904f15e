#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

namespace qinghe {

/// A URL taken apart without touching its bytes: what curl connects to, and what stands in the
/// request line.
struct WireUrl {
  QByteArray scheme;    ///< "http" or "https"
  QByteArray origin;    ///< scheme, "://", user and host and port; safe to hand to curl
  QByteArray host;      ///< without port and brackets
  QByteArray target;    ///< path and query as they were built; at least "/"
  QByteArray absolute;  ///< the whole URL as it stands in a request line for a proxy

  /// Takes an http or https URL in code page bytes. Bytes below 0x20 and 0x7F of path and query
  /// are escaped, "#" and what follows is cut, all else stays. Nothing for any other URL, and for
  /// a host that such bytes or blanks stand in.
  static std::optional<WireUrl> parse(QByteArrayView url);

  /// Where a "Location" of an answer to this URL leads; nothing when that is no http or https URL.
  std::optional<WireUrl> resolved(const QByteArray& location) const;
};

}  // namespace qinghe
