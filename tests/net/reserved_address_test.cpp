#include "net/reserved_address.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/un.h>

#include <string>

namespace vorc {
namespace {

bool Reserved(const std::string& text) {
  sockaddr_storage address{};
  auto* four = reinterpret_cast<sockaddr_in*>(&address);
  auto* six = reinterpret_cast<sockaddr_in6*>(&address);
  if (inet_pton(AF_INET, text.c_str(), &four->sin_addr) == 1) {
    address.ss_family = AF_INET;
  } else {
    address.ss_family = AF_INET6;
    EXPECT_EQ(inet_pton(AF_INET6, text.c_str(), &six->sin6_addr), 1) << text;
  }
  return morv_addr_is_reserved(reinterpret_cast<const sockaddr*>(&address));
}

TEST(ReservedAddress, Version4AndWhatMapsIt) {
  // First and last of each block, with the last before and the first behind it that may be reached.
  const struct {
    std::string before;
    std::string first;
    std::string last;
    std::string behind;
  } blocks[] = {
      {"", "0.0.0.0", "0.255.255.255", "1.0.0.0"},
      {"9.255.255.255", "10.0.0.0", "10.255.255.255", "11.0.0.0"},
      {"100.63.255.255", "100.64.0.0", "100.127.255.255", "100.128.0.0"},
      {"126.255.255.255", "127.0.0.0", "127.255.255.255", "128.0.0.0"},
      {"169.253.255.255", "169.254.0.0", "169.254.255.255", "169.255.0.0"},
      {"172.15.255.255", "172.16.0.0", "172.31.255.255", "172.32.0.0"},
      {"191.255.255.255", "192.0.0.0", "192.0.0.255", "192.0.2.1"},
      {"192.167.255.255", "192.168.0.0", "192.168.255.255", "192.169.0.0"},
      {"198.17.255.255", "198.18.0.0", "198.19.255.255", "198.20.0.0"},
      {"198.50.255.255", "198.51.0.0", "198.51.255.255", "198.52.0.0"},
      {"202.255.255.255", "203.0.0.0", "203.0.255.255", "203.1.0.0"},
      {"223.255.255.255", "224.0.0.0", "255.255.255.255", ""},
  };
  for (const auto& block : blocks) {
    for (const std::string prefix : {"", "::ffff:"}) {
      EXPECT_TRUE(Reserved(prefix + block.first)) << prefix << block.first;
      EXPECT_TRUE(Reserved(prefix + block.last)) << prefix << block.last;
      for (const std::string& outside : {block.before, block.behind}) {
        EXPECT_FALSE(!outside.empty() && Reserved(prefix + outside)) << prefix << outside;
      }
    }
  }
}

TEST(ReservedAddress, Version6) {
  for (const char* text : {"::", "::1", "fc00::", "fdff::1", "fe80::1", "febf:ffff::", "ff00::", "ff02::1",
                           "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"}) {
    EXPECT_TRUE(Reserved(text)) << text;
  }
  for (const char* text : {"::2", "::fffe:127.0.0.1", "fbff::1", "fe00::1", "fe7f::", "fec0::", "2001:db8::1",
                           "64:ff9b::7f00:1", "1::ffff:127.0.0.1"}) {
    EXPECT_FALSE(Reserved(text)) << text;
  }
}

TEST(ReservedAddress, OtherFamilies) {
  sockaddr_un local{};
  local.sun_family = AF_UNIX;
  EXPECT_TRUE(morv_addr_is_reserved(reinterpret_cast<const sockaddr*>(&local)));
  EXPECT_TRUE(morv_addr_is_reserved(nullptr));
}

}  // namespace
}  // namespace vorc
