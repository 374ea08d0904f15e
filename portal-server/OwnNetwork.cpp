#include "OwnNetwork.h"

#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

namespace qinghe::portal_server {

namespace ip = boost::asio::ip;

namespace {

struct Special {
  const char* base;
  unsigned prefix;
};

// What the registries set aside. Addresses of IPv6 are public in 2000::/3 alone.
constexpr std::array notPublicV4{
    Special{"0.0.0.0", 8},      Special{"10.0.0.0", 8},     Special{"100.64.0.0", 10},
    Special{"127.0.0.0", 8},    Special{"169.254.0.0", 16}, Special{"172.16.0.0", 12},
    Special{"192.0.0.0", 24},   Special{"192.0.2.0", 24},   Special{"192.88.99.0", 24},
    Special{"192.168.0.0", 16}, Special{"198.18.0.0", 15},  Special{"198.51.100.0", 24},
    Special{"203.0.113.0", 24}, Special{"224.0.0.0", 4},    Special{"240.0.0.0", 4}};
// Tunnels that lead to an address written inside, and documentation.
constexpr std::array notPublicV6{Special{"2001::", 23}, Special{"2001:db8::", 32},
                                 Special{"2002::", 16}, Special{"3fff::", 20}};

bool sharePrefix(std::span<const unsigned char> left, std::span<const unsigned char> right,
                 unsigned prefix) {
  for (std::size_t i = 0; i < left.size() && prefix > 0; ++i) {
    const unsigned bits = std::min(prefix, 8U);
    const auto mask = static_cast<unsigned char>(0xFFU << (8U - bits));
    if (((left[i] ^ right[i]) & mask) != 0) return false;
    prefix -= bits;
  }
  return true;
}

/// An IPv4 address that is written as one of IPv6 is meant as what it is.
ip::address plainForm(const ip::address& address) {
  const bool mapped = address.is_v6() && address.to_v6().is_v4_mapped();
  return mapped ? ip::address(ip::make_address_v4(ip::v4_mapped, address.to_v6())) : address;
}

template <std::size_t N>
bool standsIn(const std::array<Special, N>& blocks, const ip::address& address) {
  return std::any_of(blocks.begin(), blocks.end(), [&](const Special& block) {
    return AddressBlock{ip::make_address(block.base), block.prefix}.contains(address);
  });
}

/// The bits of a mask that are set.
unsigned prefixOf(std::span<const unsigned char> mask) {
  unsigned prefix = 0;
  for (const unsigned char byte : mask) prefix += static_cast<unsigned>(std::popcount(byte));
  return prefix;
}

AddressBlock blockOf(const sockaddr& address, const sockaddr* mask) {
  if (address.sa_family == AF_INET) {
    ip::address_v4::bytes_type bytes;
    std::memcpy(bytes.data(), &reinterpret_cast<const sockaddr_in&>(address).sin_addr,
                bytes.size());
    AddressBlock block{ip::address_v4(bytes), 32};
    if (mask != nullptr) {
      std::memcpy(bytes.data(), &reinterpret_cast<const sockaddr_in*>(mask)->sin_addr,
                  bytes.size());
      block.prefix = prefixOf(bytes);
    }
    return block;
  }
  ip::address_v6::bytes_type bytes;
  std::memcpy(bytes.data(), &reinterpret_cast<const sockaddr_in6&>(address).sin6_addr,
              bytes.size());
  AddressBlock block{ip::address_v6(bytes), 128};
  if (mask != nullptr) {
    std::memcpy(bytes.data(), &reinterpret_cast<const sockaddr_in6*>(mask)->sin6_addr,
                bytes.size());
    block.prefix = prefixOf(bytes);
  }
  return block;
}

}  // namespace

bool AddressBlock::contains(const ip::address& address) const {
  if (base.is_v4() != address.is_v4()) return false;
  if (base.is_v4()) {
    return sharePrefix(base.to_v4().to_bytes(), address.to_v4().to_bytes(), prefix);
  }
  return sharePrefix(base.to_v6().to_bytes(), address.to_v6().to_bytes(), prefix);
}

bool isPublicAddress(const ip::address& asWritten) {
  const ip::address address = plainForm(asWritten);
  if (address.is_v4()) return !standsIn(notPublicV4, address);
  static const AddressBlock global{ip::make_address("2000::"), 3};
  return global.contains(address) && !standsIn(notPublicV6, address);
}

std::vector<AddressBlock> interfaceNetworks() {
  ifaddrs* list = nullptr;
  if (getifaddrs(&list) != 0) {
    throw std::runtime_error(std::string("the interfaces cannot be read: ") + std::strerror(errno));
  }
  const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owned(list, &freeifaddrs);
  std::vector<AddressBlock> blocks;
  for (const ifaddrs* at = list; at != nullptr; at = at->ifa_next) {
    if (at->ifa_addr == nullptr) continue;
    if (at->ifa_addr->sa_family != AF_INET && at->ifa_addr->sa_family != AF_INET6) continue;
    AddressBlock block = blockOf(*at->ifa_addr, at->ifa_netmask);
    // A tunnel may claim everything as its network; that makes nothing out there our own.
    if (block.prefix == 0) block.prefix = block.base.is_v4() ? 32 : 128;
    blocks.push_back(block);
  }
  return blocks;
}

bool isOutsideOwnNetwork(const ip::address& asWritten) {
  const ip::address address = plainForm(asWritten);
  if (!isPublicAddress(address)) return false;
  try {
    const auto own = interfaceNetworks();
    return std::none_of(own.begin(), own.end(),
                        [&](const AddressBlock& block) { return block.contains(address); });
  } catch (const std::runtime_error&) {
    return false;
  }
}

}  // namespace qinghe::portal_server
