#include "builtins/runtime.h"

namespace vorc {

size_t& ScriptRuntime::Count() {
  static size_t count = 0;
  return count;
}

}  // namespace vorc
