#include "fingerprint/thinning.h"

#include <array>
#include <bit>

namespace vorc {

namespace {

constexpr int kMaxPasses = 26;
constexpr unsigned kSides = 0b01010101;

constexpr bool Has(unsigned pattern, unsigned neighbour) {
  return (pattern >> (neighbour & 7) & 1) != 0;
}

/// A pixel may go if it is no end, and if what is left of it stays in one piece: walking around it,
/// exactly one gap opens on a side (Yokoi's connectivity number for eight neighbours is one).
constexpr bool Removable(unsigned pattern) {
  int connectivity = 0;
  for (unsigned side = 0; side < 8; side += 2) {
    connectivity += !Has(pattern, side) && (Has(pattern, side + 1) || Has(pattern, side + 2));
  }
  return connectivity == 1 && std::popcount(pattern) >= 2;
}

constexpr std::array<bool, 256> MakeRemovable() {
  std::array<bool, 256> table{};
  for (unsigned pattern = 0; pattern < table.size(); ++pattern) table[pattern] = Removable(pattern);
  return table;
}

constexpr std::array<bool, 256> kRemovable = MakeRemovable();

void ClearEdges(saf_boolean_matrix& binary) {
  for (int y = 0; y < binary.height(); ++y) {
    uint8_t* row = binary.Row(y);
    if (y == 0 || y == binary.height() - 1) std::fill_n(row, binary.width(), uint8_t{0});
    row[0] = row[binary.width() - 1] = 0;
  }
}

/// The four interleaved quarters of the picture. Pixels of one quarter never touch, so that they can
/// be judged one after the other as if all at once.
using Quarters = std::array<std::vector<saf_int_point>, 4>;

Quarters SetPixels(const saf_boolean_matrix& binary) {
  Quarters quarters;
  for (int y = 0; y < binary.height(); ++y) {
    for (int x = 0; x < binary.width(); ++x) {
      if (binary.At(x, y)) quarters[static_cast<size_t>((y & 1) * 2 + (x & 1))].push_back({x, y});
    }
  }
  return quarters;
}

/// Those with a cleared pixel at one of their sides.
Quarters BorderPixels(const saf_boolean_matrix& binary, const Quarters& all) {
  Quarters border;
  for (size_t i = 0; i < all.size(); ++i) {
    for (const saf_int_point p : all[i]) {
      if ((saf_neighbour_pattern(binary, p.x, p.y) & kSides) != kSides) border[i].push_back(p);
    }
  }
  return border;
}

/// Takes what may go from the border as it stands at the pass's start, so that all sides lose alike.
bool Peel(saf_boolean_matrix& binary, const Quarters& border) {
  bool changed = false;
  for (const auto& quarter : border) {
    for (const saf_int_point p : quarter) {
      if (!kRemovable[saf_neighbour_pattern(binary, p.x, p.y)]) continue;
      binary.At(p) = 0;
      changed = true;
    }
  }
  return changed;
}

}  // namespace

saf_boolean_matrix saf_binary_thin(saf_boolean_matrix binary) {
  ClearEdges(binary);
  Quarters pixels = SetPixels(binary);
  for (int pass = 0; pass < kMaxPasses; ++pass) {
    if (!Peel(binary, BorderPixels(binary, pixels))) break;
    for (auto& quarter : pixels) std::erase_if(quarter, [&](saf_int_point p) { return !binary.At(p); });
  }
  return binary;
}

}  // namespace vorc
