#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "codec/checksums.h"
#include "codec/vzip.h"
#include "plain_deflate.h"

namespace {

using namespace vorc;

using Bytes = std::vector<uint8_t>;
using Work = VzStatus (*)(std::span<const uint8_t>, std::span<uint8_t>, size_t&);

struct Answer {
  VzStatus status;
  Bytes bytes;
};

// The target is exactly as large as told, for a sanitizer to see each byte beyond.
Answer Applied(Work work, const Bytes& source, size_t capacity) {
  Bytes target(capacity + (capacity == 0));
  size_t written = 0;
  const VzStatus status = work(source, std::span(target).first(capacity), written);
  EXPECT_LE(written, capacity);
  target.resize(written);
  return {status, target};
}

Bytes Compressed(Work work, const Bytes& source) {
  const Answer answer = Applied(work, source, vz_bound(source.size()));
  EXPECT_EQ(answer.status, kVzOk);
  return answer.bytes;
}

Bytes FromHex(std::string_view hex) {
  Bytes bytes;
  for (size_t i = 0; i + 2 <= hex.size(); i += 2) {
    bytes.push_back(static_cast<uint8_t>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
  }
  return bytes;
}

// Words from a small stock, so that matches of all lengths and distances come up.
Bytes RandomText(uint32_t seed, size_t size, unsigned symbols) {
  std::mt19937 random(seed);
  Bytes text;
  while (text.size() < size) {
    const size_t past = text.size();
    const size_t length = std::min<size_t>(random() % 8 == 0 ? random() % 400 : random() % 6, past);
    const size_t from = length == 0 ? 0 : random() % (past - length + 1);
    for (size_t i = 0; i < length; ++i) text.push_back(text[from + i]);
    text.push_back(static_cast<uint8_t>(random() % symbols));
  }
  text.resize(size);
  return text;
}

TEST(Deflate, WritesWhatThePlainOneWrites) {
  std::vector<Bytes> texts = {Bytes(300, 'a'), Bytes(258, 'a'), Bytes(3, 'a'), Bytes(1, 200)};
  for (uint32_t seed = 0; seed < 60; ++seed) {
    texts.push_back(RandomText(seed, seed * seed * 30 + seed % 9, 1U << seed % 8));
  }
  for (const size_t period : {32767U, 32768U, 32769U}) {
    Bytes text = RandomText(7, period, 100);
    for (int i = 0; i < 300; ++i) text.push_back(text[text.size() - period]);
    texts.push_back(text);
  }
  for (const Bytes& text : texts) {
    if (text.empty()) continue;
    const Bytes plain = PlainDeflate::Compress(text);
    if (plain.size() >= text.size() + text.size() / 1000 + 16) continue;
    EXPECT_EQ(Compressed(vz_deflate, text), plain) << text.size();
    EXPECT_EQ(Applied(vz_deflate, text, plain.size()).status, kVzOk);
    if (plain.size() > text.size() + 5) continue;
    EXPECT_EQ(Applied(vz_deflate, text, plain.size() - 1).status, kVzNoRoom);
  }
}

TEST(Deflate, StoresWhatDoesNotShrink) {
  std::mt19937 random(1);
  for (const size_t size : {2000U, 65535U, 65536U, 200000U}) {
    Bytes noise(size);
    for (uint8_t& byte : noise) byte = static_cast<uint8_t>(random());
    const Bytes stored = Compressed(vz_deflate, noise);
    const size_t blocks = (size - 1) / 65535 + 1;
    ASSERT_EQ(stored.size(), size + 5 * blocks);
    EXPECT_EQ(stored[0], blocks == 1 ? 1 : 0);
    EXPECT_EQ(Applied(vz_inflate, stored, size).bytes, noise);
    EXPECT_EQ(Applied(vz_deflate, noise, stored.size() - 1).status, kVzNoRoom);
    EXPECT_EQ(Applied(vz_deflate, noise, stored.size()).status, kVzOk);
  }
  EXPECT_EQ(Compressed(vz_deflate, {}), FromHex("010000ffff"));
  EXPECT_EQ(Compressed(vz_zlib_compress, {}), FromHex("7801010000ffff00000001"));
}

// Bits in the order in which the stream has them; blanks don't count.
Bytes FromBits(std::string_view bits) {
  Bytes bytes;
  size_t count = 0;
  for (const char bit : bits) {
    if (bit == ' ') continue;
    if (count % 8 == 0) bytes.push_back(0);
    bytes.back() |= static_cast<uint8_t>((bit - '0') << count++ % 8);
  }
  return bytes;
}

TEST(Inflate, TellsWhatIsWrong) {
  const struct {
    const char* what;
    Bytes stream;
    VzStatus status;
    size_t written;
  } cases[] = {
      {"nothing at all", {}, kVzMalformed, 0},
      {"block type 3", FromBits("1 11"), kVzMalformed, 0},
      {"lengths that don't complement", FromHex("010100ffff41"), kVzMalformed, 0},
      {"stored bytes without room", FromHex("010400fbff41424344"), kVzNoRoom, 3},
      {"match without room", FromBits("1 10 10010001 0000001 00000 0000000"), kVzNoRoom, 3},
      {"ends in a match", FromBits("1 10 111111111 111111111 0000001"), kVzMalformed, 2},
      {"distance before the start", FromBits("1 10 10010001 0000001 00001 0000000"), kVzMalformed, 1},
      {"length code 286", FromBits("1 10 11000110 00000 0000000"), kVzMalformed, 0},
      {"distance code 30", FromBits("1 10 10010001 0000001 11110 0000000"), kVzMalformed, 1},
      {"287 literal codes", FromBits("1 01 01111 00000 0000 100 000 000 100" + std::string(90, '1')),
       kVzMalformed, 0},
      {"31 distance codes", FromBits("1 01 00000 01111 0000 100 000 000 100" + std::string(90, '1')),
       kVzMalformed, 0},
      {"too many code length codes", FromBits("1 01 00000 00000 0000 100 100 100 000 000"), kVzMalformed, 0},
      {"repeat with nothing before", FromBits("1 01 00000 00000 0000 100 000 000 100 100 000"), kVzMalformed,
       0},
      {"repeat past the end", FromBits("1 01 00000 00000 0000 000 000 100 100 11111111 11111111"),
       kVzMalformed, 0},
      {"no end of block", FromBits("1 01 00000 00000 0000 000 000 100 100 11111111 11011011 0"), kVzMalformed,
       0},
  };
  for (const auto& test : cases) {
    const Answer answer = Applied(vz_inflate, test.stream, 3);
    EXPECT_EQ(answer.status, test.status) << test.what;
    EXPECT_EQ(answer.bytes.size(), test.written) << test.what;
  }
}

// Whatever bit is turned and wherever the stream is cut, nothing wrong passes for right.
TEST(Wrappers, NoDamagePasses) {
  const Bytes text = RandomText(3, 400, 20);
  const struct {
    Work pack, unpack;
  } kinds[] = {{vz_zlib_compress, vz_zlib_decompress}, {vz_gzip_compress, vz_gzip_decompress}};
  for (const auto& kind : kinds) {
    const Bytes whole = Compressed(kind.pack, text);
    EXPECT_EQ(Applied(kind.unpack, whole, text.size()).bytes, text);
    EXPECT_EQ(Applied(kind.unpack, whole, text.size() - 1).status, kVzNoRoom);
    EXPECT_EQ(Applied(kind.pack, text, 7).status, kVzNoRoom);
    for (size_t size = 0; size < whole.size(); ++size) {
      EXPECT_EQ(Applied(kind.unpack, Bytes(whole.begin(), whole.begin() + size), 500).status, kVzMalformed)
          << size;
    }
    for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
      Bytes damaged = whole;
      damaged[bit / 8] ^= static_cast<uint8_t>(1 << bit % 8);
      const Answer answer = Applied(kind.unpack, damaged, text.size() + 100);
      EXPECT_TRUE(answer.status != kVzOk || answer.bytes == text) << bit;
    }
    Bytes longer = whole;
    longer.insert(longer.end() - 8, 0);
    EXPECT_EQ(Applied(kind.unpack, longer, 500).status, kVzMalformed);
  }
}

TEST(Wrappers, GzipFieldsArePassedOver) {
  const Bytes packed = Compressed(vz_gzip_compress, {'h', 'i'});
  EXPECT_EQ(Bytes(packed.begin(), packed.begin() + 10), FromHex("1f8b08000000000000ff"));
  const auto with = [&](uint8_t flags, std::string_view fields) {
    Bytes bytes = packed;
    bytes[3] = flags;
    bytes.insert(bytes.begin() + 10, fields.begin(), fields.end());
    return Applied(vz_gzip_decompress, bytes, 10);
  };
  using std::string_view_literals::operator""sv;
  EXPECT_EQ(with(0x1F,
                 "\2\0zz"
                 "name\0"
                 "why\0"
                 "cc"sv)
                .bytes,
            (Bytes{'h', 'i'}));
  for (const int flags : {4, 8, 16, 32, 64, 128}) {
    EXPECT_EQ(with(static_cast<uint8_t>(flags), "\xFF\xFF").status, kVzMalformed) << flags;
  }
}

TEST(Checksums, AgreeWithTheirDefinition) {
  const Bytes text = RandomText(5, 20000, 256);
  const Bytes check = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
  EXPECT_EQ(vz_crc32(0, check), 0xCBF43926);
  EXPECT_EQ(vz_adler32(1, check), 0x091E01DEU);
  const std::span<const uint8_t> all(text);
  for (const size_t cut : {0U, 1U, 7U, 5552U, 19999U}) {
    EXPECT_EQ(vz_crc32(vz_crc32(0, all.first(cut)), all.subspan(cut)), vz_crc32(0, all));
    EXPECT_EQ(vz_adler32(vz_adler32(1, all.first(cut)), all.subspan(cut)), vz_adler32(1, all));
  }
}

}  // namespace
