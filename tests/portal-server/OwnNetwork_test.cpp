#include "OwnNetwork.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace qinghe::portal_server;
namespace ip = boost::asio::ip;

namespace {

struct Place {
  const char* address;
  bool isPublic;
};

class Addresses : public testing::TestWithParam<Place> {};

TEST_P(Addresses, AreOfTheInternetOrNot) {
  const auto& [text, isPublic] = GetParam();
  EXPECT_EQ(isPublicAddress(ip::make_address(text)), isPublic) << text;
}

INSTANTIATE_TEST_SUITE_P(PublicV4, Addresses,
                         testing::Values(Place{"1.1.1.1", true}, Place{"9.255.255.255", true},
                                         Place{"11.0.0.0", true}, Place{"100.63.255.255", true},
                                         Place{"100.128.0.0", true}, Place{"172.15.255.255", true},
                                         Place{"172.32.0.0", true}, Place{"192.167.255.255", true},
                                         Place{"192.169.0.0", true},
                                         Place{"223.255.255.255", true}));

INSTANTIATE_TEST_SUITE_P(
    OtherV4, Addresses,
    testing::Values(
        Place{"0.0.0.0", false}, Place{"0.1.2.3", false}, Place{"10.0.0.1", false},
        Place{"10.255.255.255", false}, Place{"100.64.0.0", false}, Place{"100.127.255.255", false},
        Place{"127.0.0.1", false}, Place{"127.255.255.254", false}, Place{"169.254.169.254", false},
        Place{"172.16.0.0", false}, Place{"172.31.255.255", false}, Place{"192.168.0.1", false},
        Place{"192.0.0.8", false}, Place{"192.0.2.1", false}, Place{"198.19.255.255", false},
        Place{"198.51.100.7", false}, Place{"203.0.113.9", false}, Place{"224.0.0.1", false},
        Place{"239.1.1.1", false}, Place{"240.0.0.1", false}, Place{"255.255.255.255", false}));

INSTANTIATE_TEST_SUITE_P(
    V6, Addresses,
    testing::Values(Place{"2400:3200::1", true}, Place{"2606:4700:4700::1111", true},
                    Place{"2001:4860:4860::8888", true}, Place{"::ffff:1.1.1.1", true},
                    Place{"::", false}, Place{"::1", false}, Place{"::ffff:127.0.0.1", false},
                    Place{"::ffff:192.168.1.1", false}, Place{"::127.0.0.1", false},
                    Place{"64:ff9b::7f00:1", false}, Place{"fe80::1", false},
                    Place{"fe80::1%1", false}, Place{"fc00::1", false}, Place{"fd12::1", false},
                    Place{"ff02::1", false}, Place{"2001::1", false}, Place{"2001:db8::1", false},
                    Place{"2002:7f00:1::", false}, Place{"3fff::1", false},
                    Place{"4000::1", false}));

TEST(OwnNetwork, BlocksHoldWhatSharesTheirFirstBits) {
  const AddressBlock block{ip::make_address("198.200.12.0"), 22};
  EXPECT_TRUE(block.contains(ip::make_address("198.200.15.255")));
  EXPECT_FALSE(block.contains(ip::make_address("198.200.16.0")));
  EXPECT_FALSE(block.contains(ip::make_address("198.200.11.255")));
  EXPECT_FALSE(block.contains(ip::make_address("2001:4860::1")));
  const AddressBlock wide{ip::make_address("2400:3200::"), 33};
  EXPECT_TRUE(wide.contains(ip::make_address("2400:3200:7fff::1")));
  EXPECT_FALSE(wide.contains(ip::make_address("2400:3200:8000::1")));
  EXPECT_TRUE((AddressBlock{ip::make_address("1.2.3.4"), 0}.contains(ip::make_address("9.9.9.9"))));
}

TEST(OwnNetwork, TheMachinesOwnNetworksAreKnown) {
  const auto own = interfaceNetworks();
  const auto loopback = ip::make_address("127.0.0.1");
  EXPECT_TRUE(std::any_of(own.begin(), own.end(),
                          [&](const AddressBlock& block) { return block.contains(loopback); }));
  for (const AddressBlock& block : own) {
    EXPECT_FALSE(isOutsideOwnNetwork(block.base)) << block.base;
    EXPECT_GT(block.prefix, 0U);
  }
}

}  // namespace
