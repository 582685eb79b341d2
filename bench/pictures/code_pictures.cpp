// Writes pictures of codes into a folder: code_pictures disturbed|clean|photos|scenes folder
// The file `index` there tells of each its name, "qr", "barcode" or "none", and the text in it, with tabs
// between.
#include <cmath>
#include <fstream>
#include <iostream>
#include <string>

#include "pictures.h"

namespace vorc::codes {
namespace {

constexpr int kPhotoWidth = 4000;
constexpr int kPhotoHeight = 3000;

// A picture of 1,000 x 1,000 that shows a code without any disturbance.
Sample CleanPicture(int index) {
  const bool is_qr = index % 2 == 0;
  const std::string text = "Clean rendering " + std::to_string(index);
  const Drawing drawing = is_qr ? QrDrawing(text, index / 2 % kQrLevels) : BarcodeDrawing(text, "code128");
  const int across = drawing.width + 2 * drawing.quiet_zone;
  GrayPicture picture{1000, 1000, std::vector<uint8_t>(1'000'000)};
  const int scale = 1000 / across;
  for (int y = 0; y < 1000; ++y)
    for (int x = 0; x < 1000; ++x)
      picture.pixels[static_cast<size_t>(y * 1000 + x)] =
          drawing.Dark(x / scale - drawing.quiet_zone, y / scale - drawing.quiet_zone) ? 0 : 255;
  return {std::to_string(index) + ".png", is_qr, text, FileOf(picture, 0)};
}

// A photograph of 12 megapixels: a scene of soft shapes with noise, and a sheet with a code if `code`.
Sample Photo(int index, bool code) {
  Dice dice(static_cast<uint32_t>(index));
  const bool is_qr = index % 2 == 0;
  const std::string text = "Photograph " + std::to_string(index);
  GrayPicture photo{kPhotoWidth, kPhotoHeight, {}};
  for (int y = 0; y < kPhotoHeight; ++y) {
    for (int x = 0; x < kPhotoWidth; ++x) {
      const double shapes =
          30 * std::sin(x / 210.0 + index) * std::cos(y / 170.0) + 15 * std::sin((x + 2 * y) / 31.0);
      photo.pixels.push_back(static_cast<uint8_t>(120 + shapes + dice.Between(-4, 4)));
    }
  }
  if (code) {
    Shot shot{
        .module = 16, .angle = dice.Between(-10, 10), .tilt_x = 0.05, .blur = 1.5, .noise = 2, .shade = 0.2};
    shot.black = 40, shot.white = 220;
    const Drawing drawing = is_qr ? QrDrawing(text, kQrLevelM) : BarcodeDrawing(text, "code128");
    if (!is_qr) shot.module = 8;
    const GrayPicture sheet = Take(drawing, shot, static_cast<uint32_t>(index));
    const int left = (kPhotoWidth - sheet.width) / 2, top = (kPhotoHeight - sheet.height) / 2;
    for (int y = 0; y < sheet.height; ++y)
      for (int x = 0; x < sheet.width; ++x)
        photo.pixels[static_cast<size_t>((top + y) * kPhotoWidth + left + x)] =
            sheet.pixels[static_cast<size_t>(y * sheet.width + x)];
  }
  return {std::to_string(index) + ".jpg", is_qr, code ? text : "", FileOf(photo, 85)};
}

void Write(const std::string& folder, const Sample& sample) {
  std::ofstream(folder + "/" + sample.name, std::ios::binary) << sample.file;
  const char* kind = sample.text.empty() ? "none" : sample.is_qr ? "qr" : "barcode";
  std::ofstream(folder + "/index", std::ios::app)
      << sample.name << "\t" << kind << "\t" << sample.text << "\n";
}

}  // namespace
}  // namespace vorc::codes

int main(int count, char** arguments) {
  using namespace vorc::codes;
  if (count != 3) {
    std::cerr << "usage: code_pictures disturbed|clean|photos|scenes folder\n";
    return 1;
  }
  const std::string set = arguments[1], folder = arguments[2];
  if (set == "disturbed")
    for (int i = 0; i < kDisturbedQr + kDisturbedBarcodes; ++i) Write(folder, DisturbedPicture(i));
  for (int i = 0; i < 4; ++i) {
    if (set == "clean") Write(folder, CleanPicture(i));
    if (set == "photos") Write(folder, Photo(i, true));
    if (set == "scenes") Write(folder, Photo(i, false));
  }
  return 0;
}
