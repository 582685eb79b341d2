#include "net/reserved_address.h"

#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace vorc {

namespace {

struct Block {
  uint32_t network;
  int bits;
};

// Wider than the documentation networks on purpose in 198.51 and 203.0.
constexpr Block kReserved[] = {
    {0x00000000, 8},  {0x0a000000, 8},  {0x7f000000, 8},  {0xa9fe0000, 16},
    {0xac100000, 12}, {0xc0a80000, 16}, {0x64400000, 10}, {0xc0000000, 24},
    {0xc6120000, 15}, {0xc6330000, 16}, {0xcb000000, 16}, {0xe0000000, 3},
};

bool IsReserved4(uint32_t address) {
  return std::ranges::any_of(
      kReserved, [=](const Block& block) { return (address ^ block.network) >> (32 - block.bits) == 0; });
}

bool IsReserved6(const std::array<uint8_t, 16>& bytes) {
  const auto zeros = std::ranges::find_if(bytes, [](uint8_t byte) { return byte != 0; }) - bytes.begin();
  if (zeros == 10 && bytes[10] == 255 && bytes[11] == 255) {
    return IsReserved4(uint32_t{bytes[12]} << 24 | uint32_t{bytes[13]} << 16 | uint32_t{bytes[14]} << 8 |
                       bytes[15]);
  }
  if (zeros == 16 || (zeros == 15 && bytes[15] == 1)) return true;
  if (bytes[0] == 252 || bytes[0] == 253 || bytes[0] == 255) return true;
  return bytes[0] == 254 && bytes[1] >> 6 == 2;
}

}  // namespace

bool morv_addr_is_reserved(const sockaddr* address) {
  if (address == nullptr) return true;
  if (address->sa_family == AF_INET) {
    sockaddr_in four{};
    std::memcpy(&four, address, sizeof four);
    return IsReserved4(ntohl(four.sin_addr.s_addr));
  }
  if (address->sa_family != AF_INET6) return true;
  sockaddr_in6 six{};
  std::memcpy(&six, address, sizeof six);
  std::array<uint8_t, 16> bytes{};
  std::memcpy(bytes.data(), &six.sin6_addr, bytes.size());
  return IsReserved6(bytes);
}

}  // namespace vorc
