#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "fingerprint/feature_template.h"
#include "fingerprint/probe.h"
#include "fingerprint/search_template.h"

namespace vorc {

/// A print as scripts hold it: its minutiae, ready to be compared.
class AfisPrint {
 public:
  explicit AfisPrint(saf_feature_template features);

  const saf_feature_template& features() const { return features_; }
  const saf_search_template& search_template() const { return search_template_; }
  /// Made at the first use and kept.
  const saf_probe& Probe();

 private:
  saf_feature_template features_;
  saf_search_template search_template_;
  std::unique_ptr<saf_probe> probe_;
};

/// The print in the bytes of a picture file, taken at 500 dpi. Null if there is no picture, or not
/// enough memory for it.
std::unique_ptr<AfisPrint> MorvAfisExtract(std::string_view picture);

/// The number of minutiae, 0 to 100; -1 without a print.
int MorvAfisMinutiae(const AfisPrint* print);

/// The score of two prints, of which the first is made a probe; 0 without one of them.
double MorvAfisMatch(AfisPrint* probe, const AfisPrint* candidate);

}  // namespace vorc
