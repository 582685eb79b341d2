#include "lib/file_replace.h"

#include <optional>

#include "base/text_search.h"
#include "lib/file_rewrite.h"

namespace vorc {

namespace {

constexpr size_t kOutputBlock = size_t{256} * 1024;

bool Flush(std::string& pending, FileRewrite& file) {
  const bool written = file.Append(pending);
  pending.clear();
  return written;
}

// Writes the text with `from` replaced by `to`; answers the count of replacements.
std::optional<int32_t> WriteReplaced(std::string_view text, std::string_view from, std::string_view to,
                                     FileRewrite& out) {
  std::string pending;
  int32_t count = 0;
  size_t at = 0;
  for (size_t hit; (hit = FindBytes(text, from, at)) != std::string_view::npos; at = hit + from.size()) {
    pending.append(text, at, hit - at).append(to);
    ++count;
    if (pending.size() >= kOutputBlock && !Flush(pending, out)) return std::nullopt;
  }
  pending.append(text, at);
  if (!Flush(pending, out)) return std::nullopt;
  return count;
}

}  // namespace

int32_t MorvFileReplace(const std::string& path, std::string_view from, std::string_view to) {
  if (from.empty()) return -1;
  std::optional<FileRewrite> file = FileRewrite::Open(path);
  const std::optional<std::string> text = file ? file->Read() : std::nullopt;
  if (!text) return -1;
  if (FindBytes(*text, from) == std::string_view::npos) return 0;
  if (!file->Begin()) return -1;
  const std::optional<int32_t> count = WriteReplaced(*text, from, to, *file);
  return count && file->Commit() ? *count : -1;
}

}  // namespace vorc
