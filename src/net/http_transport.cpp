#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

#include "base/descriptor.h"
#include "base/format.h"
#include "net/https_client.h"
#include "net/reserved_address.h"
#include "net/tls.h"

namespace vorc {

namespace {

constexpr int kDefaultTimeoutMs = 30000;
constexpr size_t kLargestAnswer = 0x800000;

int TimeoutMs() {
  static const int timeout = [] {
    const char* value = std::getenv("MORV_HTTPS_TIMEOUT_MS");
    const long told = value == nullptr ? 0 : std::strtol(value, nullptr, 10);
    return told < 1 ? kDefaultTimeoutMs : static_cast<int>(std::min<long>(told, INT_MAX));
  }();
  return timeout;
}

Descriptor ConnectTo(const addrinfo& address) {
  Descriptor descriptor(
      socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, address.ai_protocol));
  if (!descriptor) return descriptor;
  if (connect(descriptor.get(), address.ai_addr, address.ai_addrlen) != 0) {
    pollfd waiting{descriptor.get(), POLLOUT, 0};
    int error = 0;
    socklen_t size = sizeof error;
    if (errno != EINPROGRESS || RetryInterrupted([&] { return poll(&waiting, 1, TimeoutMs()); }) != 1 ||
        getsockopt(descriptor.get(), SOL_SOCKET, SO_ERROR, &error, &size) != 0 || error != 0) {
      return Descriptor();
    }
  }
  fcntl(descriptor.get(), F_SETFL, fcntl(descriptor.get(), F_GETFL) & ~O_NONBLOCK);
  timeval limit{};
  limit.tv_sec = TimeoutMs() / 1000;
  limit.tv_usec = TimeoutMs() % 1000 * 1000;
  setsockopt(descriptor.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  setsockopt(descriptor.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
  return descriptor;
}

// The address that is checked is the one that is connected to: a name can't change in between.
Descriptor Connect(const HttpRequest& request) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const std::string port = std::to_string(request.url.port);
  if (getaddrinfo(request.url.host.c_str(), port.c_str(), &hints, &found) != 0) return Descriptor();
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses(found, freeaddrinfo);
  for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
    if (!request.allow_private && morv_addr_is_reserved(each->ai_addr)) continue;
    if (Descriptor connected = ConnectTo(*each)) return connected;
  }
  return Descriptor();
}

/// A connection, plain or by TLS.
struct Stream {
  Descriptor descriptor;
  std::unique_ptr<Tls> tls;

  bool WriteAll(std::string_view data) {
    while (!data.empty()) {
      const ssize_t count = RetryInterrupted([&] {
        return tls ? tls->Write(data.data(), data.size())
                   : send(descriptor.get(), data.data(), data.size(), 0);
      });
      if (count <= 0) return false;
      data.remove_prefix(static_cast<size_t>(count));
    }
    return true;
  }

  ReceivedBytes ReadAll(size_t limit) {
    ReceivedBytes received;
    for (auto room = received.Room(limit); !room.empty(); room = received.Room(limit)) {
      const ssize_t count = RetryInterrupted([&] {
        return tls ? tls->Read(room.data(), room.size())
                   : recv(descriptor.get(), room.data(), room.size(), 0);
      });
      if (count <= 0) break;
      received.Fill(static_cast<size_t>(count));
    }
    return received;
  }
};

std::string RequestText(const HttpRequest& request) {
  const std::string method = request.method.empty() ? "GET" : request.method;
  std::string text = method + " " + request.path + " HTTP/1.1\r\nHost: " + request.url.host +
                     "\r\nUser-Agent: morv/1.0\r\nConnection: close\r\n" + request.extra_headers;
  if (request.body) {
    text += Format("Content-Length: %zu\r\n\r\n", request.body->size()) + *request.body;
  } else {
    text += method == "GET" ? "\r\n" : "Content-Length: 0\r\n\r\n";
  }
  return text;
}

}  // namespace

std::optional<HttpBody> MorvHttpTransport(const HttpRequest& request, TlsContext& context, int32_t& status) {
  status = 0;
  Stream stream{Connect(request), nullptr};
  if (!stream.descriptor) return std::nullopt;
  if (request.url.use_tls) {
    stream.tls = context.Connect(stream.descriptor.get(), request.url.host);
    if (stream.tls == nullptr) return std::nullopt;
  }
  if (!stream.WriteAll(RequestText(request))) return std::nullopt;
  const size_t limit = request.max_bytes < 1 ? kLargestAnswer : std::min(request.max_bytes, kLargestAnswer);
  return HttpBody::Of(stream.ReadAll(limit), status);
}

}  // namespace vorc
