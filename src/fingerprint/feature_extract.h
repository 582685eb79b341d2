#pragma once

#include <optional>
#include <string_view>

#include "fingerprint/feature_template.h"
#include "fingerprint/matrix.h"

namespace vorc {

/// The picture in the bytes of a file, as darkness from 0 (white) to 1 (black). Nothing if there is
/// none, or if it is larger than a picture of a print may be.
std::optional<saf_double_matrix> saf_image_load_grayscale(std::string_view bytes);

/// Finds the minutiae of a print of `dpi` dots per inch, at most 100. Nothing if the resolution is
/// none, or the picture too large at 500 dpi. A picture without a print has no minutiae.
std::optional<saf_feature_template> saf_feature_extract(saf_double_matrix image, double dpi);

}  // namespace vorc
