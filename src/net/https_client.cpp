#include "net/https_client.h"

#include <algorithm>
#include <cstdlib>

#include "lib/json.h"

namespace vorc {

namespace {

constexpr size_t kHostLimit = 255;
constexpr size_t kPathLimit = 1023;
constexpr size_t kChatPathLimit = 255;
constexpr size_t kAnswerLimit = 0x800000;
constexpr size_t kChatAnswerLimit = 0x10000;
constexpr int32_t kHttpsPort = 443;
constexpr int32_t kHttpPort = 80;
constexpr long kLargestPort = 65535;
constexpr std::string_view kLineEnd = "\r\n";

bool IsControl(unsigned char byte) {
  return byte < 32 || byte == 127;
}

std::string ChatPath(std::string path) {
  path.resize(std::min(path.size(), kChatPathLimit));
  while (path.ends_with('/')) path.pop_back();
  return path.find("/chat/completions") != std::string::npos ? path : path + "/v1/chat/completions";
}

// The lines of a header text that hold a name, a colon and no control character, in wire form.
std::string FilterHeaders(std::string_view headers) {
  std::string kept;
  while (!headers.empty()) {
    const size_t end = std::min(headers.find('\n'), headers.size());
    std::string_view line = headers.substr(0, end);
    headers.remove_prefix(std::min(end + 1, headers.size()));
    while (line.ends_with('\r')) line.remove_suffix(1);
    const size_t colon = line.find(':', std::min<size_t>(1, line.size()));
    if (colon == std::string_view::npos || std::ranges::any_of(line, IsControl)) continue;
    kept.append(line).append(kLineEnd);
  }
  return kept;
}

}  // namespace

bool PrivateAddressesAllowed() {
  static const bool allowed = [] {
    const char* value = std::getenv("MORV_HTTPS_ALLOW_PRIVATE");
    return value != nullptr && std::string_view(value) == "1";
  }();
  return allowed;
}

std::optional<HttpUrl> ParseHttpUrl(std::string_view url) {
  if (std::ranges::any_of(url, IsControl)) return std::nullopt;
  HttpUrl parsed;
  parsed.use_tls = url.starts_with("https://");
  if (!parsed.use_tls && !url.starts_with("http://")) return std::nullopt;
  url.remove_prefix(url.find("//") + 2);
  const size_t host_end = std::min(url.find_first_of("/:"), url.size());
  if (host_end == 0 || host_end > kHostLimit) return std::nullopt;
  parsed.host = url.substr(0, host_end);
  const size_t path = std::min(url.find('/', host_end), url.size());
  if (host_end < path) {
    const std::string port(url.substr(host_end + 1, path - host_end - 1));
    const long number = std::strtol(port.c_str(), nullptr, 10);
    if (number > kLargestPort) return std::nullopt;
    parsed.port = static_cast<int32_t>(std::max(number, 0L));
  }
  if (parsed.port == 0) parsed.port = parsed.use_tls ? kHttpsPort : kHttpPort;
  parsed.rest = url.substr(path);
  return parsed;
}

HttpBody HttpsClient::morv_https_do(const char* method, std::string_view url, std::string_view headers,
                                    std::optional<std::string> body) {
  last_status_ = 0;
  auto parsed = ParseHttpUrl(url);
  if (!parsed || parsed->rest.size() > kPathLimit) return {};
  HttpRequest request;
  request.method = method;
  request.path = parsed->rest.empty() ? "/" : parsed->rest;
  request.url = std::move(*parsed);
  request.extra_headers = FilterHeaders(headers);
  request.body = std::move(body);
  request.max_bytes = kAnswerLimit;
  request.allow_private = PrivateAddressesAllowed();
  return MorvHttpTransport(request, tls_, last_status_).value_or(HttpBody());
}

HttpBody HttpsClient::MorvHttpsGet(std::string_view url, std::string_view headers) {
  return morv_https_do("GET", url, headers, std::nullopt);
}

HttpBody HttpsClient::MorvHttpsPost(std::string_view url, std::string_view headers, std::string_view body) {
  return morv_https_do("POST", url, headers, std::string(body));
}

std::string HttpsClient::MorvOpenAIChat(std::string_view base_url, std::string_view api_key,
                                        std::string_view model, std::string_view prompt, size_t capacity) {
  auto parsed = ParseHttpUrl(base_url);
  if (!parsed) return "";
  HttpRequest request;
  request.method = "POST";
  request.path = ChatPath(parsed->rest);
  request.url = std::move(*parsed);
  request.extra_headers = "Content-Type: application/json\r\n";
  // A key often comes from a file, with the end of its line; what stands behind that is no header.
  const std::string_view key = api_key.substr(0, api_key.find_first_of("\r\n"));
  if (!key.empty()) request.extra_headers.append("Authorization: Bearer ").append(key).append(kLineEnd);
  request.body = "{\"model\":\"" + MorvJsonEscape(model, 2 * model.size() + 8) +
                 "\",\"messages\":[{\"role\":\"user\",\"content\":\"" +
                 MorvJsonEscape(prompt, 6 * prompt.size() + 8) + "\"}]}";
  request.max_bytes = kChatAnswerLimit;
  request.allow_private = true;
  const auto answer = MorvHttpTransport(request, tls_, last_status_);
  if (!answer) return "";
  std::string reply = MorvJsonGet(answer->text(), "choices.0.message.content", capacity);
  return reply.empty() ? std::string(answer->text()) : reply;
}

}  // namespace vorc
