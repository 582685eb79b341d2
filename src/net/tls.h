#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string>

namespace vorc {

/// A connected socket's TLS, verified against the system's certificates and the host's name.
class Tls {
 public:
  Tls(const Tls&) = delete;
  Tls& operator=(const Tls&) = delete;
  ~Tls();

  /// As send and recv answer.
  ssize_t Write(const char* data, size_t size);
  ssize_t Read(char* data, size_t size);

 private:
  friend class TlsContext;
  explicit Tls(void* session) : session_(session) {}

  void* session_;
  bool connected_ = false;
};

/// The certificates that are trusted. They, and the library itself, are loaded at the first use, and
/// kept: reading them takes longer than a handshake.
class TlsContext {
 public:
  TlsContext() = default;
  TlsContext(const TlsContext&) = delete;
  TlsContext& operator=(const TlsContext&) = delete;
  ~TlsContext();

  /// Null if the library is missing, the handshake fails or the certificate doesn't fit.
  std::unique_ptr<Tls> Connect(int descriptor, const std::string& host);

 private:
  bool Load();

  void* context_ = nullptr;
};

}  // namespace vorc
