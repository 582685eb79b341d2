#include "codes/qr_finders.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vorc::codes {

namespace {

constexpr int kFinderModules = 7;
constexpr size_t kMaxFinders = 64;
constexpr int kTallPicture = 500;  // above it every second row is enough
constexpr size_t kMaxCandidates = 14;
constexpr size_t kMaxTriples = 6;

int Total(const FiveRuns& runs) {
  return std::accumulate(runs.begin(), runs.end(), 0);
}

// Counts the steps that stay on `dark` from (x, y) on, which move along; above `limit` it gives up.
int CountRun(const MorvQrImage& image, int& x, int& y, int dx, int dy, bool dark, int limit) {
  int count = 0;
  while (count <= limit && image.Inside(x, y) && dark_at(image, x, y) == dark) {
    ++count;
    x += dx;
    y += dy;
  }
  return count;
}

bool SameFinder(const Finder& finder, const Finder& candidate) {
  const double distance =
      std::abs(finder.centre.x - candidate.centre.x) + std::abs(finder.centre.y - candidate.centre.y);
  const auto [small, large] = std::minmax(finder.m, candidate.m);
  return distance < std::max(3.0, 1.5 * finder.m) && large < 1.5 * small;
}

void Merge(Finder& finder, const Finder& candidate) {
  const double weight = 1.0 / (finder.n + 1);
  finder.centre = (finder.centre * finder.n + candidate.centre) * weight;
  finder.m = (finder.m * finder.n + candidate.m) * weight;
  ++finder.n;
}

void Add(std::vector<Finder>& finders, const Finder& candidate) {
  const auto same = std::find_if(finders.begin(), finders.end(),
                                 [&](const Finder& finder) { return SameFinder(finder, candidate); });
  if (same != finders.end())
    Merge(*same, candidate);
  else if (finders.size() < kMaxFinders)
    finders.push_back(candidate);
}

// Checks the finder whose centre run holds (x, y), first down, then across, then along the diagonal.
std::optional<Finder> ConfirmFinder(const MorvQrImage& image, int x, int y, int centre_run) {
  const int limit = 3 * centre_run + 4;
  const auto vertical = cross_runs(image, x, y, 0, 1, limit);
  if (!vertical) return std::nullopt;
  const double centre_y = y + vertical->offset;
  const int row = static_cast<int>(std::lround(centre_y));
  const auto horizontal = cross_runs(image, x, row, 1, 0, limit);
  if (!horizontal) return std::nullopt;
  const double centre_x = x + horizontal->offset;
  const int column = static_cast<int>(std::lround(centre_x));
  if (!cross_runs(image, column, row, 1, 1, limit)) return std::nullopt;
  const double m = (Total(horizontal->runs) + Total(vertical->runs)) / (2.0 * kFinderModules);
  return Finder{{centre_x + 0.5, centre_y + 0.5}, m, 1};
}

// The last five runs of a row, the latest behind.
class RowScan {
 public:
  RowScan(const MorvQrImage& image, int y, std::vector<Finder>& finders)
      : image_(image), y_(y), finders_(finders) {}

  void Scan() {
    const uint8_t* row = &image_.binary[image_.At(0, y_)];
    int start = 0;
    for (int x = 1; x <= image_.width; ++x) {
      if (x < image_.width && row[x] == row[start]) continue;
      EndRun(x - start, x, row[start] != 0);
      start = x;
    }
  }

 private:
  void EndRun(int length, int end, bool dark) {
    std::copy(runs_.begin() + 1, runs_.end(), runs_.begin());
    runs_.back() = length;
    if (!dark || !finder_ratio(runs_)) return;
    const int middle = end - runs_[4] - runs_[3] - (runs_[2] + 1) / 2;
    if (const auto finder = ConfirmFinder(image_, middle, y_, runs_[2])) Add(finders_, *finder);
  }

