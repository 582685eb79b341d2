#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// A text of fixed length, "morvfp1:" and 256 hexadecimal digits, drawn from the set of all runs of
/// six bytes in the content. Contents that share most runs get fingerprints that agree in most
/// digit pairs, wherever in the content the shared runs stand.
std::string FingerprintOf(std::string_view content);

/// The fingerprint of a file's content; empty if the file can't be read.
std::string MorvFileFingerprint(const std::string& path);

/// About the share of content that two fingerprinted files have in common, in percent: 100 only
/// for equal fingerprints, 0 for strangers. -1 if either text is no fingerprint.
int32_t MorvFingerprintSimilarity(std::string_view a, std::string_view b);

}  // namespace vorc
