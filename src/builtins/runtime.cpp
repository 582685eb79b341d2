#include "builtins/runtime.h"

namespace vorc {

size_t ScriptRuntime::NextIndex() {
  static size_t next = 0;
  return next++;
}

}  // namespace vorc