  const MorvQrImage& image_;
  int y_;
  std::vector<Finder>& finders_;
  FiveRuns runs_{};
};

// Finders that several lines confirmed, the surest first; if there are too few of them, all.
std::vector<size_t> Candidates(const std::vector<Finder>& finders) {
  std::vector<size_t> candidates;
  for (size_t i = 0; i < finders.size(); ++i)
    if (finders[i].n > 1) candidates.push_back(i);
  if (candidates.size() < 3) {
    candidates.resize(finders.size());
    std::iota(candidates.begin(), candidates.end(), size_t{0});
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [&](size_t a, size_t b) { return finders[a].n > finders[b].n; });
  if (candidates.size() > kMaxCandidates) candidates.resize(kMaxCandidates);
  return candidates;
}

// The triple with its corner opposite the longest side, if the three may be a symbol's.
std::optional<Triple> JudgeTriple(const std::vector<Finder>& finders, std::array<size_t, 3> three) {
  constexpr double kMaxSideRatio = 1.6;
  constexpr double kMaxCosine = 0.4;
  constexpr double kMaxSizeRatio = 1.8;
  constexpr double kMinSide = 8.0;  // in modules

  const auto distance = [&](size_t a, size_t b) { return Length(finders[a].centre - finders[b].centre); };
  const double opposite[3] = {distance(three[1], three[2]), distance(three[0], three[2]),
                              distance(three[0], three[1])};
  std::swap(three[0], three[static_cast<size_t>(std::max_element(opposite, opposite + 3) - opposite)]);
  const auto [corner, second, third] = three;

  const Point side1 = finders[second].centre - finders[corner].centre;
  const Point side2 = finders[third].centre - finders[corner].centre;
  const double d1 = Length(side1), d2 = Length(side2);
  if (d1 < 1.0 || d2 < 1.0 || std::max(d1, d2) > kMaxSideRatio * std::min(d1, d2)) return std::nullopt;
  const double cosine = Dot(side1, side2) / (d1 * d2);
  if (std::abs(cosine) > kMaxCosine) return std::nullopt;
  const auto [least, greatest] = std::minmax({finders[corner].m, finders[second].m, finders[third].m});
  const double size_ratio = greatest / least;
  if (size_ratio > kMaxSizeRatio || std::min(d1, d2) < kMinSide * least) return std::nullopt;

  const double hypotenuse = distance(second, third);
  const double score = std::abs(1 - d1 / d2) + std::abs(cosine) +
                       std::abs(1 - hypotenuse / std::sqrt(d1 * d1 + d2 * d2)) + 0.5 * (size_ratio - 1);
  return Cross(side1, side2) > 0 ? Triple{corner, second, third, score}
                                 : Triple{corner, third, second, score};
}

void KeepBest(std::vector<Triple>& best, const Triple& triple) {
  if (best.size() < kMaxTriples) {
    best.push_back(triple);
    return;
  }
  const auto worst = std::max_element(best.begin(), best.end(),
                                      [](const Triple& a, const Triple& b) { return a.score < b.score; });
  if (triple.score < worst->score) *worst = triple;
}

}  // namespace

bool finder_ratio(const FiveRuns& runs) {
  const int total = Total(runs);
  if (total < kFinderModules || std::any_of(runs.begin(), runs.end(), [](int run) { return run < 1; }))
    return false;
  const double unit = static_cast<double>(total) / kFinderModules;
  const double tolerance = std::max(0.75, 0.55 * unit);
  const auto outer = {runs[0], runs[1], runs[3], runs[4]};
  return std::abs(runs[2] - 3 * unit) <= 3 * tolerance &&
         std::all_of(outer.begin(), outer.end(), [&](int run) { return std::abs(run - unit) <= tolerance; });
}

std::optional<CrossRuns> cross_runs(const MorvQrImage& image, int x, int y, int dx, int dy, int limit) {
  if (!dark_at(image, x, y)) return std::nullopt;
  const auto walk = [&](int step) {
    int at_x = x + step * dx, at_y = y + step * dy;
    std::array<int, 3> runs;
    bool dark = true;
    for (int& run : runs) {
      run = CountRun(image, at_x, at_y, step * dx, step * dy, dark, limit);
      dark = !dark;
    }
    return runs;
  };
  const auto back = walk(-1), on = walk(1);
  const CrossRuns found{{back[2], back[1], back[0] + 1 + on[0], on[1], on[2]}, (on[0] - back[0]) / 2.0};
  const bool too_long =
      std::any_of(found.runs.begin(), found.runs.end(), [&](int run) { return run > limit; });
  if (too_long || !finder_ratio(found.runs)) return std::nullopt;
  return found;
}

std::vector<Finder> FindFinders(const MorvQrImage& image) {
  std::vector<Finder> finders;
  const int step = image.height > kTallPicture ? 2 : 1;
  for (int y = 0; y < image.height; y += step) RowScan(image, y, finders).Scan();
  return finders;
}

std::vector<Triple> RankTriples(const std::vector<Finder>& finders) {
  const std::vector<size_t> candidates = Candidates(finders);
  std::vector<Triple> best;
  for (size_t i = 0; i < candidates.size(); ++i)
    for (size_t j = i + 1; j < candidates.size(); ++j)
      for (size_t k = j + 1; k < candidates.size(); ++k)
        if (const auto triple = JudgeTriple(finders, {candidates[i], candidates[j], candidates[k]}))
          KeepBest(best, *triple);
  std::stable_sort(best.begin(), best.end(),
                   [](const Triple& a, const Triple& b) { return a.score < b.score; });
  return best;
}

}  // namespace vorc::codes
