#include "lib/crypto.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/sha.h>

#include <random>

#include "lib/base64.h"
#include "lib/hex.h"
#include "lib/script_tags.h"
#include "lib/sha256.h"
#include "temp_folder.h"

namespace vorc {
namespace {

constexpr size_t kCapacity = 4096;
const std::string kKey = "0b30557a9fc4e90e33587da2c7ec11365b80a5caef14395e83a8cdf2173c6186";

std::string Noise(size_t length) {
  static std::mt19937 random(1);
  std::string text(length, '\0');
  for (char& byte : text) byte = static_cast<char>(random());
  return text;
}

const uint8_t* Bytes(const std::string& text) {
  return reinterpret_cast<const uint8_t*>(text.data());
}

// The oracle of all hashing here is a second implementation.
Sha256Digest Expected(const std::string& text) {
  Sha256Digest digest;
  SHA256(Bytes(text), text.size(), digest.data());
  return digest;
}

TEST(Sha256, AgreesForAllLengthsAndPieces) {
  EXPECT_EQ(MorvSha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(MorvSha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(MorvSha256Base64("abc"), "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
  for (size_t length = 0; length < 300; ++length) {
    const std::string text = Noise(length);
    EXPECT_EQ(Sha256Of(text), Expected(text)) << length;
    Sha256 pieces;
    for (size_t at = 0; at < length; at += length % 70 + 1) {
      pieces.Update(std::string_view(text).substr(at, length % 70 + 1));
    }
    EXPECT_EQ(pieces.Finish(), Expected(text)) << length;
  }
}

TEST(Sha256, PortableAndFastBlocksAgree) {
  Sha256State portable = kSha256Start;
  Sha256State fast = kSha256Start;
  for (size_t count = 0; count < 20; ++count) {
    const std::string blocks = Noise(count * kSha256BlockSize);
    Sha256BlocksPortable(portable, Bytes(blocks), count);
    FastestSha256Blocks()(fast, Bytes(blocks), count);
    ASSERT_EQ(portable, fast) << count;
  }
}

TEST(Hmac, AgreesForAllKeyLengths) {
  EXPECT_EQ(MorvHmacSha256Hex("key", "The quick brown fox jumps over the lazy dog"),
            "f7bc83f430538424b13298e6aa6fb143ef4d59a14946175997479dbc2d1a3cd8");
  for (const size_t length : {0, 1, 31, 32, 63, 64, 65, 128, 1000}) {
    const std::string key = Noise(length);
    const std::string text = Noise(length * 3);
    Sha256Digest digest;
    HMAC(EVP_sha256(), key.data(), static_cast<int>(length), Bytes(text), text.size(), digest.data(),
         nullptr);
    EXPECT_EQ(MorvHmacSha256Hex(key, text), HexText(digest)) << length;
  }
}

TEST(Pbkdf2, AgreesAndRefusesWhatIsOutOfRange) {
  for (const int iterations : {1, 2, 3, 1000}) {
    for (const size_t length : {0, 7, 64, 65, 256}) {
      const std::string password = Noise(length);
      const std::string salt = Noise(length);
      Sha256Digest digest;
      PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(length), Bytes(salt), static_cast<int>(length),
                        iterations, EVP_sha256(), 32, digest.data());
      EXPECT_EQ(MorvPbkdf2Hex(password, HexText({Bytes(salt), length}), iterations), HexText(digest))
          << length;
    }
  }
  for (const char* salt : {"0", "0g", "zz", "00 00", "0x00"})
    EXPECT_EQ(MorvPbkdf2Hex("p", salt, 1), "") << salt;
  EXPECT_EQ(MorvPbkdf2Hex("p", std::string(514, '0'), 1), "");
  for (const int iterations : {0, -1, 10'000'001, INT32_MIN})
    EXPECT_EQ(MorvPbkdf2Hex("p", "00", iterations), "");
  EXPECT_EQ(MorvPbkdf2Hex("p", "aB", 5), MorvPbkdf2Hex("p", "Ab", 5));
}

TEST(RandomHex, GivesWholeTextsOrNone) {
  for (const int count : {1, 16, 2047}) EXPECT_EQ(MorvRandomHex(count, kCapacity).size(), count * 2U);
  for (const int count : {0, -1, INT32_MIN, 2048, INT32_MAX}) EXPECT_EQ(MorvRandomHex(count, kCapacity), "");
  EXPECT_NE(MorvRandomHex(16, kCapacity), MorvRandomHex(16, kCapacity));
}

TEST(Base64, EncodesAndDecodes) {
  const struct {
    std::string bytes;
    const char* text;
  } cases[] = {
      {"", ""},
      {"f", "Zg=="},
      {"fo", "Zm8="},
      {"foo", "Zm9v"},
      {"fooba", "Zm9vYmE="},
      {"\xfb\xff\xbf", "+/+/"},
      {std::string("\0\0\0\0", 4), "AAAAAA=="},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(MorvBase64Encode(each.bytes), each.text);
    EXPECT_EQ(MorvBase64Decode(each.text), each.bytes);
  }
  EXPECT_EQ(MorvBase64Encode("foo", 5), "Zm9v");
  EXPECT_EQ(MorvBase64Encode("foo", 4), "");
}

TEST(Base64, DecodesBrokenTextAsFarAsItGoes) {
  const struct {
    std::string text;
    const char* bytes;
  } cases[] = {
      {"Zm9v\r\n YmFy\t", "foobar"},
      {"Z\nm 9\tv YmFyZm9v", "foobarfoo"},
      {"Zm9vYm", "foob"},
      {"Zm9vY", "foo"},
      {"Z", ""},
      {"Zm9v=YmFy", "foo"},
      {"Zm9vYm-Fy", "foob"},
      {"Zm9v\xc3\xa9YmFy", "foo"},
      {std::string("Zm9v\0YmFy", 9), "foo"},
      {"====", ""},
  };
  for (const auto& each : cases) EXPECT_EQ(MorvBase64Decode(each.text), each.bytes) << each.text;
  for (size_t length = 0; length < 100; ++length) {
    const std::string bytes = Noise(length);
    EXPECT_EQ(MorvBase64Decode(MorvBase64Encode(bytes)), bytes);
  }
}

TEST(Seal, OpensWhatItSealed) {
  std::string upper = kKey;
  for (char& digit : upper) digit = static_cast<char>(std::toupper(digit));
  for (const size_t length : {0, 1, 15, 16, 17, 1000, 3041}) {
    const std::string text = Noise(length);
    const std::string sealed = MorvEncrypt(kKey, text, kCapacity);
    EXPECT_EQ(MorvBase64Decode(sealed).size(), length + 28);
    EXPECT_EQ(MorvDecrypt(upper, sealed, kCapacity), text) << length;
    EXPECT_NE(MorvEncrypt(kKey, text, kCapacity), sealed);
  }
  EXPECT_EQ(MorvDecrypt(kKey, "AAECAwQFBgcICQoLo6A9/sNkn5fwLM1FONe81scQsmhuUJueSZa+Uw==", kCapacity),
            "hello, world");
}

TEST(Seal, RefusesBadKeysAndWhatDoesNotFit) {
  const std::string sealed = MorvEncrypt(kKey, "text", kCapacity);
  for (const std::string& key :
       {kKey.substr(1), kKey.substr(2), kKey + "00", std::string(64, 'g'), std::string()}) {
    EXPECT_EQ(MorvEncrypt(key, "text", kCapacity), "") << key;
    EXPECT_EQ(MorvDecrypt(key, sealed, kCapacity), "") << key;
  }
  EXPECT_EQ(MorvEncrypt(kKey, std::string(3042, 'x'), kCapacity), "");
  EXPECT_EQ(MorvDecrypt(kKey, sealed, 5), "text");
  EXPECT_EQ(MorvDecrypt(kKey, sealed, 4), "");
  EXPECT_EQ(MorvDecrypt(std::string(64, '0'), sealed, kCapacity), "");
}

TEST(Seal, NoticesEveryFlippedBitAndEveryCut) {
  const std::string bytes = MorvBase64Decode(MorvEncrypt(kKey, "some text", kCapacity));
  for (size_t bit = 0; bit < bytes.size() * 8; ++bit) {
    std::string changed = bytes;
    changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ 1 << bit % 8);
    EXPECT_EQ(MorvDecrypt(kKey, MorvBase64Encode(changed), kCapacity), "") << bit;
  }
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(MorvDecrypt(kKey, MorvBase64Encode(bytes.substr(0, length)), kCapacity), "") << length;
  }
}

TEST(ScriptTags, RememberEachTextOnce) {
  ScriptTags tags;
  TempFolder folder;
  const std::string file = folder.Write("a.js", "alert('a')\r\n");
  const std::string source = "'sha256-" + MorvSha256Base64("alert('a')\r\n") + "'";
  EXPECT_EQ(tags.MorvScriptTag(folder / "missing.js"), "");
  EXPECT_EQ(tags.MorvScriptSrc(folder.path()), "");
  EXPECT_EQ(tags.MorvScriptSrcs(1400), "");
  EXPECT_EQ(tags.MorvScriptTag(file), "<script>alert('a')\r\n</script>");
  EXPECT_EQ(tags.MorvScriptTag(file), "<script>alert('a')\r\n</script>");
  EXPECT_EQ(tags.MorvScriptSrc(file), source);
  EXPECT_EQ(tags.MorvScriptSrcs(1400), source);

  // What stands behind a NUL never reaches the page.
  EXPECT_EQ(tags.MorvScriptTag(folder.Write("nul.js", std::string("b\0c", 3))), "<script>b</script>");
  const std::string both = source + " 'sha256-" + MorvSha256Base64("b") + "'";
  EXPECT_EQ(tags.MorvScriptSrcs(1400), both);
  EXPECT_EQ(tags.MorvScriptSrcs(both.size()), source);

  for (int i = 0; i < 20; ++i)
    EXPECT_EQ(tags.MorvScriptSrc(folder.Write("c.js", std::to_string(i))).size(), 53U);
  EXPECT_EQ(tags.MorvScriptSrcs(1400).size(), 16U * 53 + 15);
}

}  // namespace
}  // namespace vorc
