#include "codegen/unnamed_strings.h"

#include "base/format.h"

namespace vorc {

std::string_view UnnamedStrings::AddUnnamedStringToDataSection(std::string_view text, SourceLine line) {
  records_.push_back({Format("lfnnnnnn_unnamed_label_%06d", static_cast<int>(records_.size())), text, line});
  return records_.back().label;
}

}  // namespace vorc
