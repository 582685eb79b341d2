#pragma once

#include <string>

namespace vorc {

/// Opens a shared library `file` in the folder of the running program. Null if it isn't there.
void* OpenBesideProgram(const std::string& file);

/// Opens a shared library that comes with the program: where it is built (the folder companions beside the
/// program), where it is installed (../lib/vorc/companions), or on the library search path, which comes first
/// when LD_LIBRARY_PATH tells one. Null if it is nowhere.
void* OpenCompanion(const std::string& file);

}  // namespace vorc
