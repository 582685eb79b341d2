#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "net/http_body.h"
#include "net/tls.h"

namespace vorc {

struct HttpUrl {
  bool use_tls = false;
  std::string host;
  int32_t port = 0;
  std::string rest;  ///< path and query, empty if there are none
};

/// Takes "https://host[:port][/path]" or the same with "http" apart. Nothing for other texts, for
/// control characters, for hosts beyond 255 bytes and ports above 65535.
std::optional<HttpUrl> ParseHttpUrl(std::string_view url);

/// True if MORV_HTTPS_ALLOW_PRIVATE is "1". It is looked at once, at the first call.
bool PrivateAddressesAllowed();

struct HttpRequest {
  std::string method;
  HttpUrl url;
  std::string path;
  std::string extra_headers;  ///< in wire form
  std::optional<std::string> body;
  size_t max_bytes = 0;  ///< of the whole answer
  bool allow_private = false;
};

/// One request over a connection of its own. The answer's body, or nothing; `status` is 0 where there
/// is no answer. Each wait ends after MORV_HTTPS_TIMEOUT_MS.
std::optional<HttpBody> MorvHttpTransport(const HttpRequest& request, TlsContext& context, int32_t& status);

/// What a script fetches, and the status of its last request.
class HttpsClient {
 public:
  /// Empty on failure. Reserved addresses are reached only if MORV_HTTPS_ALLOW_PRIVATE is "1".
  HttpBody MorvHttpsGet(std::string_view url, std::string_view headers);
  HttpBody MorvHttpsPost(std::string_view url, std::string_view headers, std::string_view body);
  int32_t MorvHttpsStatus() const { return last_status_; }

  /// The reply of a chat model to one message, or the service's whole answer if it holds none.
  std::string MorvOpenAIChat(std::string_view base_url, std::string_view api_key, std::string_view model,
                             std::string_view prompt, size_t capacity);

 private:
  HttpBody morv_https_do(const char* method, std::string_view url, std::string_view headers,
                         std::optional<std::string> body);

  TlsContext tls_;
  int32_t last_status_ = 0;
};

}  // namespace vorc
