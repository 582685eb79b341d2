#pragma once

#include <optional>

#include "fingerprint/matrix.h"

namespace vorc {

/// Resamples a picture of `dpi` dots per inch to 500, each new pixel the mean of the area that it
/// covers. Nothing for a resolution that isn't a positive number, and for a result without pixels or
/// with more of them than a picture may have.
std::optional<saf_double_matrix> saf_image_resize(saf_double_matrix image, double dpi);

}  // namespace vorc
