#include "net/http_body.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "base/reserved_memory.h"

namespace vorc {

namespace {

constexpr size_t kFirstBuffer = 65536;
constexpr size_t kShortestHead = 13;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kHeadEnd = "\r\n\r\n";
constexpr std::string_view kSkippedByStrtol = " \t\n\v\f\r";

int32_t StatusOf(std::string_view answer) {
  if (answer.size() < kShortestHead || !answer.starts_with("HTTP/")) return 0;
  const size_t blank = answer.find(' ');
  if (blank == std::string_view::npos) return 0;
  return static_cast<int32_t>(std::strtol(answer.data() + blank + 1, nullptr, 10));
}

bool IsChunked(std::string head) {
  std::ranges::transform(head, head.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
  return head.find("transfer-encoding:") != std::string::npos && head.find("chunked") != std::string::npos;
}

/// The sizes of chunks. A number may stand behind any amount of white space and is read once,
/// however many places in front of it are asked for.
class ChunkSizes {
 public:
  explicit ChunkSizes(std::string_view body) : body_(body) {}

  long At(size_t place) {
    if (place > number_ || number_ == std::string_view::npos) {
      number_ = std::min(body_.find_first_not_of(kSkippedByStrtol, place), body_.size());
      size_ = std::strtol(body_.data() + number_, nullptr, 16);
    }
    return size_;
  }

 private:
  std::string_view body_;
  size_t number_ = std::string_view::npos;
  long size_ = 0;
};

}  // namespace

std::span<char> ReceivedBytes::Room(size_t limit) {
  if (size_ >= limit) return {};
  if (size_ == capacity_) {
    // Address space costs nothing: what is more than a page or two gets all that it may need.
    const size_t wanted = capacity_ == 0 ? std::min(kFirstBuffer, limit) : limit;
    auto* memory = static_cast<char*>(std::realloc(memory_.get(), wanted + 1));
    if (memory == nullptr) return {};
    (void)memory_.release();
    memory_.reset(memory);
    UseLargePages(memory, wanted);
    capacity_ = wanted;
  }
  return {memory_.get() + size_, std::min(capacity_, limit) - size_};
}

std::span<char> ReceivedBytes::Terminated() {
  if (memory_ == nullptr) return {};
  memory_.get()[size_] = '\0';
  return {memory_.get(), size_};
}

size_t DecodeChunks(std::span<char> body) {
  const std::string_view text(body.data(), body.size());
  ChunkSizes sizes(text);
  size_t decoded = 0;
  size_t place = 0;
  while (true) {
    const long size = sizes.At(place);
    const size_t line_end = size < 1 ? std::string_view::npos : text.find(kLineEnd, place);
    if (line_end == std::string_view::npos) break;
    place = line_end + kLineEnd.size();
    if (static_cast<size_t>(size) > text.size() - place) break;
    std::memmove(&body[decoded], text.data() + place, static_cast<size_t>(size));
    decoded += static_cast<size_t>(size);
    place += static_cast<size_t>(size);
    if (text.size() - place >= 2 && text[place] == '\r') place += text[place + 1] == '\n' ? 2 : 1;
  }
  return decoded;
}

std::optional<HttpBody> HttpBody::Of(ReceivedBytes answer, int32_t& status) {
  status = 0;
  const std::span<char> bytes = answer.Terminated();
  const std::string_view whole(bytes.data(), bytes.size());
  const size_t head_end = whole.find(kHeadEnd);
  if (head_end == std::string_view::npos) return std::nullopt;
  status = StatusOf(whole);
  std::span<char> content = bytes.subspan(head_end + kHeadEnd.size());
  if (IsChunked(std::string(whole.substr(0, head_end)))) content = content.first(DecodeChunks(content));
  HttpBody body;
  body.bytes_ = std::move(answer);
  body.text_ = {content.data(), content.size()};
  body.text_ = body.text_.substr(0, body.text_.find('\0'));
  return body;
}

}  // namespace vorc
