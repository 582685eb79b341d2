#include "netstore/libpq.h"

#include <dlfcn.h>

#include <type_traits>

namespace vorc {

namespace {

constexpr const char* kLibrary = "libpq.so.5";

bool Open(Libpq& library) {
  void* opened = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
  if (opened == nullptr) return false;
  bool complete = true;
  const auto find = [&](const char* name, auto& function) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(opened, name));
    complete &= function != nullptr;
  };
#define LIBPQ(name) find(#name, library.name);
#include "netstore/libpq_functions.def"
#undef LIBPQ
  return complete;
}

}  // namespace

const Libpq* Libpq::Get() {
  static Libpq library;
  static const bool complete = Open(library);
  return complete ? &library : nullptr;
}

}  // namespace vorc
