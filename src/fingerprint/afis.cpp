#include "fingerprint/afis.h"

#include <new>
#include <utility>

#include "fingerprint/feature_extract.h"
#include "fingerprint/match.h"

namespace vorc {

namespace {

constexpr double kAssumedDpi = 500;

}  // namespace

AfisPrint::AfisPrint(saf_feature_template features)
    : features_(std::move(features)), search_template_(saf_search_template_create(features_)) {}

const saf_probe& AfisPrint::Probe() {
  if (probe_ == nullptr) probe_ = std::make_unique<saf_probe>(saf_probe_create(search_template_));
  return *probe_;
}

std::unique_ptr<AfisPrint> MorvAfisExtract(std::string_view picture) try {
  std::optional<saf_double_matrix> image = saf_image_load_grayscale(picture);
  if (!image) return nullptr;
  std::optional<saf_feature_template> features = saf_feature_extract(std::move(*image), kAssumedDpi);
  return features ? std::make_unique<AfisPrint>(std::move(*features)) : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

int MorvAfisMinutiae(const AfisPrint* print) {
  return print == nullptr ? -1 : static_cast<int>(print->features().minutiae.size());
}

double MorvAfisMatch(AfisPrint* probe, const AfisPrint* candidate) try {
  return probe == nullptr || candidate == nullptr ? 0.0
                                                  : saf_match(probe->Probe(), candidate->search_template());
} catch (const std::bad_alloc&) {
  return 0.0;
}

}  // namespace vorc
