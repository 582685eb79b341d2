#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/picture.h"
#include "codes/qr_symbol.h"

namespace vorc::codes {

/// A code as modules: true where (x, y) is dark, in modules.
struct Drawing {
  int width = 0;
  int height = 0;
  int quiet_zone = 0;
  std::vector<uint8_t> dark;

  bool Dark(int x, int y) const {
    return x >= 0 && y >= 0 && x < width && y < height && dark[static_cast<size_t>(y * width + x)] != 0;
  }
};

Drawing DrawingOf(const MorvQrSymbol& symbol);
/// From the rectangles and paths of our own SVG documents.
Drawing DrawingOfSvg(std::string_view svg);
/// A symbol of the lowest version whose level holds the text in byte mode.
Drawing QrDrawing(std::string_view text, int level, int mask = -1);
Drawing BarcodeDrawing(std::string_view text, std::string_view kind);

/// How a drawing is taken a picture of.
struct Shot {
  double module = 4;  ///< pixels
  double angle = 0;   ///< degrees
  double tilt_x = 0;  ///< perspective: how much one side is nearer, 0 to 0.3 or so
  double tilt_y = 0;
  double blur = 0;   ///< standard deviation in pixels
  double noise = 0;  ///< standard deviation in grey levels
  double shade = 0;  ///< how much darker the far corner is, 0 to 1
  double black = 0;  ///< grey levels of ink and paper
  double white = 255;
  bool dark_table = false;  ///< what lies around the paper
  int jpeg_quality = 0;     ///< 0 for PNG
};

/// Takes the picture; the same seed gives the same noise.
GrayPicture Take(const Drawing& drawing, const Shot& shot, uint32_t seed);
/// The picture as a file: JPEG or PNG, as the shot tells.
std::string FileOf(const GrayPicture& picture, int jpeg_quality);

/// Random numbers that are the same with every library.
class Dice {
 public:
  explicit Dice(uint32_t seed) : engine_(seed) {}
  double Between(double low, double high) {
    return low + (high - low) * static_cast<double>(engine_()) / 4294967295.0;
  }
  int Below(int end) { return static_cast<int>(engine_() % static_cast<uint32_t>(end)); }

 private:
  std::mt19937 engine_;
};

/// One of the disturbed pictures that readers are held against.
struct Sample {
  std::string name;
  bool is_qr;
  std::string text;  ///< what is written in it
  std::string file;
};

constexpr int kDisturbedQr = 200;
constexpr int kDisturbedBarcodes = 100;

/// The disturbed picture `index`: QR codes first, then barcodes. Another seed gives another set.
Sample DisturbedPicture(int index, uint32_t seed = 1);

}  // namespace vorc::codes
