#include "net/tls.h"

#include <dlfcn.h>

#include <algorithm>
#include <cerrno>
#include <climits>

namespace vorc {

namespace {

constexpr int kVerifyPeer = 1;
constexpr int kSetServerName = 55;
constexpr long kHostName = 0;
constexpr int kSetReadAhead = 41;
constexpr size_t kReadBuffer = 65536;

struct TlsLibrary {
  const void* (*TLS_client_method)() = nullptr;
  void* (*SSL_CTX_new)(const void*) = nullptr;
  void (*SSL_CTX_free)(void*) = nullptr;
  int (*SSL_CTX_set_default_verify_paths)(void*) = nullptr;
  void (*SSL_CTX_set_verify)(void*, int, void*) = nullptr;
  long (*SSL_CTX_ctrl)(void*, int, long, void*) = nullptr;
  void (*SSL_CTX_set_default_read_buffer_len)(void*, size_t) = nullptr;
  void* (*SSL_new)(void*) = nullptr;
  void (*SSL_free)(void*) = nullptr;
  int (*SSL_set_fd)(void*, int) = nullptr;
  long (*SSL_ctrl)(void*, int, long, void*) = nullptr;
  int (*SSL_set1_host)(void*, const char*) = nullptr;
  int (*SSL_connect)(void*) = nullptr;
  int (*SSL_read)(void*, void*, int) = nullptr;
  int (*SSL_write)(void*, const void*, int) = nullptr;
  int (*SSL_shutdown)(void*) = nullptr;

  static const TlsLibrary* Get() {
    static const TlsLibrary library;
    return library.complete_ ? &library : nullptr;
  }

 private:
  TlsLibrary() {
    void* library = dlopen("libssl.so.3", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return;
    complete_ = true;
    const auto find = [&](const char* name, auto& entry) {
      entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(dlsym(library, name));
      complete_ &= entry != nullptr;
    };
    find("TLS_client_method", TLS_client_method);
    find("SSL_CTX_new", SSL_CTX_new);
    find("SSL_CTX_free", SSL_CTX_free);
    find("SSL_CTX_set_default_verify_paths", SSL_CTX_set_default_verify_paths);
    find("SSL_CTX_set_verify", SSL_CTX_set_verify);
    find("SSL_CTX_ctrl", SSL_CTX_ctrl);
    find("SSL_CTX_set_default_read_buffer_len", SSL_CTX_set_default_read_buffer_len);
    find("SSL_new", SSL_new);
    find("SSL_free", SSL_free);
    find("SSL_set_fd", SSL_set_fd);
    find("SSL_ctrl", SSL_ctrl);
    find("SSL_set1_host", SSL_set1_host);
    find("SSL_connect", SSL_connect);
    find("SSL_read", SSL_read);
    find("SSL_write", SSL_write);
    find("SSL_shutdown", SSL_shutdown);
  }

  bool complete_ = false;
};

int Piece(size_t size) {
  return static_cast<int>(std::min(size, static_cast<size_t>(INT_MAX)));
}

}  // namespace

TlsContext::~TlsContext() {
  if (context_ != nullptr) TlsLibrary::Get()->SSL_CTX_free(context_);
}

bool TlsContext::Load() {
  const TlsLibrary* library = TlsLibrary::Get();
  if (library == nullptr || context_ != nullptr) return library != nullptr;
  void* context = library->SSL_CTX_new(library->TLS_client_method());
  if (context == nullptr) return false;
  if (library->SSL_CTX_set_default_verify_paths(context) != 1) {
    library->SSL_CTX_free(context);
    return false;
  }
  library->SSL_CTX_set_verify(context, kVerifyPeer, nullptr);
  // Several records a system call.
  library->SSL_CTX_ctrl(context, kSetReadAhead, 1, nullptr);
  library->SSL_CTX_set_default_read_buffer_len(context, kReadBuffer);
  context_ = context;
  return true;
}

std::unique_ptr<Tls> TlsContext::Connect(int descriptor, const std::string& host) {
  if (!Load()) return nullptr;
  const TlsLibrary* library = TlsLibrary::Get();
  std::unique_ptr<Tls> tls(new Tls(library->SSL_new(context_)));
  void* session = tls->session_;
  if (session == nullptr || library->SSL_set_fd(session, descriptor) != 1) return nullptr;
  std::string name = host;
  if (library->SSL_ctrl(session, kSetServerName, kHostName, name.data()) != 1 ||
      library->SSL_set1_host(session, host.c_str()) != 1 || library->SSL_connect(session) != 1) {
    return nullptr;
  }
  tls->connected_ = true;
  return tls;
}

Tls::~Tls() {
  const TlsLibrary* library = TlsLibrary::Get();
  if (connected_) library->SSL_shutdown(session_);
  if (session_ != nullptr) library->SSL_free(session_);
}

// Not every failure sets errno: one that was left behind must not look like an interruption.
ssize_t Tls::Write(const char* data, size_t size) {
  errno = 0;
  return TlsLibrary::Get()->SSL_write(session_, data, Piece(size));
}

ssize_t Tls::Read(char* data, size_t size) {
  errno = 0;
  return TlsLibrary::Get()->SSL_read(session_, data, Piece(size));
}

}  // namespace vorc
