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
constexpr size_t kFirstBuffer = 65536;
constexpr size_t kLargestAnswer = 0x800000;
constexpr size_t kShortestHead = 13;

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

  std::string ReadAll(size_t limit) {
    std::string data;
    size_t filled = 0;
    while (filled < limit) {
      if (filled == data.size()) data.resize(std::min(std::max(kFirstBuffer, 2 * filled), limit));
      const ssize_t count = RetryInterrupted([&] {
        return tls ? tls->Read(&data[filled], data.size() - filled)
                   : recv(descriptor.get(), &data[filled], data.size() - filled, 0);
      });
      if (count <= 0) break;
      filled += static_cast<size_t>(count);
    }
    data.resize(filled);
    return data;
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

int32_t StatusOf(const std::string& answer) {
  if (answer.size() < kShortestHead || !answer.starts_with("HTTP/")) return 0;
  const size_t blank = answer.find(' ');
  return blank == std::string::npos
             ? 0
             : static_cast<int32_t>(std::strtol(answer.c_str() + blank + 1, nullptr, 10));
}

bool IsChunked(std::string head) {
  std::ranges::transform(head, head.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
  return head.find("transfer-encoding:") != std::string::npos && head.find("chunked") != std::string::npos;
}

}  // namespace

std::optional<std::string> MorvHttpTransport(const HttpRequest& request, int32_t& status) {
  status = 0;
  Stream stream{Connect(request), nullptr};
  if (!stream.descriptor) return std::nullopt;
  if (request.url.use_tls) {
    stream.tls = Tls::Connect(stream.descriptor.get(), request.url.host);
    if (stream.tls == nullptr) return std::nullopt;
  }
  if (!stream.WriteAll(RequestText(request))) return std::nullopt;
  const size_t limit = request.max_bytes < 1 ? kLargestAnswer : std::min(request.max_bytes, kLargestAnswer);
  const std::string answer = stream.ReadAll(limit);
  const size_t head_end = answer.find("\r\n\r\n");
  if (head_end == std::string::npos) return std::nullopt;
  status = StatusOf(answer);
  std::string body = answer.substr(head_end + 4);
  if (IsChunked(answer.substr(0, head_end))) body = DecodeChunks(body);
  body.resize(std::min(body.find('\0'), body.size()));
  return body;
}

}  // namespace vorc
