#pragma once

#include <cstdint>

#include "base/arena.h"
#include "builtins/table.h"
#include "interp/memory.h"
#include "program/slot.h"

namespace vorc {

/// What a decoded step does. Operators keep the token of their node.
enum class OpCode : uint8_t {
  kNumber,  ///< a literal
  kReal,
  kString,
  kVariable,      ///< a name with its place
  kFunctionName,  ///< a function's name, not called
  kThis,
  kGroup,        ///< a parenthesised expression, evaluated by itself
  kGroupObject,  ///< the same in front of `.` or `->`: stays a place in memory
  kUserCall,     ///< a function that was known when the call was read
  kNameCall,     ///< any other name that is called
  kValueCall,    ///< a call through the value below it
  kMember,       ///< `.name` or `->name` on the value below it
  kMemberCall,
  kNew,
  kStar,
  kAddressOf,
  kCast,
  kPlus,
  kMinus,
  kArithmetic,
  kCompare,
  kAndOr,
  kNegate,
  kUnaryPlus,
  kNotInvert,
  kChoose,  ///< `?:`
  kAssign,
  kCompoundAssign,
  kStepBefore,  ///< prefix ++ and --
  kStepAfter,   ///< postfix, carried out when the whole expression is done
  kMissingOperand,
};

/// Where a variable's bytes are.
enum class Storage : uint8_t { kNone, kLocal, kParameter, kGlobal, kMember };

struct Code;

/// One step of a decoded expression.
struct Op {
  OpCode code = OpCode::kNumber;
  Tok token = Tok::NOTOKEN;
  Storage storage = Storage::kNone;
  bool last = false;       ///< nothing stands behind it
  bool indexed = false;    ///< its node has an index list
  bool plain_int = false;  ///< an `int` scalar without indices
  uint8_t kind = 0;        ///< 1 address, 2 value, 3 pointer, before indices
  int16_t depth = 0;       ///< pointer levels
  int16_t dimensions = 0;
  Tok type = Tok::NOTOKEN;  ///< basic type of the variable
  int16_t argument_count = 0;
  int16_t index_count = 0;
  int32_t offset = 0;
  const EXPR_NODE* node = nullptr;
  SYM_REC* symbol = nullptr;
  STRUCT_REC* record = nullptr;  ///< class of the variable; of a member, the class it was last found in
  union {
    int64_t number = 0;
    double real;
    const char* text;
    FUNCPROTO_REC* function;
  };
  const SysFunc* builtin = nullptr;
  Code* sub = nullptr;       ///< group, or the arm of `?:` taken when true
  Code* other = nullptr;     ///< the other arm
  Code** list = nullptr;     ///< indices or arguments
  Code** indices = nullptr;  ///< indices of a name that is called
};

/// A decoded expression.
struct Code {
  Op* ops = nullptr;
  int count = 0;
};

/// Turns expression chains into steps, once each. What a step needs of the records is looked up
/// here; what can change while a script is read (functions defined later) is left to the run.
class Decoder {
 public:
  Decoder(C_SLOT& slot, Arena& arena, ScriptMemory& memory) : slot_(slot), arena_(arena), memory_(memory) {}

  /// Where steps are remembered by the index of a chain's first node. Zeros at first.
  void KeepIn(Code** chains) { chains_ = chains; }
  /// The steps of the chain that starts at `head`.
  Code* Decode(EXPR_NODE* head) {
    if (head == nullptr) return nullptr;
    Code* known = chains_[head->Index + 1];
    return known != nullptr ? known : DecodeChain(head);
  }

 private:
  Code* DecodeChain(EXPR_NODE* head);
  void DecodeNode(EXPR_NODE* node, Op* op);
  void DecodeName(EXPR_NODE* node, Op* op);
  void DecodeVariable(SYM_REC* symbol, EXPR_NODE* node, Op* op);
  void DecodeOperator(EXPR_NODE* node, Op* op);
  Code** DecodeList(EXPR_NODE* first, EXPR_NODE* EXPR_NODE::*next, int16_t* count);
  int CountSteps(const EXPR_NODE* head) const;

  C_SLOT& slot_;
  Arena& arena_;
  ScriptMemory& memory_;
  Code** chains_ = nullptr;
};

}  // namespace vorc
