#include "base/text_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

namespace vorc {

bool TextWriter::Open(const std::string& path) {
  Close();
  constexpr int kReadAndWriteForAll = 0666;
  return Open(Descriptor(RetryInterrupted(
      [&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kReadAndWriteForAll); })));
}

bool TextWriter::Open(Descriptor file) {
  Close();
  file_ = std::move(file);
  if (!file_) return false;
  failed_ = false;
  return true;
}

bool TextWriter::Close() {
  if (!file_) return !failed_;
  if (buffer_ != nullptr) Flush();
  buffer_.reset();
  if (close(file_.Release()) != 0) failed_ = true;
  used_ = kCapacity;
  return !failed_;
}

void TextWriter::Put(Padded number) {
  char digits[kLongestNumber];
  const auto end = std::to_chars(digits, digits + kLongestNumber, number.value).ptr;
  std::string_view text(digits, static_cast<size_t>(end - digits));
  if (text.starts_with('-')) {
    Put('-');
    text.remove_prefix(1);
    --number.width;
  }
  for (auto missing = number.width - static_cast<int>(text.size()); missing > 0; --missing) Put('0');
  Put(text);
}

void TextWriter::Put(Hex number) {
  char digits[kLongestNumber];
  const auto end = std::to_chars(digits, digits + kLongestNumber, number.value, 16).ptr;
  for (auto missing = number.width - static_cast<int>(end - digits); missing > 0; --missing) Put('0');
  std::transform(digits, end, digits, [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
  Put(std::string_view(digits, static_cast<size_t>(end - digits)));
}

void TextWriter::PutLong(std::string_view text) {
  if (!file_) return;
  Flush();
  if (text.size() <= kCapacity) return Put(text);
  WriteOut(text);
}

void TextWriter::Flush() {
  if (buffer_ == nullptr)
    buffer_ = std::make_unique_for_overwrite<char[]>(kCapacity);
  else
    WriteOut({buffer_.get(), used_});
  used_ = 0;
}

void TextWriter::WriteOut(std::string_view text) {
  while (!text.empty() && !failed_) {
    const ssize_t written = RetryInterrupted([&] { return write(file_.get(), text.data(), text.size()); });
    failed_ = written <= 0;
    if (!failed_) text.remove_prefix(static_cast<size_t>(written));
  }
}

}  // namespace vorc
