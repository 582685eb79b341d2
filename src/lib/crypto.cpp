#include "lib/crypto.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "base/descriptor.h"
#include "lib/base64.h"
#include "lib/hex.h"
#include "lib/sha256.h"

namespace vorc {

namespace {

constexpr int32_t kMaxIterations = 10'000'000;
constexpr size_t kMaxSalt = 256;
constexpr size_t kKeySize = 32;
constexpr size_t kNonceSize = 12;
constexpr size_t kTagSize = 16;
constexpr size_t kSealSize = kNonceSize + kTagSize;

std::string_view AsText(std::span<const uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

const uint8_t* AsBytes(std::string_view text) {
  return reinterpret_cast<const uint8_t*>(text.data());
}

/// The two padded forms of an HMAC key, each as one block.
struct HmacKey {
  using Block = std::array<uint8_t, kSha256BlockSize>;

  explicit HmacKey(std::string_view key) {
    Block padded{};
    if (key.size() > padded.size())
      std::ranges::copy(Sha256Of(key), padded.begin());
    else
      std::ranges::copy(key, padded.begin());
    std::ranges::transform(padded, inner.begin(), [](uint8_t byte) { return byte ^ 0x36; });
    std::ranges::transform(padded, outer.begin(), [](uint8_t byte) { return byte ^ 0x5c; });
    explicit_bzero(padded.data(), padded.size());
  }
  HmacKey(const HmacKey&) = delete;
  ~HmacKey() {
    explicit_bzero(inner.data(), inner.size());
    explicit_bzero(outer.data(), outer.size());
  }

  Block inner;
  Block outer;
};

Sha256Digest HmacSha256(const HmacKey& key, std::string_view text) {
  Sha256 inner;
  inner.Update(AsText(key.inner));
  inner.Update(text);
  Sha256 outer;
  outer.Update(AsText(key.outer));
  outer.Update(AsText(inner.Finish()));
  return outer.Finish();
}

/// HMAC of 32 bytes again and again. The padded keys are hashed once, and a message of this length
/// is a single block together with its padding: two blocks of work for each call.
class HmacChain {
 public:
  explicit HmacChain(const HmacKey& key) {
    work_(inner_, key.inner.data(), 1);
    work_(outer_, key.outer.data(), 1);
    constexpr size_t kMessageBits = (kSha256BlockSize + sizeof(Sha256Digest)) * 8;
    block_[sizeof(Sha256Digest)] = 0x80;
    block_[kSha256BlockSize - 2] = kMessageBits >> 8;
    block_[kSha256BlockSize - 1] = kMessageBits & 0xff;
  }

  Sha256Digest Next(const Sha256Digest& message) { return Hash(outer_, Hash(inner_, message)); }

 private:
  Sha256Digest Hash(Sha256State state, const Sha256Digest& message) {
    std::ranges::copy(message, block_.begin());
    work_(state, block_.data(), 1);
    return Sha256Bytes(state);
  }

  const Sha256BlockFunction work_ = FastestSha256Blocks();
  Sha256State inner_ = kSha256Start;
  Sha256State outer_ = kSha256Start;
  HmacKey::Block block_{};
};

Sha256Digest Pbkdf2(std::string_view password, std::span<const uint8_t> salt, int32_t iterations) {
  std::string first(AsText(salt));
  first.append({'\0', '\0', '\0', '\1'});
  const HmacKey key(password);
  HmacChain chain(key);
  Sha256Digest round = HmacSha256(key, first);
  Sha256Digest sum = round;
  for (int32_t i = 1; i < iterations; ++i) {
    round = chain.Next(round);
    for (size_t k = 0; k < sum.size(); ++k) sum[k] ^= round[k];
  }
  return sum;
}

bool FillRandom(std::span<uint8_t> bytes) {
  const Descriptor source(open("/dev/urandom", O_RDONLY | O_CLOEXEC));
  while (source && !bytes.empty()) {
    const ssize_t count = RetryInterrupted([&] { return read(source.get(), bytes.data(), bytes.size()); });
    if (count <= 0) return false;
    bytes = bytes.subspan(static_cast<size_t>(count));
  }
  return bytes.empty();
}

/// A key of 32 bytes, wiped after use.
class SealKey {
 public:
  /// Nothing unless the text is exactly 64 hexadecimal digits.
  static std::optional<SealKey> FromHex(std::string_view hex) {
    auto bytes = MorvHexToBytes(hex, kKeySize);
    if (!bytes || bytes->size() != kKeySize) return std::nullopt;
    return SealKey(std::move(*bytes));
  }
  SealKey(SealKey&&) = default;
  ~SealKey() {
    if (!bytes_.empty()) explicit_bzero(bytes_.data(), bytes_.size());
  }

  const uint8_t* data() const { return bytes_.data(); }

 private:
  explicit SealKey(std::vector<uint8_t> bytes) : bytes_(std::move(bytes)) {}

  std::vector<uint8_t> bytes_;
};

/// What is used of the library of ciphers. It is loaded at its first use: few scripts need it, and
/// binding its names would be most of what starting this program takes.
class CipherLibrary {
 public:
  /// Null where the host doesn't have the library.
  static const CipherLibrary* Get() {
    static const CipherLibrary library;
    return library.complete_ ? &library : nullptr;
  }

  decltype(&EVP_CIPHER_CTX_new) context_new = nullptr;
  decltype(&EVP_CIPHER_CTX_free) context_free = nullptr;
  decltype(&EVP_CIPHER_CTX_ctrl) context_control = nullptr;
  decltype(&EVP_aes_256_gcm) aes_256_gcm = nullptr;
  decltype(&EVP_CipherInit_ex) start = nullptr;
  decltype(&EVP_CipherUpdate) update = nullptr;
  decltype(&EVP_CipherFinal_ex) finish = nullptr;

 private:
  static constexpr const char* kName = "libcrypto.so.3";

  CipherLibrary() {
    void* library = dlopen(kName, RTLD_NOW | RTLD_LOCAL);
    complete_ = library != nullptr && Find(library, "EVP_CIPHER_CTX_new", &context_new) &&
                Find(library, "EVP_CIPHER_CTX_free", &context_free) &&
                Find(library, "EVP_CIPHER_CTX_ctrl", &context_control) &&
                Find(library, "EVP_aes_256_gcm", &aes_256_gcm) &&
                Find(library, "EVP_CipherInit_ex", &start) && Find(library, "EVP_CipherUpdate", &update) &&
                Find(library, "EVP_CipherFinal_ex", &finish);
  }

  template <typename Function>
  static bool Find(void* library, const char* name, Function* function) {
    *function = reinterpret_cast<Function>(dlsym(library, name));
    return *function != nullptr;
  }

  bool complete_ = false;
};

struct CipherFree {
  void operator()(EVP_CIPHER_CTX* cipher) const { CipherLibrary::Get()->context_free(cipher); }
};
using Cipher = std::unique_ptr<EVP_CIPHER_CTX, CipherFree>;

enum class Direction { kOpen = 0, kSeal = 1 };

// Null on failure. 12 bytes of nonce are what this mode takes unless told otherwise.
Cipher StartCipher(const SealKey& key, const uint8_t* nonce, Direction direction) {
  const CipherLibrary* library = CipherLibrary::Get();
  if (library == nullptr) return nullptr;
  Cipher cipher(library->context_new());
  if (cipher == nullptr || library->start(cipher.get(), library->aes_256_gcm(), nullptr, key.data(), nonce,
                                          static_cast<int>(direction)) != 1) {
    return nullptr;
  }
  return cipher;
}

// Works `from` into `to`, which has the same size. This mode holds nothing back for the final call.
bool RunCipher(EVP_CIPHER_CTX* cipher, std::string_view from, uint8_t* to) {
  int written = 0;
  return from.empty() || CipherLibrary::Get()->update(cipher, to, &written, AsBytes(from),
                                                      static_cast<int>(from.size())) == 1;
}

bool FinishCipher(EVP_CIPHER_CTX* cipher) {
  uint8_t unused[EVP_MAX_BLOCK_LENGTH];
  int written = 0;
  return CipherLibrary::Get()->finish(cipher, unused, &written) == 1;
}

bool SetTag(EVP_CIPHER_CTX* cipher, std::string_view tag) {
  std::array<char, kTagSize> copy{};
  std::ranges::copy(tag, copy.begin());
  return CipherLibrary::Get()->context_control(cipher, EVP_CTRL_GCM_SET_TAG, kTagSize, copy.data()) == 1;
}

}  // namespace

std::string MorvSha256Hex(std::string_view text) {
  return HexText(Sha256Of(text));
}

std::string MorvSha256Base64(std::string_view text) {
  return MorvBase64Encode(AsText(Sha256Of(text)));
}

std::string MorvHmacSha256Hex(std::string_view key, std::string_view text) {
  return HexText(HmacSha256(HmacKey(key), text));
}

std::string MorvPbkdf2Hex(std::string_view password, std::string_view salt_hex, int32_t iterations) {
  if (iterations < 1 || iterations > kMaxIterations) return {};
  const auto salt = salt_hex.empty() ? std::vector<uint8_t>() : MorvHexToBytes(salt_hex, kMaxSalt);
  if (!salt) return {};
  return HexText(Pbkdf2(password, *salt, iterations));
}

std::string MorvRandomHex(int32_t count, size_t capacity) {
  if (count < 1 || static_cast<size_t>(count) * 2 >= capacity) return {};
  std::vector<uint8_t> bytes(static_cast<size_t>(count));
  return FillRandom(bytes) ? HexText(bytes) : std::string();
}

std::string MorvEncrypt(std::string_view key_hex, std::string_view text, size_t capacity) {
  const auto key = SealKey::FromHex(key_hex);
  if (!key || text.size() >= capacity) return {};
  std::vector<uint8_t> sealed(kSealSize + text.size());
  uint8_t* nonce = sealed.data();
  uint8_t* tag = nonce + kNonceSize;
  if (!FillRandom({nonce, kNonceSize})) return {};
  const Cipher cipher = StartCipher(*key, nonce, Direction::kSeal);
  if (cipher == nullptr || !RunCipher(cipher.get(), text, tag + kTagSize) || !FinishCipher(cipher.get()) ||
      CipherLibrary::Get()->context_control(cipher.get(), EVP_CTRL_GCM_GET_TAG, kTagSize, tag) != 1) {
    return {};
  }
  return MorvBase64Encode(AsText(sealed), capacity);
}

std::string MorvDecrypt(std::string_view key_hex, std::string_view sealed, size_t capacity) {
  const auto key = SealKey::FromHex(key_hex);
  if (!key) return {};
  const std::string bytes = MorvBase64Decode(sealed);
  if (bytes.size() < kSealSize || bytes.size() - kSealSize >= capacity) return {};
  const std::string_view tag = std::string_view(bytes).substr(kNonceSize, kTagSize);
  const std::string_view hidden = std::string_view(bytes).substr(kSealSize);
  std::string text(hidden.size(), '\0');
  const Cipher cipher = StartCipher(*key, AsBytes(bytes), Direction::kOpen);
  if (cipher != nullptr && RunCipher(cipher.get(), hidden, reinterpret_cast<uint8_t*>(text.data())) &&
      SetTag(cipher.get(), tag) && FinishCipher(cipher.get())) {
    return text;
  }
  explicit_bzero(text.data(), text.size());
  return {};
}

}  // namespace vorc
