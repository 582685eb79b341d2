// How well scores tell fingers apart, over synthetic prints:
//   fingerprint_rates [fingers] [scans of each]
// A false match is a stranger at or above the threshold, a false non-match a scan of the same finger
// below it.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "fingerprint/afis.h"
#include "prints/synthetic_print.h"

namespace {

using namespace vorc;
using namespace vorc::synthetic;

struct Print {
  int finger;
  std::unique_ptr<AfisPrint> afis;
};

/// A careful scan, or one that is smudged and shows about half of the finger.
Impression Draw(Random& random, bool poor) {
  Impression impression = RandomImpression(random);
  if (!poor) return impression;
  impression.noise = random.Between(0.2, 0.8);
  impression.visible = random.Between(0.65, 1);
  impression.visible_x = random.Between(-0.3, 0.3);
  impression.visible_y = random.Between(-0.3, 0.3);
  impression.stretch *= 1.6;
  impression.cuts *= 2;
  return impression;
}

std::vector<Print> MakePrints(int fingers, int scans, bool poor) {
  std::vector<Print> prints;
  for (int finger = 0; finger < fingers; ++finger) {
    const Finger skin = GrowFinger(static_cast<uint64_t>(finger) + 1);
    Random random(static_cast<uint64_t>(finger) + 1);
    for (int scan = 0; scan < scans; ++scan) {
      const uint64_t seed = static_cast<uint64_t>(finger * scans + scan);
      prints.push_back({finger, MorvAfisExtract(ToPgm(Scan(skin, Draw(random, poor), seed)))});
    }
  }
  return prints;
}

double ShareFrom(const std::vector<double>& scores, double threshold) {
  const auto reached =
      std::count_if(scores.begin(), scores.end(), [&](double score) { return score >= threshold; });
  return 100.0 * static_cast<double>(reached) / static_cast<double>(scores.size());
}

void Report(const char* name, const std::vector<Print>& prints) {
  std::vector<double> same, other;
  for (const Print& probe : prints) {
    for (const Print& candidate : prints) {
      if (&probe == &candidate) continue;
      const double score = MorvAfisMatch(probe.afis.get(), candidate.afis.get());
      (probe.finger == candidate.finger ? same : other).push_back(score);
    }
  }
  std::printf("%s: %zu comparisons of the same finger, %zu of strangers\n", name, same.size(), other.size());
  for (const double threshold : {10.0, 20.0, 30.0, 40.0, 60.0}) {
    std::printf("  threshold %2.0f: false match %.4f%%, false non-match %.2f%%\n", threshold,
                ShareFrom(other, threshold), 100 - ShareFrom(same, threshold));
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int fingers = argc > 1 ? std::atoi(argv[1]) : 40;
  const int scans = argc > 2 ? std::atoi(argv[2]) : 5;
  Report("careful scans", MakePrints(fingers, scans, false));
  Report("poor, partial scans", MakePrints(fingers, scans, true));
  return 0;
}
