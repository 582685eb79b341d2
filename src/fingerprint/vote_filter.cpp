#include "fingerprint/vote_filter.h"

namespace vorc {

namespace {

/// The columns' sums over the rows of a window that slides down.
class ColumnSums {
 public:
  ColumnSums(const saf_boolean_matrix& input, int radius)
      : input_(input), radius_(radius), sums_(static_cast<size_t>(input.width())) {}

  /// Moves the window to be centred on row `y`, at or below where it was.
  void MoveTo(int y) {
    const int bottom = std::min(y + radius_ + 1, input_.height());
    const int top = std::max(y - radius_, 0);
    for (; rows_.end < bottom; ++rows_.end) Add(input_.Row(rows_.end), 1);
    for (; rows_.start < top; ++rows_.start) Add(input_.Row(rows_.start), -1);
  }

  int operator[](int x) const { return sums_[static_cast<size_t>(x)]; }
  int rows() const { return rows_.end - rows_.start; }

 private:
  void Add(const uint8_t* row, int sign) {
    for (size_t x = 0; x < sums_.size(); ++x) sums_[x] += sign * row[x];
  }

  const saf_boolean_matrix& input_;
  int radius_;
  std::vector<int> sums_;
  saf_int_range rows_;
};

}  // namespace

saf_boolean_matrix saf_vote_filter(const saf_boolean_matrix& input, const saf_boolean_matrix* mask,
                                   const VoteRule& rule) {
  const int width = input.width();
  saf_boolean_matrix output(width, input.height());
  ColumnSums columns(input, rule.radius);
  for (int y = rule.border; y < input.height() - rule.border; ++y) {
    columns.MoveTo(y);
    saf_int_range window;
    int count = 0;
    for (int x = rule.border; x < width - rule.border; ++x) {
      for (; window.end < std::min(x + rule.radius + 1, width); ++window.end) count += columns[window.end];
      for (; window.start < x - rule.radius; ++window.start) count -= columns[window.start];
      const int area = (window.end - window.start) * columns.rows();
      if (mask != nullptr && !mask->At(x, y)) continue;
      output.At(x, y) = count >= area * rule.majority;
    }
  }
  return output;
}

}  // namespace vorc
