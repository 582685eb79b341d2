#include "lib/streams.h"

#include <optional>

namespace vorc {

namespace {

// Many files may be open at once, most of them for their first few lines.
constexpr size_t kStreamBlock = size_t{16} * 1024;

}  // namespace

Streams::Stream::Stream(File file) : reader(std::move(file), kStreamBlock) {}

int32_t Streams::MorvFopen(const std::string& path) {
  File file = OpenForReading(path);
  return file ? streams_.Create(std::move(file)) : 0;
}

std::string Streams::MorvFgets(int32_t handle, size_t limit) {
  Stream* stream = streams_.Find(handle);
  if (stream == nullptr || stream->at_end) return {};
  const std::optional<std::string_view> piece = stream->reader.NextPiece(limit - 1);
  stream->at_end = !piece;
  return piece ? std::string(*piece) : std::string();
}

bool Streams::MorvFeof(int32_t handle) const {
  const Stream* stream = streams_.Find(handle);
  return stream == nullptr || stream->at_end;
}

void Streams::MorvFclose(int32_t handle) {
  streams_.Free(handle);
}

}  // namespace vorc
