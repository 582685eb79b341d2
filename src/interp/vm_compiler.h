#pragma once

#include <string>
#include <vector>

#include "interp/vm_code.h"
#include "interp/vm_states.h"
#include "program/symtab.h"

namespace vorc {

class Interpreter;
struct AccessOps;

/// How a variable's bytes make a value.
enum class Form : uint8_t { kNone, kInt, kByte, kHalf, kReal, kFloat, kWord };

/// An operand as far as it is known before the program runs: what the general evaluation's operand
/// would say of it, and where its bytes are.
struct Item {
  enum class Where : uint8_t {
    kNowhere,    ///< only fit to be dropped
    kNumber,     ///< the integer `number`
    kDouble,     ///< the double `real`
    kText,       ///< the literal `text`
    kTextValue,  ///< the text whose address lies at distance `place`; the number 0 where that is null
    kValue,      ///< an integer or a double at distance `place`, and no variable any more
    kFrame,      ///< a variable at distance `place`
    kData,       ///< a variable at `place` in the script's data
    kAddress,    ///< a variable `offset` bytes behind the address that lies at distance `place`
    kMember,     ///< the same behind the pointer at `place`, which site `site` tells how to check
    kElement,    ///< an element of an array of the frame or the data; `site` tells which
    kPointed,    ///< an element behind the pointer at `place`
  };
  Where where = Where::kNowhere;
  Form form = Form::kNone;
  uint8_t kind = 2;  ///< 1 an address, 2 a value, 3 a pointer
  int16_t depth = 0;
  int16_t dimensions = 0;
  Tok type = Tok::NOTOKEN;
  bool is_real = false;
  bool exact = false;        ///< an `int` in every respect, and not just in its low 32 bits
  bool is_unsigned = false;  ///< its 64 bits may differ from its low 32 with their sign
  bool indexed = false;
  bool typeless = false;
  bool in_data = false;  ///< of an element: the array lies in the script's data
  bool parameter_array = false;
  bool grouped = false;  ///< a variable in parentheses
  int32_t place = 0;
  int32_t offset = 0;
  int32_t index = 0;  ///< of an element: where its index lies
  int32_t index2 = 0;
  int index_count = 0;
  int site = -1;
  int64_t number = 0;
  double real = 0.0;
  const char* text = nullptr;
  SYM_REC* symbol = nullptr;
  STRUCT_REC* record = nullptr;

  bool IsVariable() const { return where >= Where::kFrame; }
  bool IsText() const { return where == Where::kText || where == Where::kTextValue; }
};

/// Compiles a function body, or one statement, for the register machine.
class VmCompiler {
 public:
  VmCompiler(Interpreter& interpreter, FunctionCode& code);

  /// The whole body. `entry`: as the program's start, whose statements are reset one by one.
  void CompileBody(bool entry);
  /// One statement of the file level.
  void CompileStatement(STATEMENT_BLOCK* statement);

 private:
  using Label = int;
  static constexpr Label kNoLabel = -1;
  static constexpr int32_t kNoPlace = INT32_MIN;

  /// How an expression is compiled. `kPlain`: a check that fails goes the general road with the whole
  /// expression, since nothing has happened yet. `kOrdered`: something may have happened, so all is
  /// done in the order of the general road and checks report themselves.
  enum class Order : uint8_t { kPlain, kOrdered };
  enum class Use : uint8_t { kDropped, kLow, kSettled };

  // --- vm_emit.cpp
  Insn& Emit(VmOp op, int32_t a = 0, int32_t b = 0, int32_t c = 0, int d = 0);
  Site& NewSite(int* number);
  Label NewLabel();
  void Bind(Label label);
  void EmitJump(VmOp op, int32_t a, int32_t b, Label target, int d = 0);
  void Finish();
  int32_t NewTemp();
  void ReleaseTemps();
  struct Mark {
    size_t insns, sites, items, labels, jumps, fails, roads;
    int temps;
    size_t barrier;
  };
  Mark Here() const;
  void Back(const Mark& mark);

  // --- vm_statements.cpp
  void Statements(const STATEMENT_BLOCK* first);
  void StatementOf(STATEMENT_BLOCK* statement);
  void If(STATEMENT_BLOCK* statement);
  void While(STATEMENT_BLOCK* statement);
  void Do(STATEMENT_BLOCK* statement);
  void For(STATEMENT_BLOCK* statement);
  void Clauses(const STATEMENT_BLOCK* first);
  void Conditions(const STATEMENT_BLOCK* first, Label body, Label out, bool body_follows);
  void Switch(STATEMENT_BLOCK* statement);
  void Block(STATEMENT_BLOCK* statement);
  void Break(STATEMENT_BLOCK* statement);
  void Return(STATEMENT_BLOCK* statement);
  void ReturnValue(STATEMENT_BLOCK* statement, bool leaves);
  bool ReturnItem(const Item& item, bool leaves);
  void Plain(const STATEMENT_BLOCK* statement);
  void General(VmOp op, int32_t a, Code* code, const STATEMENT_BLOCK* statement);
  void SetState(const STATEMENT_BLOCK* statement, uint8_t state);
  void SetStates(const STATEMENT_BLOCK* from, const STATEMENT_BLOCK* target, uint8_t state);
  void IfState(const STATEMENT_BLOCK* statement, unsigned mask, Label target);
  bool Kept(const STATEMENT_BLOCK* statement) { return states_.Of(statement).kept; }

