#include "retarget/back_end.h"

namespace vorc {

std::unique_ptr<BackEnd> InstallBackEnd(C_SLOT& slot, const std::string& source) {
  switch (slot.Target.core) {
    case Core::kQlx: break;
    case Core::kRiscV: return MakeRiscvBackEnd(slot, source);
    case Core::kAArch64: return MakeAarch64BackEnd(slot, source);
  }
  return nullptr;
}

}  // namespace vorc
