#include "codes/qr_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "codes/qr_content.h"
#include "codes/qr_image.h"
#include "codes/qr_writer.h"
#include "pictures.h"

namespace vorc::codes {
namespace {

std::string Pgm(const GrayPicture& picture) {
  return "P5 " + std::to_string(picture.width) + " " + std::to_string(picture.height) + " 255\n" +
         std::string(picture.pixels.begin(), picture.pixels.end());
}

std::string CleanFile(const Drawing& drawing) {
  return Pgm(Take(drawing, Shot{.module = 3}, 1));
}

TEST(QrReader, EveryVersionLevelAndMask) {
  for (int version = 1; version <= kMaxQrVersion; ++version) {
    const int level = version % kQrLevels;
    const int header = version < 10 ? 2 : 3;
    const std::string text(static_cast<size_t>(QrDataCodewords(version, level) - header),
                           static_cast<char>('0' + version));
    EXPECT_EQ(MorvQrcodeRead(CleanFile(QrDrawing(text, level, version % kQrMasks))), text) << version;
  }
  for (int level = 0; level < kQrLevels; ++level)
    for (int mask = 0; mask < kQrMasks; ++mask)
      EXPECT_EQ(MorvQrcodeRead(CleanFile(QrDrawing("mask and level", level, mask))), "mask and level");
}

// Bits of segments, most significant first, as text with blanks between fields.
std::optional<std::string> Parse(const std::string& fields, int version = 1) {
  std::vector<uint8_t> data;
  int bit = 0;
  for (const char c : fields) {
    if (c == ' ') continue;
    if (bit++ % 8 == 0) data.push_back(0);
    data.back() = static_cast<uint8_t>(data.back() | (c - '0') << (7 - (bit - 1) % 8));
  }
  return ParseCodewords(data, version);
}

TEST(QrReader, Segments) {
  const struct {
    const char* bits;
    std::optional<std::string> text;
  } cases[] = {
      {"0001 0000001000 0000001100 0101011001 1000011 0000", "01234567"},  // numeric: 3 + 3 + 2 digits
      {"0001 0000000001 0111 0000", "7"},
      {"0001 0000000001 1010 0000", std::nullopt},
      {"0001 0000000011 1111101000 0000", std::nullopt},
      {"0001 0000000010 1100100 0000", std::nullopt},
      {"0010 000000101 00111001110 11100111001 000010 0000", "AC-42"},
      {"0010 000000010 11111101001 0000", std::nullopt},
      {"0010 000000001 101101 0000", std::nullopt},
      {"0100 00000010 01101000 01101001 0000", "hi"},
      {"0100 00000011 01101000 01101001", std::nullopt},      // cut inside a segment
      {"0100 00000001 01101000 0001 0000000001 0101", "h5"},  // no terminator
      {"0011 0000000100000000 0100 00000001 01101000 0000", "h"},
      {"0101 0100 00000001 01101000 1001 0000", "h"},
      {"0111 00011010 0100 00000001 01101000 0000", "h"},
      {"0111 10000000 00011010 0100 00000001 01101000 0000", "h"},
      {"0111 11000000 00000000 00011010 0100 00000001 01101000 0000", "h"},
      {"1000 00000010 0110110011111 1101010101010 0000",
       "\x93\x5F\xE4\xAA"},  // 12 of the standard's examples
      {"1000 00000010 1011100111100 1011100111111 0000", "\x9F\xFC\xDF\xFF"},
      {"0110 0000", std::nullopt},
      {"1010 0000", std::nullopt},
      {"0000", ""},
  };
  for (const auto& test : cases) EXPECT_EQ(Parse(test.bits), test.text) << test.bits;
  EXPECT_EQ(Parse("0001 00000000000001 0111", 27), "7");
  EXPECT_EQ(Parse("0100 0000000000000001 01101000", 10), "h");
}

TEST(QrReader, ThresholdIsTheMiddleOfItsPlateau) {
  EXPECT_EQ(OtsuThreshold({0, 0, 255, 255}), 128);
  EXPECT_EQ(OtsuThreshold({100, 101}), 101);
  EXPECT_EQ(OtsuThreshold({77, 77, 77}), 128);
}

TEST(QrReader, MirroredOrDamagedOrNoSymbol) {
  const Drawing drawing = QrDrawing("not to be read", kQrLevelL);
  Drawing mirrored = drawing;
  for (int y = 0; y < drawing.height; ++y)
    for (int x = 0; x < drawing.width; ++x)
      mirrored.dark[static_cast<size_t>(y * drawing.width + x)] = drawing.Dark(drawing.width - 1 - x, y);
  Drawing two_finders = drawing;
  std::fill_n(two_finders.dark.begin(), drawing.width * 8, uint8_t{0});
  Drawing damaged = drawing;
  for (int y = 9; y < drawing.height - 8; ++y)
    std::fill_n(damaged.dark.begin() + y * drawing.width + 9, 12, uint8_t{1});
  for (const Drawing& bad : {mirrored, two_finders, damaged}) EXPECT_FALSE(MorvQrcodeRead(CleanFile(bad)));

  const std::string good = CleanFile(drawing);
  EXPECT_TRUE(MorvQrcodeRead(good));
  const std::string headers[] = {"",
                                 "P5 1 1 255\nx",
                                 "P5 8 7 255\n" + std::string(56, 'x'),
                                 good.substr(0, good.size() / 2),
                                 "P5 20000 8 255\n" + std::string(160'000, 'x'),
                                 "P5 30000 30000 255\n",
                                 "P5 64 64 255\n" + std::string(64 * 64, 'x')};
  for (const std::string& file : headers) EXPECT_FALSE(MorvQrcodeRead(file));
}

TEST(QrReader, DisturbedPictures) {
  int read = 0;
  for (int i = 0; i < kDisturbedQr; ++i) {
    const Sample sample = DisturbedPicture(i);
    const auto text = MorvQrcodeRead(sample.file);
    if (!text) continue;
    EXPECT_EQ(*text, sample.text) << sample.name;
    ++read;
  }
  EXPECT_GE(read, 190) << "of " << kDisturbedQr;
}

}  // namespace
}  // namespace vorc::codes
