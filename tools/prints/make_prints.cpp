// Writes scans of synthetic fingers, for trials of the fingerprint functions:
//   make_prints folder fingers scans [first seed]
// FOLDER/FINGER_SCAN.pgm; the same arguments always give the same pictures.

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "prints/synthetic_print.h"

int main(int argc, char** argv) {
  using namespace vorc::synthetic;
  if (argc < 4 || argc > 5) {
    std::fprintf(stderr, "usage: make_prints folder fingers scans [first seed]\n");
    return 1;
  }
  const int fingers = std::atoi(argv[2]);
  const int scans = std::atoi(argv[3]);
  const uint64_t first = argc > 4 ? std::strtoull(argv[4], nullptr, 10) : 1;
  for (int i = 0; i < fingers; ++i) {
    const uint64_t seed = first + static_cast<uint64_t>(i);
    const Finger finger = GrowFinger(seed);
    Random random(seed);
    for (int j = 0; j < scans; ++j) {
      const Impression impression = RandomImpression(random);
      const std::string path =
          std::string(argv[1]) + "/" + std::to_string(seed) + "_" + std::to_string(j) + ".pgm";
      std::ofstream file(path, std::ios::binary);
      file << ToPgm(Scan(finger, impression, seed * 1000 + static_cast<uint64_t>(j)));
      if (!file.flush()) {
        std::fprintf(stderr, "make_prints: can't write '%s'\n", path.c_str());
        return 1;
      }
    }
  }
  return 0;
}
