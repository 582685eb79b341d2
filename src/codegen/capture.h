#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "codegen/mnemonics.h"
#include "codegen/procedure.h"
#include "program/value_type.h"

// Adds instructions to the procedure's list and to its current block.

namespace vorc {

/// A temporary in a composed text.
struct TempName {
  int32_t temp;
};

namespace capture_detail {
inline void Append(std::string* out, std::string_view part) {
  out->append(part);
}
inline void Append(std::string* out, TempName part) {
  out->append("tmpreg_").append(std::to_string(part.temp));
}
template <std::integral Number>
void Append(std::string* out, Number part) {
  out->append(std::to_string(part));
}
}  // namespace capture_detail

/// Texts, numbers and temporaries, one behind the other, kept as long as the procedure.
template <typename... Parts>
std::string_view Compose(Procedure& procedure, const Parts&... parts) {
  std::string text;
  (capture_detail::Append(&text, parts), ...);
  return procedure.Keep(text);
}

TacOperand TempOperand(int32_t temp);
TacOperand SymbolOperand(const SYM_REC* symbol);
TacOperand TextOperand(std::string_view text);
TacOperand NumberOperand(Procedure& procedure, int64_t number);

/// The walk of one procedure's statements.
struct Walk {
  Procedure& procedure;
  C_SLOT& slot;
  SourceLine line;  ///< of the statement in hand
  const Mnemonics& mnemonics;
  bool is_inexact = false;  ///< so is the next instruction
  int chains = 0;           ///< expressions that are being lowered, one within the other
  bool failed = false;      ///< what is being lowered has an error, and is given up
};

/// A marker for a source line that code is made for.
void AddSourceLineToFtac(Walk& walk, SourceLine line);

/// `result = a op b`; an assignment is `a = b` and has no result.
Instruction& CapturePlain(Walk& walk, Tok op, const TacOperand& a, const TacOperand& b, int32_t result);
/// An assembly instruction with its text; a comment stands behind it.
Instruction& CaptureAssembly(Walk& walk, AsmOp op, std::string_view text, std::string_view comment = {});
void CaptureComment(Walk& walk, std::string_view text);
/// A jump with its target's label.
void CaptureJump(Walk& walk, AsmOp op, std::string_view target, std::string_view comment = {});
void CaptureLabel(Walk& walk, int32_t number, std::string_view comment = {});
/// Compares a variable with a number; the comment brings its own mark.
void CaptureCompareWithNumber(Walk& walk, const TacOperand& a, int64_t number, std::string_view comment = {});
/// Compares the value of a `switch` with one of its cases.
void CaptureCompareWithCase(Walk& walk, const TacOperand& a, int64_t value);
/// A temporary gets a constant, zero, the address of a symbol, or that of a named place.
/// The text's mnemonic is that of the data width, or the given one.
void CaptureLoadImmediate(Walk& walk, int32_t temp, std::string_view number, std::string_view mnemonic = {});
void CaptureClear(Walk& walk, int32_t temp, std::string_view comment);
void CaptureAddressOfGlobal(Walk& walk, int32_t temp, const SYM_REC* symbol, bool as_argument = false);
void CaptureAddressOfLabel(Walk& walk, int32_t temp, std::string_view label, std::string_view comment);
Instruction& CaptureAddressInFrame(Walk& walk, int32_t temp, int32_t distance, std::string_view comment,
                                   const SYM_REC* addressed = nullptr);
/// The address of an object in the frame that a member function runs on.
void CaptureAddressOfObject(Walk& walk, int32_t temp, int32_t distance, const SYM_REC* symbol);
/// `result = a + number`, `result = a * number`, `result = a + b` over temporaries.
void CaptureAddNumber(Walk& walk, int32_t result, int32_t a, int64_t number, std::string_view comment = {});
void CaptureMultiplyNumber(Walk& walk, int32_t result, const TacOperand& a, int64_t number, bool is_unsigned);
void CaptureAdd(Walk& walk, int32_t result, int32_t a, int32_t b);
/// Memory behind a temporary.
void CaptureLoad(Walk& walk, int32_t result, int32_t base, AccessWidth width, std::string_view comment = {});
/// The value of a pointer that lies in memory, on the way to a member.
void CapturePointerLoad(Walk& walk, int32_t result, int32_t base, std::string_view name);
void CaptureStore(Walk& walk, int32_t value, int32_t base, AccessWidth width);
/// Tells that a member of a struct variable was written; makes no code.
void CaptureModifiedStruct(Walk& walk, const SYM_REC* symbol);
void CapturePush(Walk& walk, const TacOperand& value, int width, std::string_view comment,
                 const ValueType& type);
void CapturePushRegister(Walk& walk, std::string_view reg);
void CapturePopRegister(Walk& walk, std::string_view reg);
void CaptureMoveVarToReg(Walk& walk, std::string_view reg, const TacOperand& value,
                         std::string_view mnemonic);
void CaptureMoveRegToVar(Walk& walk, int32_t temp, std::string_view reg);

/// Opens a new block and makes it the current one; its first instruction tells why.
BasicBlock* StartBlock(Walk& walk, std::string_view reason);
/// "NAME_N" of a numbered label.
std::string_view LabelString(Procedure& procedure, int32_t number);

}  // namespace vorc
