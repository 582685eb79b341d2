#pragma once

#include <cstddef>
#include <cstdint>

#include "program/tokens.h"

namespace vorc {

/// How long a text was, as long as no pointer has reached into texts since.
struct KnownText {
  const char* text;
  size_t length;
  uint64_t texts_reached;
};

/// What a run keeps of a symbol. All zeros at first.
struct SymbolState {
  char* data;  ///< storage of a global or static
  char* text;  ///< a typeless variable's own copy of its text
  KnownText known;
  uint32_t text_capacity;
  Tok holds;  ///< what a typeless variable holds now
};
static_assert(static_cast<int>(Tok::NOTOKEN) == 0, "the table of states begins as zeros");

}  // namespace vorc
