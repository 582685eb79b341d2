#include "retarget/back_end.h"

#include "retarget/a64_back_end.h"
#include "retarget/rv_install.h"

namespace vorc {

std::unique_ptr<BackEnd> InstallBackEnd(C_SLOT& slot, const std::string& source) {
  switch (slot.Target.core) {
    case Core::kQlx: break;
    case Core::kRiscV: return InstallRvBackEnd(slot, source);
    case Core::kAArch64: return std::make_unique<A64BackEnd>(slot, source);
  }
  return nullptr;
}

}  // namespace vorc
