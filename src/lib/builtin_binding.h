#pragma once

#include "interp/builtin_call.h"

namespace vorc {

struct BuiltinBinding {
  const char* name;
  BuiltinHandler handler;
};

}  // namespace vorc
