#include "lib/streams.h"

#include <optional>
#include <utility>

#include "base/handle_table.h"
#include "lib/reading.h"

namespace vorc {

namespace {

// Many files may be open at once, most of them for their first few lines.
constexpr size_t kStreamBlock = size_t{16} * 1024;

struct Stream {
  explicit Stream(File file) : reader(std::move(file), kStreamBlock) {}
  LineReader reader;
  bool at_end = false;
};

HandleTable<Stream>& Streams() {
  static HandleTable<Stream> streams;
  return streams;
}

}  // namespace

int32_t MorvFopen(const std::string& path) {
  File file = OpenForReading(path);
  return file ? Streams().Create(std::move(file)) : 0;
}

std::string MorvFgets(int32_t handle, size_t limit) {
  Stream* stream = Streams().Find(handle);
  if (stream == nullptr || stream->at_end) return {};
  const std::optional<std::string_view> piece = stream->reader.NextPiece(limit - 1);
  stream->at_end = !piece;
  return piece ? std::string(*piece) : std::string();
}

bool MorvFeof(int32_t handle) {
  const Stream* stream = Streams().Find(handle);
  return stream == nullptr || stream->at_end;
}

void MorvFclose(int32_t handle) {
  Streams().Free(handle);
}

}  // namespace vorc
