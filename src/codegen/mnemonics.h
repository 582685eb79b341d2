#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "program/slot.h"

namespace vorc {

/// The spellings that depend on the widths of registers and addresses.
struct Mnemonics {
  explicit Mnemonics(const TargetOptions& target);

  int cpu_bytes;      ///< 4 or 8
  int address_bytes;  ///< 4 or 8

  std::string_view loadimm;    ///< "loadimm8"
  std::string_view word_load;  ///< "load8"
  std::string_view word_store;
  std::string_view word_move;
  std::string_view compare;  ///< "cmp8"
  std::string_view addr_load;
  std::string_view addr_store;
  std::string_view addr_move;
  std::string_view addr_add;  ///< "add8"
  std::string_view addr_sub;
  std::string_view frame_move;  ///< "MOVE8" of the address width
  std::string_view alu_move;    ///< "MOVE8" of the data width
  std::string_view alu_add;     ///< "ADD8" of the address width
  std::string_view push;        ///< "PUSH8"
  std::string_view pop;
  char word_digit;
};

/// Bytes of a value in memory and whether it is read without its sign.
struct AccessWidth {
  int bytes = 8;
  bool is_unsigned = false;
  bool is_address = false;
};

/// "load4", "uload2" ("load8" from 8 bytes on) and "store4".
std::string_view LoadMnemonic(AccessWidth width);
std::string_view StoreMnemonic(AccessWidth width);
/// "push4" and the like.
std::string_view PushMnemonic(int bytes);

/// How a symbol's own value is read and written.
AccessWidth AccessOfSymbol(const C_SLOT& slot, const SYM_REC* symbol);
/// How a basic type is; `depth` pointer levels make it an address.
AccessWidth AccessOfType(const C_SLOT& slot, Tok type, int depth, bool is_unsigned);

/// A whole number as the assembler takes it: what doesn't fit a 32-bit register's sign is hexadecimal.
std::string vorc_imm_for_target(const TargetOptions& target, std::string_view text);

}  // namespace vorc
