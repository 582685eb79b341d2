// Stands in front of the host's resolver and connect. A name that ends in ".test" has the addresses of
// TEST_ADDRESSES, separated by commas; behind a semicolon stand those of the next question. Attempts to
// connect are told on standard error and refused, but for those to this machine with TEST_CONNECT set.
#include <arpa/inet.h>
#include <dlfcn.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

using Resolve = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
int questions = 0;

std::string AddressesOf(int question) {
  std::istringstream all(std::getenv("TEST_ADDRESSES"));
  std::string addresses;
  for (int i = 0; i <= question; ++i) std::getline(all, addresses, ';');
  return addresses;
}

}  // namespace

extern "C" {
int getaddrinfo(const char* name, const char* port, const addrinfo* hints, addrinfo** found) {
  static const auto resolve = reinterpret_cast<Resolve>(dlsym(RTLD_NEXT, "getaddrinfo"));
  if (!std::string(name).ends_with(".test")) return resolve(name, port, hints, found);
  *found = nullptr;
  addrinfo** end = found;
  std::istringstream addresses(AddressesOf(questions++));
  for (std::string each; std::getline(addresses, each, ',');) {
    if (resolve(each.c_str(), port, hints, end) != 0) return EAI_NONAME;
    end = &(*end)->ai_next;
  }
  return 0;
}

int connect(int descriptor, const sockaddr* address, socklen_t size) {
  static const auto real = reinterpret_cast<decltype(&connect)>(dlsym(RTLD_NEXT, "connect"));
  if (address->sa_family != AF_INET && address->sa_family != AF_INET6) return real(descriptor, address, size);
  std::array<char, INET6_ADDRSTRLEN> text{};
  if (address->sa_family == AF_INET) {
    inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in*>(address)->sin_addr, text.data(), text.size());
  } else {
    inet_ntop(AF_INET6, &reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr, text.data(), text.size());
  }
  std::fprintf(stderr, "connect %s\n", text.data());
  if (std::getenv("TEST_CONNECT") != nullptr) return real(descriptor, address, size);
  errno = ECONNREFUSED;
  return -1;
}
}
