#pragma once

#include <libpq-fe.h>

namespace vorc {

/// PostgreSQL's client library, opened when a server is first asked for: it brings so many others along
/// that a script with a database of this machine would start three times slower.
struct Libpq {
#define LIBPQ(name) decltype(&::name) name = nullptr;
#include "netstore/libpq_functions.def"
#undef LIBPQ

  /// Null if the library or one of its functions is missing.
  static const Libpq* Get();
};

}  // namespace vorc
