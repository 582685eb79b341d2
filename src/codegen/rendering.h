#pragma once

#include <string>
#include <string_view>

#include "codegen/procedure.h"

namespace vorc {

inline constexpr size_t kLongestText = 255;

/// An instruction as the logs show it; they cut long texts.
std::string three_address_instruction_str(const Procedure& procedure, const Instruction& instruction,
                                          size_t longest = kLongestText);

/// Names for the logs: only those that outside checkers know are told apart.
std::string_view asmop_string(int asmop);
std::string_view address_code_type_string(AddressCodeType type);
/// "+" for `+` and `+=` and so on, empty for what has no sign.
std::string_view OpString(Tok op);
/// "tmpreg_N", the symbol's name, or the constant's text.
std::string OperandName(const TacOperand& operand);

}  // namespace vorc
