#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string>

namespace vorc {

/// A connected socket's TLS, verified against the system's certificates and the host's name. The
/// library is loaded at the first use.
class Tls {
 public:
  /// Null if the library is missing, the handshake fails or the certificate doesn't fit.
  static std::unique_ptr<Tls> Connect(int descriptor, const std::string& host);

  Tls(const Tls&) = delete;
  Tls& operator=(const Tls&) = delete;
  ~Tls();

  /// As send and recv answer.
  ssize_t Write(const char* data, size_t size);
  ssize_t Read(char* data, size_t size);

 private:
  Tls(void* context, void* session) : context_(context), session_(session) {}

  void* context_;
  void* session_;
  bool connected_ = false;
};

}  // namespace vorc
