#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>

#include "base/file.h"
#include "output/pic_rewrite.h"

namespace vorc {
namespace {

struct Text {
  std::unique_ptr<char[]> bytes;
  size_t size = 0;
};

/// The whole file, without bytes if it can't be read.
Text ReadWhole(const std::string& path) {
  const File file(std::fopen(path.c_str(), "rb"));
  std::error_code error;
  const uintmax_t size = std::filesystem::file_size(path, error);
  if (!file || error) return {};
  Text text = {std::unique_ptr<char[]>(new (std::nothrow) char[size + 1]), size};
  if (!text.bytes || std::fread(text.bytes.get(), 1, size, file.get()) != size) return {};
  return text;
}

}  // namespace

bool PicRewriteAsmFile(const std::string& path, int pointer_bytes, PicCounts& counts) {
  counts = {};
  if (pointer_bytes != 4 && pointer_bytes != 8) return false;
  const Text text = ReadWhole(path);
  const std::string copy_path = path + ".pictmp";
  File copy(text.bytes ? std::fopen(copy_path.c_str(), "wb") : nullptr);
  if (!copy) return false;
  bool written = true;
  PicRewrite({text.bytes.get(), text.size}, pointer_bytes, counts, [&](std::string_view piece) {
    written = written && std::fwrite(piece.data(), 1, piece.size(), copy.get()) == piece.size();
  });
  written = std::fclose(copy.release()) == 0 && written;
  if (written && std::rename(copy_path.c_str(), path.c_str()) == 0) return true;
  std::remove(copy_path.c_str());
  return false;
}

}  // namespace vorc
