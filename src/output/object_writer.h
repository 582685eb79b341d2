#pragma once

#include <string>

#include "output/build_reference.h"
#include "program/slot.h"

namespace vorc {

/// Writes the records of a compilation beside its source, to its .symtab file and then to its .obj file. What
/// fails is told on standard output. False if the object file isn't whole: there is nothing to go on with
/// then.
bool WriteSymbolAndObjectFiles(const C_SLOT& slot, const std::string& source,
                               const VorcReference128& reference);

}  // namespace vorc
