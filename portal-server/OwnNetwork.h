#pragma once

#include <boost/asio/ip/address.hpp>
#include <vector>

namespace qinghe::portal_server {

/// A block of addresses.
struct AddressBlock {
  boost::asio::ip::address base;
  unsigned prefix = 0;  ///< leading bits that all of them share

  bool contains(const boost::asio::ip::address& address) const;
};

/// Whether an address is reached over the public internet: none of this machine, of private or
/// link networks, of multicast, and none that only stands for another one or for documentation.
bool isPublicAddress(const boost::asio::ip::address& address);

/// The networks that this machine's interfaces stand in, their own addresses among them. Throws
/// `std::runtime_error` when the system does not tell.
std::vector<AddressBlock> interfaceNetworks();

/// Whether a page may be fetched from there: a public address outside this machine's networks.
/// False when these cannot be told.
bool isOutsideOwnNetwork(const boost::asio::ip::address& address);

}  // namespace qinghe::portal_server
