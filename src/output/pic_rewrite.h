#pragma once

#include <string>
#include <string_view>

#include "base/function_ref.h"

namespace vorc {

/// What became of the address loads and calls of an assembly text.
struct PicCounts {
  int rel_loads = 0;
  /// Loads of a register, or into something that is none.
  int abs_loads = 0;
  int rel_calls = 0;
  int abs_calls = 0;
  /// Loads of what the module declares as EXTERN.
  int extern_loads = 0;
};

/// Makes an assembly text run at any base: adds CODEBASE to each address of this module that is loaded,
/// and turns each call of a procedure of this module into a computed jump. `pointer_bytes` is the size of
/// an address, 4 or 8. The counters are raised, not cleared. The result goes to `sink` piece by piece.
void PicRewrite(std::string_view text, int pointer_bytes, PicCounts& counts,
                FunctionRef<void(std::string_view)> sink);

/// Rewrites a file in place, by way of PATH.pictmp. False, with the file as it was, if `pointer_bytes` is
/// neither 4 nor 8, or reading or writing fails. The counters are cleared first.
bool PicRewriteAsmFile(const std::string& path, int pointer_bytes, PicCounts& counts);

/// The line that tells a user of a rewrite.
std::string PicSummary(const PicCounts& counts);

}  // namespace vorc
