#include "lib/whole_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <optional>

#include "lib/file_rewrite.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

bool Replace(const std::string& path, FunctionRef<bool(PieceWriter)> produce) {
  std::optional<FileRewrite> file = FileRewrite::Open(path);
  if (!file || !file->Writable() || !file->Begin()) return false;
  return produce([&](std::string_view piece) { return file->Append(piece); }) && file->Commit();
}

}  // namespace

bool MorvWriteWholeFile(const std::string& path, FunctionRef<bool(PieceWriter)> produce) {
  struct stat status;
  const bool exists = stat(path.c_str(), &status) == 0;
  if (exists && S_ISREG(status.st_mode)) return Replace(path, produce);
  File file = MorvSafeFopen(path, "wb");
  if (!file) return false;
  const bool produced = produce([&](std::string_view piece) {
    return std::fwrite(piece.data(), 1, piece.size(), file.get()) == piece.size();
  });
  if (std::fclose(file.release()) == 0 && produced) return true;
  const auto place = exists ? std::nullopt : MorvSafePlace(path);
  if (place) unlinkat(place->folder.get(), place->name.c_str(), 0);
  return false;
}

}  // namespace vorc
