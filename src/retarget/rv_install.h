#pragma once

#include <memory>
#include <string>

#include "retarget/back_end.h"

namespace vorc {

/// The back end of RISC-V cores, its listing open.
std::unique_ptr<BackEnd> InstallRvBackEnd(C_SLOT& slot, const std::string& source);

}  // namespace vorc
