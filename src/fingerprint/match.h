#pragma once

#include <vector>

#include "fingerprint/pairing.h"
#include "fingerprint/probe.h"
#include "fingerprint/search_template.h"

namespace vorc {

/// How surely two prints are of the same finger: 0 for not at all, without an upper end.
double saf_match(const saf_probe& probe, const saf_search_template& candidate);

// The steps of a match.

/// Pairs to grow a pairing from, each once, in the order in which they are found.
std::vector<saf_minutia_pair> saf_root_pairs(const saf_probe& probe, const saf_search_template& candidate);

/// The sum of what speaks for a pairing.
double saf_raw_score(const std::vector<saf_paired>& pairs, const saf_search_template& probe,
                     const saf_search_template& candidate);

/// Maps a raw score to the scale that users see.
double saf_shaped_score(double raw);

}  // namespace vorc
