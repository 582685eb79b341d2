#pragma once

struct sockaddr;

namespace vorc {

/// True if scripts may not reach this address: private, local, shared, multicast and such, and
/// whatever is neither IPv4 nor IPv6. Null counts as reserved.
bool morv_addr_is_reserved(const sockaddr* address);

}  // namespace vorc
