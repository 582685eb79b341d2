#include "pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "codes/barcode_writer.h"
#include "codes/homography.h"
#include "codes/qr_writer.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace vorc::codes {

namespace {

constexpr int kTable = 3;  // modules around the quiet zone

int NumberAfter(std::string_view text, size_t& at, std::string_view key) {
  at = text.find(key, at);
  if (at == std::string_view::npos) return -1;
  at += key.size();
  return std::atoi(text.data() + at);
}

void Fill(Drawing& drawing, int x, int y, int width, int height) {
  for (int row = y; row < y + height; ++row)
    for (int column = x; column < x + width; ++column)
      drawing.dark[static_cast<size_t>(row * drawing.width + column)] = 1;
}

// From picture pixels to modules of the drawing.
Homography ModulesOfPixels(const Drawing& drawing, const Shot& shot, int& width, int& height) {
  const double pi = std::acos(-1.0);
  const double c = std::cos(shot.angle * pi / 180) * shot.module,
               s = std::sin(shot.angle * pi / 180) * shot.module;
  const double half_w = drawing.width / 2.0, half_h = drawing.height / 2.0;
  const double border = drawing.quiet_zone + kTable;
  const double left = -half_w - border, right = half_w + border, top = -half_h - border,
               bottom = half_h + border;
  const std::array<Point, 4> paper = {{{left, top}, {right, top}, {left, bottom}, {right, bottom}}};
  const double reach = std::max(right, bottom);
  std::array<PointPair, 4> pairs;
  double least_x = 0, least_y = 0, most_x = 0, most_y = 0;
  for (size_t i = 0; i < paper.size(); ++i) {
    const double near = 1 + (shot.tilt_x * paper[i].x + shot.tilt_y * paper[i].y) / reach;
    const Point seen{(c * paper[i].x - s * paper[i].y) / near, (s * paper[i].x + c * paper[i].y) / near};
    pairs[i] = {seen, paper[i] + Point{half_w, half_h}};
    least_x = std::min(least_x, seen.x), most_x = std::max(most_x, seen.x);
    least_y = std::min(least_y, seen.y), most_y = std::max(most_y, seen.y);
  }
  for (PointPair& pair : pairs) pair.module = pair.module - Point{least_x, least_y};
  width = std::max(8, static_cast<int>(std::ceil(most_x - least_x)));
  height = std::max(8, static_cast<int>(std::ceil(most_y - least_y)));
  return ExactHomography(pairs).value();
}

double Reflectance(const Drawing& drawing, const Shot& shot, Point at) {
  const double border = drawing.quiet_zone;
  const bool on_paper =
      at.x >= -border && at.y >= -border && at.x < drawing.width + border && at.y < drawing.height + border;
  if (!on_paper) return shot.dark_table ? 0.1 : 1.0;
  return drawing.Dark(static_cast<int>(std::floor(at.x)), static_cast<int>(std::floor(at.y))) ? 0.0 : 1.0;
}

void BlurLines(std::vector<float>& levels, int count, int length, int stride, int step, double sigma) {
  const int reach = static_cast<int>(std::ceil(3 * sigma));
  std::vector<float> kernel;
  float sum = 0;
  for (int i = -reach; i <= reach; ++i)
    sum += kernel.emplace_back(static_cast<float>(std::exp(-i * i / (2 * sigma * sigma))));
  std::vector<float> line(static_cast<size_t>(length));
  for (int l = 0; l < count; ++l) {
    for (int i = 0; i < length; ++i)
      line[static_cast<size_t>(i)] = levels[static_cast<size_t>(l * stride + i * step)];
    for (int i = 0; i < length; ++i) {
      float total = 0;
      for (int k = -reach; k <= reach; ++k)
        total += kernel[static_cast<size_t>(k + reach)] *
                 line[static_cast<size_t>(std::clamp(i + k, 0, length - 1))];
      levels[static_cast<size_t>(l * stride + i * step)] = total / sum;
    }
  }
}

double Gaussian(Dice& dice) {
  double sum = 0;
  for (int i = 0; i < 12; ++i) sum += dice.Between(0, 1);
  return sum - 6;
}

std::string RandomText(Dice& dice, int length, std::string_view alphabet) {
  std::string text;
  while (static_cast<int>(text.size()) < length)
    text += alphabet[static_cast<size_t>(dice.Below(static_cast<int>(alphabet.size())))];
  return text;
}

// What is wrong with picture `index`, each kind in turn, by a strength up to what still is fair.
Shot DisturbedShot(int index, Dice& dice, double module) {
  Shot shot;
  shot.module = module;
  shot.angle = dice.Between(-8, 8);
  shot.blur = 0.15 * module;
  shot.noise = 3;
  switch (index % 8) {
    case 0: shot.angle = dice.Between(0, 360); break;
    case 1: shot.blur = dice.Between(0.3, 0.6) * module; break;
    case 2: shot.noise = dice.Between(15, 45); break;
    case 3:
      shot.tilt_x = dice.Between(-0.2, 0.2);
      shot.tilt_y = dice.Between(-0.2, 0.2);
      break;
    case 4: shot.shade = dice.Between(0.4, 0.8); break;
    case 5:
      shot.black = dice.Between(60, 110);
      shot.white = shot.black + dice.Between(30, 60);
      break;
    case 6: shot.jpeg_quality = 20; break;
    default: shot.dark_table = true; break;
  }
  if (index % 3 == 0) shot.tilt_x += dice.Between(-0.08, 0.08);
  if (index % 5 == 0 && shot.jpeg_quality == 0) shot.jpeg_quality = 60;
  return shot;
}

}  // namespace

