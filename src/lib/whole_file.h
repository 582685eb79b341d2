#pragma once

#include <string>
#include <string_view>

#include "base/function_ref.h"

namespace vorc {

/// Takes a piece of a file's new content. False if it couldn't be written.
using PieceWriter = FunctionRef<bool(std::string_view)>;

/// Gives a file the content that `produce` hands out piece by piece. A file that exists keeps its old
/// content until the new one is complete, as FileRewrite does it; of a new file nothing stays after a
/// failure; a device is written to as it is. False if `produce` answers false, if anything fails up to
/// the closing, or if the sandbox refuses the path, which is told on standard error.
bool MorvWriteWholeFile(const std::string& path, FunctionRef<bool(PieceWriter)> produce);

}  // namespace vorc
