#include "codes/homography.h"

#include <algorithm>

namespace vorc::codes {

namespace {

constexpr size_t kUnknowns = 8;
constexpr double kLeastPivot = 1e-12;
constexpr double kLeastExactPivot = 1e-9;

using Row = std::array<double, kUnknowns + 1>;  // coefficients and right side
using System = std::array<Row, kUnknowns>;

// The two equations of a pair.
std::array<Row, 2> Equations(const PointPair& pair) {
  const auto [u, v] = pair.module;
  const auto [x, y] = pair.pixel;
  return {{{u, v, 1, 0, 0, 0, -u * x, -v * x, x}, {0, 0, 0, u, v, 1, -u * y, -v * y, y}}};
}

// Gauss-Jordan elimination with partial pivoting.
std::optional<Homography> Solve(System& system, double least_pivot) {
  for (size_t column = 0; column < kUnknowns; ++column) {
    const auto pivot = std::max_element(
        system.begin() + static_cast<std::ptrdiff_t>(column), system.end(),
        [&](const Row& a, const Row& b) { return std::abs(a[column]) < std::abs(b[column]); });
    if (!(std::abs((*pivot)[column]) >= least_pivot)) return std::nullopt;
    std::swap(*pivot, system[column]);
    Row& head = system[column];
    const double factor = 1.0 / head[column];
    for (double& value : head) value *= factor;
    for (Row& row : system) {
      if (&row == &head || row[column] == 0) continue;
      const double share = row[column];
      for (size_t i = 0; i < row.size(); ++i) row[i] -= share * head[i];
    }
  }
  Homography h;
  for (size_t i = 0; i < kUnknowns; ++i) h[i] = system[i][kUnknowns];
  h[kUnknowns] = 1.0;
  return h;
}

}  // namespace

std::optional<Homography> homography_ls(const std::vector<PointPair>& pairs) {
  System normal{};
  for (const PointPair& pair : pairs)
    for (const Row& equation : Equations(pair))
      for (size_t i = 0; i < kUnknowns; ++i)
        for (size_t j = 0; j < equation.size(); ++j) normal[i][j] += equation[i] * equation[j];
  return Solve(normal, kLeastPivot);
}

std::optional<Homography> ExactHomography(const std::array<PointPair, 4>& pairs) {
  System system;
  for (size_t i = 0; i < pairs.size(); ++i) {
    const auto equations = Equations(pairs[i]);
    system[2 * i] = equations[0];
    system[2 * i + 1] = equations[1];
  }
  return Solve(system, kLeastExactPivot);
}

}  // namespace vorc::codes