Drawing DrawingOf(const MorvQrSymbol& symbol) {
  Drawing drawing{symbol.size, symbol.size, 4, {}};
  for (int y = 0; y < symbol.size; ++y)
    for (int x = 0; x < symbol.size; ++x) drawing.dark.push_back(symbol.Dark(x, y) ? 1 : 0);
  return drawing;
}

Drawing DrawingOfSvg(std::string_view svg) {
  Drawing drawing;
  size_t at = 0;
  drawing.width = NumberAfter(svg, at, "viewBox=\"0 0 ");
  drawing.height = NumberAfter(svg, at, " ");
  drawing.dark.resize(static_cast<size_t>(drawing.width * drawing.height));
  if (const size_t path = svg.find(" d=\""); path != std::string_view::npos) {
    for (at = path;;) {
      const int x = NumberAfter(svg, at, "M");
      if (x < 0) break;
      const int y = NumberAfter(svg, at, " ");
      Fill(drawing, x, y, NumberAfter(svg, at, "h"), 1);
    }
    return drawing;
  }
  for (;;) {
    const int x = NumberAfter(svg, at, "<rect x=\"");
    if (x < 0) return drawing;
    const int y = NumberAfter(svg, at, "y=\"");
    const int width = NumberAfter(svg, at, "width=\"");
    Fill(drawing, x, y, width, NumberAfter(svg, at, "height=\""));
  }
}

Drawing QrDrawing(std::string_view text, int level, int mask) {
  const auto symbol = std::make_unique<MorvQrSymbol>();
  int version = 1;
  const auto header = [&] { return version < 10 ? 12 : 20; };
  while (8 * QrDataCodewords(version, level) < header() + 8 * static_cast<int>(text.size())) ++version;
  std::string bits = "0100";
  const auto put = [&](unsigned value, int count) {
    while (count-- > 0) bits += static_cast<char>('0' + (value >> count & 1));
  };
  put(static_cast<unsigned>(text.size()), header() - 4);
  for (const char c : text) put(static_cast<uint8_t>(c), 8);
  std::vector<uint8_t> data(static_cast<size_t>(QrDataCodewords(version, level)));
  for (size_t i = 0; i < bits.size(); ++i)
    data[i / 8] |= static_cast<uint8_t>((bits[i] - '0') << (7 - i % 8));
  DrawQrSymbol(*symbol, version, level, data, mask);
  return DrawingOf(*symbol);
}