  // --- vm_roots.cpp: whole expressions
  bool Drop(Code* code);
  void DropOrGeneral(Code* code, const STATEMENT_BLOCK* statement);
  void Condition(Code* code, const STATEMENT_BLOCK* statement, Label target, bool jump_if);
  bool TryCondition(Code* code, Label target, bool jump_if);
  bool Root(Code* code, Use use);
  void StartRoot(const Code* code);
  void EndPlainRoot(VmOp road, int32_t a, Code* code, const STATEMENT_BLOCK* statement);
  bool JumpOn(const Item& item, Label target, bool jump_if);
  bool JumpOnComparison(Tok token, const Item& left, const Item& right, Label target, bool jump_if);
  static int CountEffects(const Code* code, bool root, bool* calls);

  // --- vm_expressions.cpp
  bool Level(const Code& code, bool argument);
  bool Step(const Code& code, const Op& op, bool argument);
  bool Binary(const Op& op, bool argument);
  bool Integers(Tok token, const Op& op, const Item& left, const Item& right, Item* result);
  bool Reals(Tok token, const Op& op, const Item& left, const Item& right, Item* result);
  bool Compare(Tok token, const Item& left, const Item& right);
  bool Logical(const Op& op);
  bool Unary(const Op& op);
  bool Assign(const Op& op);
  bool Compound(const Op& op);
  bool StepVariable(Item item, int step);
  bool Numeric(const Item& item) const;
  int32_t IntPlace(const Item& item);
  int32_t RealPlace(const Item& item);
  int32_t WholePlace(const Item& item);
  int32_t WordPlace(const Item& item);
  Insn* MakerOf(int32_t place);
  bool EmitAccess(const AccessOps& ops, bool stores, const Item& item, int32_t value);
  bool LoadTo(const Item& item, int32_t place);
  bool Store(const Item& target, const Item& value);
  bool StoreTypeless(const Item& target, const Item& value);
  bool Redirect(int32_t from, int32_t to);
  void PushInt(int32_t place);
  void PushReal(int32_t place);
  Item Pop();
  bool Capture(Item* item);
  bool Guard(const Item& item);

  // --- vm_places.cpp
  bool Variable(const Op& op);
  bool PlaceOf(const Op& op, Item* item);
  bool ApplyIndices(const Op& op, Code** indices, int count, Item* item);
  bool IndexArray(const Op& op, Code** indices, int count, Item* item);
  bool FollowPointer(const Op& op, Code* index, Item* item);
  bool Member(const Op& op);
  bool Star(const Op& op);
  bool AddressOf();
  bool ToAddress(Item* item);
  bool IndexPlace(Code* index, Item* item);
  void Classify(Item* item) const;
  int32_t ElementSize(const Item& item) const;
  Form FormOf(const Item& item) const;
  int CheckSite(const Op& op, int32_t size);

  // --- vm_calls.cpp
  bool UserCall(const Op& op);
  FUNCPROTO_REC* Callee(const Op& op) const;
  bool Arguments(const Op& op, FUNCPROTO_REC* callee, int32_t base);
  bool FlushArguments(FUNCPROTO_REC* callee, int32_t base, size_t first_item, int first, int end);
  bool Argument(SYM_REC* parameter, const Item& item, int32_t place);
  int32_t PointerPlace(const Item& item);
  bool BuiltinCall(const Op& op);
  bool BuiltinArgumentOf(const Op& op, int position, BuiltinArgument* argument, bool* constant);
  static bool MayChange(const Op& op, int position);
  static bool RunsFunctions(const Op& op, int position);
  static bool CallsFunction(const Code* code);
  const TextLoan* Lend(const Item& text, bool at_once);
  bool QuietTree(const Code* code) const;

  static constexpr int kMostTemps = 900;
  static constexpr size_t kMostSites = 60'000;

  Interpreter& host_;
  C_SLOT& slot_;
  FunctionCode& code_;
  CallGraph& graph_;
  StateAnalysis states_;
  bool fixed_stack_ = false;  ///< the stack's free end is a constant distance from the base

  std::vector<Item> items_;
  struct Pending {
    Item item;
    int step;
  };
  std::vector<Pending> pending_;
  size_t level_base_ = 0;
  int depth_ = 0;
  int temps_ = 0;
  Order order_ = Order::kPlain;
  Label fail_ = kNoLabel;                ///< of the plain expression in hand
  bool fails_ = false;                   ///< something in it can fail
  bool dropped_ = false;                 ///< nobody asks for its value
  std::vector<const SYM_REC*> guarded_;  ///< typeless variables whose type it has looked at
  size_t barrier_ = 0;                   ///< instructions before this one may be reached by a jump

  std::vector<int32_t> labels_;
  struct LabelUse {
    size_t at;
    Label label;
  };
  std::vector<LabelUse> jumps_;
  std::vector<LabelUse> fails_at_;  ///< sites whose failing check jumps
  struct Road {
    Label start;
    Label back;
    VmOp op;
    int32_t a;
    Code* code;
    const STATEMENT_BLOCK* statement;
    Label target = kNoLabel;  ///< of a condition
    bool jump_if = false;
    bool leaves = false;
  };
  std::vector<Road> roads_;

  Label leave_ = kNoLabel;
  Label block_end_ = kNoLabel;  ///< of the block around the statement in hand, if that is one
  std::unordered_map<const STATEMENT_BLOCK*, Label> breaks_;
  std::unordered_map<const STATEMENT_BLOCK*, Label> continues_;
};

}  // namespace vorc
