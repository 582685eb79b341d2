#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// The name of a register, 0 to 31, by the standard calling convention: "zero", "ra", "sp" and so on.
std::string_view vrv_register_name(uint32_t number);

/// One RV32IM instruction at an address as a line of text without its end. 0, or 1 for a word that comes
/// out as ".word". Instructions that only RV64 has are not known.
int vrv_disasm_one(uint32_t word, uint32_t address, std::string& out);

}  // namespace vorc
