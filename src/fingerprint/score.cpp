#include <algorithm>
#include <cstdlib>

#include "fingerprint/match.h"
#include "fingerprint/tolerance.h"

namespace vorc {

namespace {

// What each kind of evidence counts.
constexpr double kSupportedPairWeight = 0.193;
constexpr double kTypeWeight = 0.629;
constexpr double kEdgeWeight = 0.265;
constexpr double kPairWeight = 0.032;
constexpr double kShareWeight = 8.98;
constexpr double kDistanceWeight = 9.9;
constexpr double kAngleWeight = 2.79;

// Differences up to these are as good as none.
constexpr int kFineLength = 9;
constexpr float kFineAngle = 0.047123887f;

const saf_minutia& ProbeMinutia(const saf_search_template& probe, saf_minutia_pair pair) {
  return probe.minutiae[static_cast<size_t>(pair.probe)];
}

const saf_minutia& CandidateMinutia(const saf_search_template& candidate, saf_minutia_pair pair) {
  return candidate.minutiae[static_cast<size_t>(pair.candidate)];
}

/// What is counted over the pairs.
double CountScore(const std::vector<saf_paired>& pairs, const saf_search_template& probe,
                  const saf_search_template& candidate) {
  int supported = 0, same_type = 0, support = 0;
  for (const saf_paired& paired : pairs) {
    supported += paired.support >= 1;
    support += paired.support;
    same_type += ProbeMinutia(probe, paired.pair).type == CandidateMinutia(candidate, paired.pair).type;
  }
  const double count = static_cast<double>(pairs.size());
  const double share = (count / static_cast<double>(probe.minutiae.size()) +
                        count / static_cast<double>(candidate.minutiae.size())) /
                       2;
  return supported * kSupportedPairWeight + same_type * kTypeWeight + (support + count) * kEdgeWeight +
         count * kPairWeight + share * kShareWeight;
}

/// How well the edges agree along which the pairs were found.
double AccuracyScore(const std::vector<saf_paired>& pairs) {
  if (pairs.size() < 2) return 0;
  int length_error = 0;
  double angle_error = 0;
  for (size_t i = 1; i < pairs.size(); ++i) {
    const saf_edge_shape& a = *pairs[i].probe_edge;
    const saf_edge_shape& b = *pairs[i].candidate_edge;
    length_error += std::max(std::abs(a.length - b.length), kFineLength);
    angle_error += std::max(saf_angle_distance(a.reference_angle, b.reference_angle), kFineAngle);
    angle_error += std::max(saf_angle_distance(a.neighbor_angle, b.neighbor_angle), kFineAngle);
  }
  const double edges = static_cast<double>(pairs.size() - 1);
  const double length_bound = edges * kLengthTolerance;
  const double angle_bound = 2 * edges * static_cast<double>(kAngleTolerance);
  return (length_bound - length_error) / length_bound * kDistanceWeight +
         (angle_bound - angle_error) / angle_bound * kAngleWeight;
}

struct Point {
  double raw;
  double shaped;
};

constexpr Point kShape[] = {
    {8.48, 0}, {11.12, 3}, {14.15, 10}, {18.22, 20}, {22.39, 30}, {27.24, 40}, {32.01, 50}, {45.8, 80},
};

}  // namespace

double saf_raw_score(const std::vector<saf_paired>& pairs, const saf_search_template& probe,
                     const saf_search_template& candidate) {
  return CountScore(pairs, probe, candidate) + AccuracyScore(pairs);
}

double saf_shaped_score(double raw) {
  if (raw < kShape[0].raw) return 0;
  size_t piece = 0;
  while (piece + 2 < std::size(kShape) && raw >= kShape[piece + 1].raw) ++piece;
  const Point& low = kShape[piece];
  const Point& high = kShape[piece + 1];
  return low.shaped + (raw - low.raw) * (high.shaped - low.shaped) / (high.raw - low.raw);
}

}  // namespace vorc
