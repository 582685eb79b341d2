#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vorc::sim {

/// What the executor does for an instruction.
enum class Operation : uint8_t {
  kAdd,
  kAddU,
  kSub,
  kSubU,
  kMul,
  kMulU,
  kDiv,
  kDivU,
  kMod,
  kModU,
  kInc,
  kDec,
  kShl,
  kShlU,
  kShr,
  kShrU,
  kRotl,
  kRotr,
  kAnd,
  kOr,
  kXor,
  kInv,
  kSetBit,
  kClrBit,
  kFlipByte,
  kFlipBit,
  kCmpL,
  kCmpG,
  kCmpLE,
  kCmpGE,
  kCmpLU,
  kCmpGU,
  kCmpLEU,
  kCmpGEU,
  kCmpEQ,
  kCmpNE,
  kCmp,
  kCmpU,
  kMove,
  kMoveU,
  kClr,
  kLoad,
  kLoadU,
  kStore,
  kPush,
  kPop,
  kJump,
  kCall,
  kNop,
  kEndSim,
  kSystem,
  // What the assembler makes of others.
  kJumpRegister,  // to the address in a register
  kCallRegister,
  kUndefined,  // names something that is defined nowhere
  kEndOfProcedure,
  kReturned,  // where a called procedure comes back to
};

/// How the operands of an instruction may be written.
enum class Form : uint8_t {
  kAlu,          // d,a,b or d,b for d,d,b; b is a register or a constant
  kUnary,        // d,a or d
  kOneRegister,  // d
  kCompare,      // a,b; b is a register or a constant
  kConstant,     // d,constant
  kMoveForm,     // d,a; a is a register or a constant
  kMemory,       // d,[a] d,[a,b] d,[a,constant] d,[a+constant] d,[name] d,[name,constant]
  kAddressOf,    // d,name d,name+constant d,a d,a,constant
  kTarget,       // label or register
  kToLink,       // nothing
  kCallForm,     // name or register
  kNoOperand,    // nothing
  kAnything,     // not looked at
};

enum class DefaultSize : uint8_t { kWord, kAddress, kNoSize };

/// How two numbers compare; a jump names those that take it.
enum Ordering : uint8_t { kLess = 1, kEqual = 2, kGreater = 4, kAlways = 7 };

struct InstructionRow {
  std::string_view stem;
  Operation operation;
  Form form;
  DefaultSize size;
  uint8_t detail;
  std::string_view meaning;
};

/// All rows, in the order of the table.
std::span<const InstructionRow> InstructionTable();

/// How a form is written, for people: "d,a,b".
std::string_view FormText(Form form);

struct Mnemonic {
  const InstructionRow* row;
  int size;  // bytes that the suffix tells, 0 without one
};

/// Finds a mnemonic with its size suffix, in either case. Nothing if there is no such instruction or it
/// doesn't come in that size.
std::optional<Mnemonic> FindMnemonic(std::string_view word);

inline constexpr int kRegisterCount = 64;
inline constexpr int kCodeBase = 3;
inline constexpr int kStackPtr = 25;
inline constexpr int kFramePtr = 26;
inline constexpr int kStackBegin = 27;
inline constexpr int kStackEnd = 28;
inline constexpr int kLink = 29;
inline constexpr int kProgramCounter = 31;
inline constexpr int kReturnValue = 60;

/// The number of a register by its name in either case, -1 if there is none of that name.
int FindRegister(std::string_view name);

}  // namespace vorc::sim
