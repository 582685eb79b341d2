#include "base/picture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/jpeg_tables.h"

namespace vorc {
namespace {

using Pixels = std::vector<uint8_t>;

TEST(Picture, GreyOfEveryDepthAndChannelCount) {
  const struct {
    std::string bytes;
    Pixels pixels;
  } cases[] = {
      {std::string("P5 2 2 255\n\x00\x10\x80\xFF", 15), {0, 16, 128, 255}},
      {std::string("P6 1 1 255\n\xFF\x00\x00", 14), {76}},
      // PNG, 2 x 1, grey with alpha: the transparent pixel keeps its grey.
      {std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x02\0\0\0\x01\x08\x04\0\0\0\0\0\0\0"
                   "\0\0\0\x10IDAT\x78\x01\x01\x05\0\xFA\xFF\0\x40\0\x80\xFF\0\0\0\0\0\0\0\0"
                   "\0\0\0\0IEND\0\0\0\0",
                   8 + 25 + 28 + 12),
       {0x40, 0x80}},
      // PNG, 2 x 1, 16-bit grey.
      {std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x02\0\0\0\x01\x10\0\0\0\0\0\0\0\0"
                   "\0\0\0\x10IDAT\x78\x01\x01\x05\0\xFA\xFF\0\x40\x99\x80\x01\0\0\0\0\0\0\0\0"
                   "\0\0\0\0IEND\0\0\0\0",
                   8 + 25 + 28 + 12),
       {0x40, 0x80}},
  };
  for (const auto& test : cases) {
    const auto picture = DecodeGrayPicture(test.bytes);
    ASSERT_TRUE(picture) << test.bytes;
    EXPECT_EQ(picture->pixels, test.pixels);
    EXPECT_EQ(picture->pixels.size(), static_cast<size_t>(picture->width) * picture->height);
  }
}

TEST(Picture, RefusesWhatIsNoPictureOrTooLarge) {
  const std::string small = "P5 4 4 255\n" + std::string(16, 'x');
  EXPECT_TRUE(DecodeGrayPicture(small, 16));
  EXPECT_FALSE(DecodeGrayPicture(small, 15));
  EXPECT_FALSE(DecodeGrayPicture(small.substr(0, small.size() - 1)));
  for (const std::string bytes : {"", "text", "P5 30000 30000 255\n", "GIF89a", "\x89PNG\r\n\x1a\n"})
    EXPECT_FALSE(DecodeGrayPicture(bytes)) << bytes;
}

TEST(Picture, HuffmanTableOfMoreValuesThanItHolds) {
  const std::string table = std::string("\xFF\xD8\xFF\xC4\x01\x13\0", 7);
  const auto file = [&](char of_length_8, char of_length_9) {
    return table + std::string(7, '\0') + of_length_8 + of_length_9 + std::string(7 + 257, '\0') + "\xFF\xD9";
  };
  EXPECT_TRUE(JpegTablesFit(file('\x80', '\x80')));
  EXPECT_FALSE(JpegTablesFit(file('\x80', '\x81')));
  EXPECT_FALSE(JpegTablesFit("\xFF\xD8 fill \xFF\xD0 \xFF" + file('\x80', '\x81').substr(2)));
  EXPECT_TRUE(JpegTablesFit("text \xFF" + file('\x80', '\x81')));
}

}  // namespace
}  // namespace vorc
