#include "builtins/list_handles.h"

#include <utility>

#include "base/handle_table.h"
#include "lib/containers.h"

namespace vorc {

int32_t NewListHandle(const BuiltinCall& call, std::vector<std::string> items) {
  return call.runtime().State<HandleTable<TextList>>().Create(std::move(items));
}

}  // namespace vorc
