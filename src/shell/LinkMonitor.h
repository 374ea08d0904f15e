#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace qinghe {

/// The machine's network links, the one with the default route first; loopback is none.
class LinkMonitor {
 public:
  virtual ~LinkMonitor() = default;
  /// No value when the enumeration failed; an empty list is no failure.
  virtual std::optional<QStringList> enumerate() = 0;
  /// Whether the link is up with an address; the empty name is not connected.
  virtual bool isConnected(const QString& entry) = 0;
};

/// Brings a dial-up entry up, started and not watched.
class Dialer {
 public:
  virtual ~Dialer() = default;
  virtual void dial(const QString& entry) = 0;
};

/// The kernel's links, and `nmcli` to bring one up.
class NetworkLinks : public LinkMonitor {
 public:
  std::optional<QStringList> enumerate() override;
  bool isConnected(const QString& entry) override;
};

class NmcliDialer : public Dialer {
 public:
  void dial(const QString& entry) override;
};

}  // namespace qinghe
