#include "lib/sha256.h"

#include <algorithm>

namespace vorc {

Sha256Digest Sha256Bytes(const Sha256State& state) {
  Sha256Digest digest;
  for (size_t i = 0; i < digest.size(); ++i) {
    digest[i] = static_cast<uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
  }
  return digest;
}

void Sha256::Update(std::string_view bytes) {
  bit_count_ += uint64_t{bytes.size()} * 8;
  const auto* from = reinterpret_cast<const uint8_t*>(bytes.data());
  size_t left = bytes.size();
  const Sha256BlockFunction work = FastestSha256Blocks();
  if (fill_ > 0) {
    const size_t taken = std::min(left, block_.size() - fill_);
    std::copy_n(from, taken, block_.data() + fill_);
    fill_ += static_cast<uint32_t>(taken);
    from += taken;
    left -= taken;
    if (fill_ < block_.size()) return;
    work(state_, block_.data(), 1);
    fill_ = 0;
  }
  const size_t whole = left / kSha256BlockSize;
  work(state_, from, whole);
  fill_ = static_cast<uint32_t>(left % kSha256BlockSize);
  std::copy_n(from + whole * kSha256BlockSize, fill_, block_.data());
}

Sha256Digest Sha256::Finish() {
  const uint64_t bit_count = bit_count_;
  static constexpr char kPadding[kSha256BlockSize] = {'\x80'};
  const size_t room = kSha256BlockSize - 8;
  const size_t padding = fill_ < room ? room - fill_ : room + kSha256BlockSize - fill_;
  Update(std::string_view(kPadding, padding));
  char length[8];
  for (size_t i = 0; i < 8; ++i) length[i] = static_cast<char>(bit_count >> (56 - 8 * i));
  Update(std::string_view(length, sizeof length));
  return Sha256Bytes(state_);
}

Sha256Digest Sha256Of(std::string_view bytes) {
  Sha256 hash;
  hash.Update(bytes);
  return hash.Finish();
}

}  // namespace vorc
