#include "codes/qr_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "codes/qr_content.h"
#include "codes/qr_finders.h"
#include "codes/qr_image.h"
#include "codes/qr_sampling.h"
#include "codes/qr_symbol.h"

namespace vorc::codes {

namespace {

constexpr int kMinSide = 8;
constexpr int kBiases[] = {4, 0, 10};
constexpr size_t kFindersTold = 12;
constexpr int kFinderModules = 7;
constexpr int kVersionZeroSize = 17;

// Two sets of corners, by diagonals first, each of them with the fourth corner shifted by modules.
constexpr Point kCornerShifts[] = {{0, 0}, {1, 0},   {-1, 0}, {0, 1}, {0, -1},
                                   {1, 1}, {-1, -1}, {1, -1}, {-1, 1}};

int VersionOfSize(double modules) {
  return std::clamp(static_cast<int>(std::floor((modules - kVersionZeroSize) / 4 + 0.5)), 1, kMaxQrVersion);
}

class QrReader {
 public:
  explicit QrReader(MorvQrImage image)
      : image_(std::move(image)), debug_(std::getenv("MORV_CODE_DEBUG") != nullptr) {}

  std::optional<std::string> Read() {
    otsu_ = OtsuThreshold(image_.grey);
    for (const int bias : kBiases) {
      const std::vector<Finder> finders = FindersBy({.bias = bias});
      TellFinders(bias, finders);
      if (auto text = ReadFinders(finders)) return text;
    }
    debug_ = false;  // what follows are further goes at the same, for bad pictures
    const std::vector<uint8_t> grey = image_.grey;
    for (const auto prepare : {Smoothed, Sharpened}) {
      image_.grey = prepare(image_);
      if (auto text = ReadFinders(FindersBy({.middle = true}))) return text;
      image_.grey = grey;
    }
    return std::nullopt;
  }

 private:
  std::vector<Finder> FindersBy(ThresholdRule rule) {
    Binarise(image_, rule, otsu_);
    return FindFinders(image_);
  }

  std::optional<std::string> ReadFinders(const std::vector<Finder>& finders) {
    if (finders.size() < 3) return std::nullopt;
    const std::vector<Triple> triples = RankTriples(finders);
    if (debug_) std::fprintf(stderr, "[qr] %d triples\n", static_cast<int>(triples.size()));
    for (size_t i = 0; i < triples.size(); ++i) {
      const Triple& triple = triples[i];
      const SymbolFinders three{finders[triple.corner], finders[triple.second], finders[triple.third]};
      if (auto text = ReadTriple(static_cast<int>(i), triple.score, three)) return text;
    }
    return std::nullopt;
  }

  std::optional<std::string> ReadTriple(int index, double score, const SymbolFinders& finders) {
    std::vector<SymbolCorners> corners;
    for (const CornerMode mode : {kCornersByDiagonals, kCornersByEdges})
      if (const auto found = symbol_corners(image_, finders, mode)) corners.push_back(*found);
    const double m = finders.ModuleSize();
    const int est = VersionOfSize(finders.Side() / m + kFinderModules);
    const int est2 = corners.empty() ? est : VersionOfSize(corners.front().Side() / m);
    if (debug_)
      std::fprintf(stderr, "[qr] triple %d score %.3f m=%.2f corners=%d est=%d est2=%d\n", index, score, m,
                   corners.empty() ? 0 : 1, est, est2);
    // Runs are longer where they cross a turned symbol; a finder's border doesn't change with its angle.
    const int est3 =
        corners.empty()
            ? est2
            : VersionOfSize(kFinderModules * corners.front().Side() / corners.front().FinderSide());
    const int versions[] = {est2, est, est2 - 1, est2 + 1, est3, est3 - 1, est3 + 1};
    for (auto version = std::begin(versions); version != std::end(versions); ++version) {
      const bool tried = std::find(std::begin(versions), version, *version) != version;
      if (tried || *version < 1 || *version > kMaxQrVersion) continue;
      if (auto text = ReadVersionOfTriple(finders, corners, *version)) return text;
    }
    return std::nullopt;
  }

  std::optional<std::string> ReadVersionOfTriple(const SymbolFinders& finders,
                                                 const std::vector<SymbolCorners>& corners, int version) {
    const double m = finders.ModuleSize();
    for (const SymbolCorners& found : corners) {
      for (const Point& shift : kCornerShifts) {
        SymbolCorners shifted = found;
        shifted.bottom_right = found.bottom_right + shift * m;
        if (auto text = ReadSampling(finders, version, kSampleByCorners, &shifted)) return text;
      }
    }
    return ReadSampling(finders, version, kSampleByAlignment, nullptr);
  }

  std::optional<std::string> ReadSampling(const SymbolFinders& finders, int version, SamplingMode mode,
                                          const SymbolCorners* corners) {
    bool sampled = sample_grid(image_, finders, version, mode, corners, *symbol_);
    if (sampled && symbol_->size > kMaxSizeWithoutVersion) {
      const int told = ReadVersion(*symbol_);
      if (told != 0 && told != version) {
        version = told;
        sampled = sample_grid(image_, finders, version, mode, corners, *symbol_);
      }
    }
    const auto format = sampled ? read_format(*symbol_) : std::nullopt;
    std::optional<std::string> text;
    if (format) {
      const auto data = ReadCodewords(*symbol_, *format);
      if (data) text = ParseCodewords(*data, version);
    }
    if (debug_)
      std::fprintf(stderr, "[qr]   ver %d mode %d: format %s -> %s\n", version, static_cast<int>(mode),
                   format ? "ok" : "bad", text ? "decoded" : "no");
    return text;
  }

  void TellFinders(int bias, const std::vector<Finder>& finders) const {
    if (!debug_) return;
    std::fprintf(stderr, "[qr] bias %d: %d finders\n", bias, static_cast<int>(finders.size()));
    for (size_t i = 0; i < std::min(finders.size(), kFindersTold); ++i)
      std::fprintf(stderr, "[qr]   (%.1f,%.1f) m=%.2f n=%d\n", finders[i].centre.x, finders[i].centre.y,
                   finders[i].m, finders[i].n);
  }

  static constexpr int kMaxSizeWithoutVersion = 44;

  MorvQrImage image_;
  bool debug_;
  int otsu_ = 0;
  std::unique_ptr<MorvQrSymbol> symbol_ = std::make_unique<MorvQrSymbol>();
};

}  // namespace

std::optional<std::string> MorvQrcodeRead(std::string_view file_bytes) {
  auto picture = DecodeGrayPicture(file_bytes);
  if (!picture || picture->width < kMinSide || picture->height < kMinSide) return std::nullopt;
  MorvQrImage image = Reduce(std::move(*picture));
  if (image.width < 1 || image.height < 1) return std::nullopt;
  return QrReader(std::move(image)).Read();
}

}  // namespace vorc::codes
