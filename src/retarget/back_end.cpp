#include "retarget/back_end.h"

namespace vorc {

std::unique_ptr<BackEnd> InstallBackEnd(C_SLOT& slot, const std::string&) {
  switch (slot.Target.core) {
    case Core::kQlx:
    case Core::kRiscV:
    case Core::kAArch64:
      break;
  }
  return nullptr;
}

}  // namespace vorc
