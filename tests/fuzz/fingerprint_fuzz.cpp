#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fingerprint/afis.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

// Two bytes are the sides of a picture, the rest its pixels, over and over.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  const int width = data[0] + 1;
  const int height = data[1] + 1;
  std::string picture = "P5 " + std::to_string(width) + " " + std::to_string(height) + " 255\n";
  for (int i = 0; i < width * height; ++i) {
    picture += static_cast<char>(data[2 + static_cast<size_t>(i) % (size - 2)]);
  }
  const auto print = vorc::MorvAfisExtract(picture);
  Require(print != nullptr);
  const int count = vorc::MorvAfisMinutiae(print.get());
  Require(count >= 0 && count <= vorc::kMaxMinutiae);
  const double score = vorc::MorvAfisMatch(print.get(), print.get());
  Require(std::isfinite(score) && score >= 0 && (count > 1 || score == 0));
  Require(vorc::MorvAfisMatch(print.get(), print.get()) == score);
  return 0;
}