Drawing BarcodeDrawing(std::string_view text, std::string_view kind) {
  return DrawingOfSvg(MorvBarcodeSvg(text, kind, 1).value());
}

GrayPicture Take(const Drawing& drawing, const Shot& shot, uint32_t seed) {
  constexpr int kSub = 4;
  int width = 0, height = 0;
  const Homography modules = ModulesOfPixels(drawing, shot, width, height);
  std::vector<float> levels(static_cast<size_t>(width) * static_cast<size_t>(height));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      double sum = 0;
      for (int i = 0; i < kSub * kSub; ++i)
        sum += Reflectance(drawing, shot,
                           project(modules, {x + (i % kSub + 0.5) / kSub, y + (i / kSub + 0.5) / kSub}));
      levels[static_cast<size_t>(y * width + x)] =
          static_cast<float>(shot.black + (shot.white - shot.black) * sum / (kSub * kSub));
    }
  }
  if (shot.blur > 0) {
    BlurLines(levels, height, width, width, 1, shot.blur);
    BlurLines(levels, width, height, 1, width, shot.blur);
  }
  GrayPicture picture{width, height, {}};
  Dice dice(seed);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const double light = 1 - shot.shade * (x + y) / (width + height);
      double level = levels[static_cast<size_t>(y * width + x)] * light;
      if (shot.noise > 0) level += shot.noise * Gaussian(dice);
      picture.pixels.push_back(static_cast<uint8_t>(std::clamp(level, 0.0, 255.0)));
    }
  }
  return picture;
}

std::string FileOf(const GrayPicture& picture, int jpeg_quality) {
  std::string file;
  const auto append = [](void* to, void* bytes, int size) {
    static_cast<std::string*>(to)->append(static_cast<const char*>(bytes), static_cast<size_t>(size));
  };
  if (jpeg_quality > 0)
    stbi_write_jpg_to_func(append, &file, picture.width, picture.height, 1, picture.pixels.data(),
                           jpeg_quality);
  else
    stbi_write_png_to_func(append, &file, picture.width, picture.height, 1, picture.pixels.data(),
                           picture.width);
  return file;
}

Sample DisturbedPicture(int index, uint32_t seed) {
  constexpr std::string_view kLetters =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 -./:?=&";
  Dice dice(seed * 100'003 + static_cast<uint32_t>(index));
  Sample sample;
  sample.is_qr = index < kDisturbedQr;
  const double module = dice.Between(3, 6);
  const Shot shot = DisturbedShot(index, dice, module);
  Drawing drawing;
  if (sample.is_qr) {
    sample.text = RandomText(dice, 8 + dice.Below(index % 2 == 0 ? 40 : 160), kLetters);
    drawing = QrDrawing(sample.text, dice.Below(kQrLevels));
  } else if (index % 2 == 0) {
    sample.text = RandomText(dice, 4 + dice.Below(12), kLetters);
    drawing = BarcodeDrawing(sample.text, "code128");
  } else {
    sample.text = RandomText(dice, 12, "0123456789");
    drawing = BarcodeDrawing(sample.text, "ean13");
    sample.text += static_cast<char>('0' + [&] {
      int sum = 0;
      for (size_t i = 0; i < 12; ++i) sum += (sample.text[i] - '0') * (i % 2 == 0 ? 1 : 3);
      return (10 - sum % 10) % 10;
    }());
  }
  sample.file = FileOf(Take(drawing, shot, static_cast<uint32_t>(index) + 7 * seed), shot.jpeg_quality);
  sample.name = std::to_string(index) + (shot.jpeg_quality > 0 ? ".jpg" : ".png");
  return sample;
}

}  // namespace vorc::codes
