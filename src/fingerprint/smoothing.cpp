#include "fingerprint/smoothing.h"

#include "fingerprint/angles.h"

namespace vorc {

namespace {

constexpr double kShortestRadius = 0.5;

std::vector<saf_int_point> MakeLine(double angle, int radius, double step) {
  const saf_double_point direction = saf_angle_to_vector(angle);
  std::vector<saf_int_point> line{{0, 0}};
  for (double r = radius; r >= kShortestRadius; r /= step) {
    const saf_int_point point{saf_round(r * direction.x), saf_round(r * direction.y)};
    if (std::find(line.begin(), line.end(), point) != line.end()) continue;
    line.push_back(point);
    line.push_back({-point.x, -point.y});
  }
  return line;
}

/// Adds the pixels that lie `shift` away from those of `area`.
void AddShifted(const saf_double_matrix& input, const saf_int_rect& area, saf_int_point shift,
                saf_double_matrix& sums) {
  const int left = std::max(area.x, -shift.x);
  const int right = std::min(area.right(), input.width() - shift.x);
  const int top = std::max(area.y, -shift.y);
  const int bottom = std::min(area.bottom(), input.height() - shift.y);
  for (int y = top; y < bottom; ++y) {
    const double* from = input.Row(y + shift.y) + shift.x;
    double* to = sums.Row(y);
    for (int x = left; x < right; ++x) to[x] += from[x];
  }
}

void Scale(const saf_int_rect& area, double factor, saf_double_matrix& values) {
  for (int y = area.y; y < area.bottom(); ++y) {
    double* row = values.Row(y);
    for (int x = area.x; x < area.right(); ++x) row[x] *= factor;
  }
}

}  // namespace

saf_smoothing_lines saf_oriented_smoothing_lines(int resolution, int radius, double step) {
  saf_smoothing_lines lines;
  for (int i = 0; i < resolution; ++i) {
    const double bucket_centre = (i + 0.5) * kFullCircle / resolution;
    lines.push_back(MakeLine(saf_angle_from_orientation(bucket_centre), radius, step));
  }
  return lines;
}

saf_double_matrix saf_oriented_smoothing_smooth(const saf_double_matrix& input,
                                                const saf_double_matrix& orientations,
                                                const saf_boolean_matrix& block_mask,
                                                const saf_block_map& blocks, double offset,
                                                const saf_smoothing_lines& lines) {
  saf_double_matrix output(input.width(), input.height());
  const int resolution = static_cast<int>(lines.size());
  for (int row = 0; row < block_mask.height(); ++row) {
    for (int column = 0; column < block_mask.width(); ++column) {
      if (!block_mask.At(column, row)) continue;
      const double angle = saf_angle_normalize(orientations.At(column, row) + offset);
      const int bucket = std::min(static_cast<int>(angle / kFullCircle * resolution), resolution - 1);
      const std::vector<saf_int_point>& line = lines[static_cast<size_t>(bucket)];
      const saf_int_rect area = blocks.primary.Block(column, row);
      for (const saf_int_point point : line) AddShifted(input, area, point, output);
      Scale(area, 1.0 / static_cast<double>(line.size()), output);
    }
  }
  return output;
}

}  // namespace vorc
