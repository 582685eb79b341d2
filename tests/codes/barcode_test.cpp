#include <gtest/gtest.h>

#include "codes/barcode_reader.h"
#include "codes/barcode_runs.h"
#include "codes/barcode_tables.h"
#include "codes/barcode_writer.h"
#include "pictures.h"

namespace vorc::codes {
namespace {

TEST(BarcodeWriter, WhatEachKindTakes) {
  const struct {
    std::string kind, text;
    bool drawn;
  } cases[] = {
      {"code128", "~", true},
      {"code128", "\t", false},
      {"code128", "", false},
      {"code128", "\xC3\xA4", false},
      {"code128", std::string(80, 'x'), true},
      {"code128", std::string(81, 'x'), false},
      {"ean13", "400638133393", true},
      {"ean", "4006381333931", true},
      {"ean13", "4006381333932", false},
      {"ean13", "40063813339", false},
      {"ean13", "40063813339x", false},
      {"ean13", "40063813339311", false},
      {"upca", "03600029145", true},
      {"upc", "036000291452", true},
      {"upc", "036000291453", false},
      {"upca", "0036000291452", false},
      {"EAN13", "400638133393", false},
      {"", "400638133393", false},
  };
  for (const auto& test : cases)
    EXPECT_EQ(MorvBarcodeSvg(test.text, test.kind, 1).has_value(), test.drawn) << test.kind << test.text;
}

// The runs of a row of Code 128 values, two pixels a module, with quiet zones.
std::vector<double> Runs(std::vector<int> values) {
  int sum = values[0];
  for (size_t i = 1; i < values.size(); ++i) sum += values[i] * static_cast<int>(i);
  values.push_back(sum % kCode128CheckModulus);
  values.push_back(kCode128Stop);
  std::vector<double> runs = {0, 20};
  for (const int value : values)
    for (const char* width = code128_widths[value]; *width != 0; ++width) runs.push_back(2 * (*width - '0'));
  runs.push_back(20);
  return runs;
}

TEST(BarcodeReader, Code128Sets) {
  const struct {
    std::vector<int> values;
    std::optional<std::string> text;
  } cases[] = {
      {{104, 33, 34, 65}, "ABa"},
      {{103, 33, 65, 101, 33},
       std::string("A\x01"
                   "A")},
      {{105, 12, 98, 99, 102, 7}, "12989907"},
      {{105, 12, 100, 65, 99, 34}, "12a34"},
      {{105, 12, 101, 73}, "12\t"},
      {{104, 65, 98, 73, 73}, "a\ti"},
      {{103, 73, 98, 73, 73}, "\ti\t"},
      {{104, 96, 97, 33}, "A"},
      {{104, 102}, std::nullopt},
      {{104, 103, 33}, std::nullopt},
      {{33, 34, 35}, std::nullopt},
  };
  for (const auto& test : cases) EXPECT_EQ(code128_at(Runs(test.values), 2), test.text) << test.values[1];
  EXPECT_FALSE(code128_at(Runs(std::vector<int>(298, 105)), 2));
  std::vector<int> long_row(297, 33);
  long_row[0] = 104;
  EXPECT_EQ(code128_at(Runs(long_row), 2), std::string(296, 'A'));
  long_row.push_back(33);
  EXPECT_FALSE(code128_at(Runs(long_row), 2));
}

TEST(BarcodeReader, WrongCheckOrNoQuietZone) {
  std::vector<double> runs = Runs({104, 33, 34, 65});
  for (size_t i = 0; i < 6; ++i) runs[8 + i] = 2 * (code128_widths[35][i] - '0');  // a C for the A
  EXPECT_FALSE(code128_at(runs, 2));
  runs = Runs({104, 33});
  runs[1] = 9;
  EXPECT_FALSE(code128_at(runs, 2));
  EXPECT_FALSE(code128_at(std::vector<double>{20, 20, 4, 4}, 0));
  EXPECT_FALSE(ean_at(std::vector<double>(59, 2), 0));
}

TEST(BarcodeReader, KindsAnglesAndUpsideDown) {
  const struct {
    const char *kind, *written, *read, *kind_read;
  } cases[] = {{"code128", "Shelf <7>", "Shelf <7>", "code128"},
               {"ean13", "400638133393", "4006381333931", "ean13"},
               {"upca", "03600029145", "0036000291452", "ean13"}};
  for (const auto& test : cases) {
    for (const double angle : {0, 30, 90, 105, 180, 195, 270, 330}) {
      const Shot shot{.module = 3, .angle = angle};
      const auto found = MorvBarcodeRead(FileOf(Take(BarcodeDrawing(test.written, test.kind), shot, 1), 0));
      ASSERT_TRUE(found) << test.kind << angle;
      EXPECT_EQ(found->text, test.read);
      EXPECT_STREQ(found->kind, test.kind_read);
    }
  }
  for (const char* file : {"", "P5 1 1 255\nx", "P5 30000 30000 255\n"}) EXPECT_FALSE(MorvBarcodeRead(file));
}

// What a grey level at a bar's edge tells is less than a pixel.
TEST(BarcodeReader, ModulesOfLittleMoreThanAPixel) {
  for (const double module : {1.3, 1.4, 1.5, 1.7}) {
    const Shot shot{.module = module, .noise = 4};
    for (const std::string digits : {"400638133393", "801555805917", "225418942328"}) {
      const auto found = MorvBarcodeRead(FileOf(Take(BarcodeDrawing(digits, "ean"), shot, 1), 0));
      EXPECT_TRUE(found && found->text.starts_with(digits)) << module << ' ' << digits;
    }
  }
}

TEST(BarcodeReader, DisturbedPictures) {
  int read = 0;
  for (int i = kDisturbedQr; i < kDisturbedQr + kDisturbedBarcodes; ++i) {
    const Sample sample = DisturbedPicture(i);
    const auto barcode = MorvBarcodeRead(sample.file);
    if (!barcode) continue;
    EXPECT_EQ(barcode->text, sample.text) << sample.name;
    ++read;
  }
  EXPECT_GE(read, 95) << "of " << kDisturbedBarcodes;
}

TEST(BarcodeReader, FindsNothingInQrCodes) {
  for (int i = 0; i < kDisturbedQr; i += 10) EXPECT_FALSE(MorvBarcodeRead(DisturbedPicture(i).file)) << i;
}

}  // namespace
}  // namespace vorc::codes
