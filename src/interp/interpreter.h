#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "interp/decode.h"
#include "interp/exec_state.h"
#include "interp/frame.h"
#include "interp/memory.h"
#include "interp/symbol_state.h"
#include "interp/vm_code.h"
#include "interp/vm_states.h"
#include "program/initializer_walk.h"
#include "program/members.h"
#include "program/slot.h"
#include "program/symtab.h"

namespace vorc {

/// An operand: a number, a text, or a variable that has not been read yet.
struct Entry {
  Tok token = Tok::NOTOKEN;        ///< NUMBER, STRING, IDENTIFIER, DOLLAR_IDENTIFIER or `this`
  Tok number_type = Tok::NOTOKEN;  ///< type of the number
  Tok type = Tok::NOTOKEN;         ///< basic type of the variable
  uint8_t kind = 0;                ///< 1 an address, 2 a value, 3 a pointer
  int16_t depth = 0;               ///< pointer levels that are left
  int16_t dimensions = 0;          ///< array dimensions that are left
  bool is_unsigned = false;
  bool indexed = false;        ///< came straight from an index list
  bool assigned = false;       ///< result of an assignment that ends the expression
  bool address_taken = false;  ///< behind `&`
  bool is_parameter_array = false;
  int32_t width = 0;
  union {
    int64_t value = 0;
    double real;
  };
  const char* text = nullptr;
  SYM_REC* symbol = nullptr;
  STRUCT_REC* record = nullptr;
  char* address = nullptr;

  bool IsDouble() const { return number_type == Tok::double_; }
  bool IsVariable() const { return token == Tok::IDENTIFIER || token == Tok::DOLLAR_IDENTIFIER; }
  /// A variable, or the number of one that stood in parentheses: what an assignment can store in.
  bool IsPlace() const {
    return (IsVariable() || token == Tok::NUMBER) && symbol != nullptr && address != nullptr;
  }
  bool IsDollar() const { return type == Tok::dollar && depth == 0 && dimensions == 0; }
  int32_t Low() const { return static_cast<int32_t>(value); }

  void SetInt(int32_t number) {
    token = Tok::NUMBER;
    number_type = Tok::int_;
    kind = 2;
    depth = dimensions = 0;
    is_unsigned = indexed = assigned = address_taken = false;
    width = 4;
    value = number;
    symbol = nullptr;
    address = nullptr;
    text = nullptr;
  }
  void SetDouble(double number) {
    SetInt(0);
    number_type = Tok::double_;
    width = 8;
    real = number;
  }
  void SetText(const char* string) {
    SetInt(0);
    token = Tok::STRING;
    number_type = Tok::NOTOKEN;
    width = 0;
    text = string;
  }
};

/// Who runs the statements of a script.
enum class Road : uint8_t { kMachine, kWalker };

/// Runs the program records of a script. Function bodies are compiled for a register machine, and what
/// that has no instructions for is evaluated in decoded form. The walker does all in decoded form: it is
/// slow and obvious, and says what the machine must do.
class Interpreter final : public ParseServices {
 public:
  explicit Interpreter(C_SLOT& slot, Road road = Road::kMachine);
  /// False if the host grants no memory to run in.
  bool ready() const { return memory_.ready() && symbol_states_ != nullptr; }

  /// Runs `main`. False after an error or without a `main`.
  bool InterpretScript();

  void AllocateData(SYM_REC* symbol) override;
  void InitializeData(SYM_REC* symbol) override;
  void RunStatement(STATEMENT_BLOCK* statement) override;
  int64_t RoomOf(const SYM_REC* symbol) override;
  bool IsBuiltin(const Name* name) override { return FindSystemFunction(name->Text) != nullptr; }

 private:
  /// Arguments of user functions are evaluated without text concatenation and without effects of
  /// compound assignment.
  enum class Mode : uint8_t { kNormal, kArgument };

  /// What a call changes and its end brings back.
  struct Frame {
    int64_t stack_pointer = static_cast<int64_t>(ScriptMemory::kStackWords) - 1;  ///< next free word
    int64_t base = stack_pointer;
    char* this_base = nullptr;
    int32_t return_reg = 0;  ///< integer result of the last `return`
  };

  // --- evaluate.cpp
  bool Evaluate(Code* code, Mode mode, Entry* result);
  bool EvaluateObject(Code* code, Mode mode, Entry* result);
  bool EvaluateLow(Code* code, Mode mode, int32_t* low);
  bool RunSteps(const Code* code, Mode mode, Entry* base, Entry** top);
  bool Step(const Op& op, Mode mode, Entry* top);
  bool Push(const Op& op, Mode mode, Entry* entry);
  bool StepBinary(const Op& op, Mode mode, Entry* left, Entry* right);
  bool RunPostfixSteps(size_t first);
  void FinishResult(Entry* entry);
  bool PlusMinus(const Op& op, Mode mode, Entry* left, Entry* right);
  bool Arithmetic(const Op& op, Entry* left, Entry* right);
  void Compare(Tok token, Entry* left, Entry* right);
  void AndOr(Tok token, Entry* left, Entry* right);
  bool Negate(const EXPR_NODE* node, Entry* entry);
  void NotInvert(Tok token, Entry* entry);
  bool ConditionHolds(const Entry& entry) const;
  bool Choose(const Op& op, Mode mode, Entry* entry);
  bool CheckTop(const Entry* base, const Entry* top);

  // --- values.cpp
  void Materialize(Entry* entry);
  void LoadScalar(Entry* entry, const char* address, Tok type, const SYM_REC* symbol);
  const char* OperandText(const Entry& entry, bool* from_dollar) const;
  const char* CheckedText(const char* text) const;
  bool StringPlus(Entry* left, Entry* right);
  bool AppendInPlace(const Op& op, const Entry& target, Entry* left, Entry* right);
  std::string_view RingText(std::string_view left, std::string_view right);
  std::string_view TypelessText(const SYM_REC* symbol, const char* stored) const;
  std::string_view LengthOf(const char* text) const;
  const char* RetainReturnedString(const char* text);
  void Assign(Entry* left, Entry* right, bool last);
  void StoreNumber(const Entry& target, const Entry& source);
  void StoreInteger(const Entry& target, int64_t value);
  void StoreDollarText(SYM_REC* symbol, char* address, std::string_view text);
  bool CompoundAssign(const Op& op, Entry* left, Entry* right);
  bool CompoundText(const Op& op, Entry* left, Entry* right, bool* done);
  bool PrePostStep(const EXPR_NODE* node, Tok token, Entry* entry);
  int32_t ElementSize(const Entry& entry);

  // --- places.cpp
  bool PushVariable(const Op& op, Mode mode, Entry* entry);
  void PlaceVariable(const Op& op, Entry* entry);
  bool ApplyIndices(Code** indices, int count, const EXPR_NODE* node, Entry* entry);
  bool IndexArray(const EXPR_NODE* node, int64_t index, int dimension, Entry* entry);
  bool FollowPointer(const EXPR_NODE* node, int64_t index, Entry* entry);
  bool StarRef(const EXPR_NODE* node, Entry* entry);
  bool AddressOf(const EXPR_NODE* node, Entry* entry);
  void Cast(const EXPR_NODE* node, Entry* entry);
  bool FindMember(const EXPR_NODE* node, const Entry& object, MemberResult* member);
  bool Member(const Op& op, Entry* object);
  bool ObjectAddress(const Op& op, Entry* object, const char* member, char** address);
  bool CheckMemberAccess(const EXPR_NODE* node, STRUCT_REC* record, const MemberResult& member);
  STRUCT_REC* ClassOf(const EXPR_NODE* node, const Entry& object);
  bool NullPointer(const EXPR_NODE* node, const Entry& entry, const char* pointer);

  // --- calls.cpp
  bool UserCall(const Op& op, Entry* result);
  bool NameCall(const Op& op, Mode mode, Entry* result);
  bool ValueCall(const Op& op, Entry* target);
  bool MemberCall(const Op& op, Entry* object);
  bool CallBuiltin(const Op& op, Entry* result);
  bool RunBuiltin(const Op& op, const BuiltinValue* arguments, size_t count, Entry* result);
  bool RunHandler(const Op& op, BuiltinCall& call) {
    try {
      op.builtin->handler(call);
    } catch (const std::bad_alloc&) {
      return FailForMemory(op);
    }
    return !call.out_of_memory() || FailForMemory(op);
  }
  bool FailForMemory(const Op& op);
  bool AsmCall(const Op& op, Entry* result);
  bool EvaluateArguments(const Op& op, Mode mode, Entry* arguments);
  FUNCPROTO_REC* ChooseOverload(FUNCPROTO_REC* function, int count, const EXPR_NODE* node);
  bool CallFunction(FUNCPROTO_REC* function, const Entry* arguments, int count, bool own_frame,
                    const EXPR_NODE* node, Entry* result);
  void BindArguments(FUNCPROTO_REC* function, const Entry* arguments, int count, int64_t base);
  void BindArgument(SYM_REC* parameter, const Entry& argument, char* word);
  bool CallMember(FUNCPROTO_REC* function, char* object, const EXPR_NODE* node, int argument_count,
                  Entry* result);
  bool RunBody(FUNCPROTO_REC* function);
  void WalkBody(const FUNCPROTO_REC* function);
  bool Leave(const FUNCPROTO_REC* function, const Frame& caller, bool good, const EXPR_NODE* node,
             Entry* result);
  void CopyReturnedData(const FUNCPROTO_REC* function, Entry* result);
  void WarnCount(const FUNCPROTO_REC* function, int count, const EXPR_NODE* node);
  static BuiltinValue ToBuiltinValue(const Entry& entry);
  static void FromBuiltinValue(const BuiltinValue& value, Entry* entry);

  // --- statements.cpp
  void RunFileStatement(STATEMENT_BLOCK* statement);
  bool ExecStatement(STATEMENT_BLOCK* statement);
  bool ExecPlain(STATEMENT_BLOCK* statement);
  bool ExecIf(STATEMENT_BLOCK* statement);
  bool ExecWhile(STATEMENT_BLOCK* statement);
  bool ExecDo(STATEMENT_BLOCK* statement);
  bool ExecFor(STATEMENT_BLOCK* statement);
  bool ExecForClauses(const STATEMENT_BLOCK* first, bool* any_true);
  bool ExecSwitch(STATEMENT_BLOCK* statement);
  bool ExecBlock(STATEMENT_BLOCK* statement);
  bool ExecReturn(STATEMENT_BLOCK* statement);
  bool SetReturnValue(const STATEMENT_BLOCK* statement);
  uint8_t& ExecState(const STATEMENT_BLOCK* statement) { return exec_states_[statement->Index]; }
  void SetBreakContinueExecutionState(STATEMENT_BLOCK* target, STATEMENT_BLOCK* statement, uint8_t state);
  bool ExecBreak(STATEMENT_BLOCK* statement);
  bool ExecContinue(STATEMENT_BLOCK* statement);
  bool ExecGoto(STATEMENT_BLOCK* statement);
  bool EvaluateCondition(STATEMENT_BLOCK* statement, bool* holds);

  // --- vm_run.cpp
  /// A call that runs on the register machine.
  struct CallRecord {
    const Insn* pc;
    const FunctionCode* code;
    char* fp;
    char* sp;
    int32_t ret;
  };
  bool RunCode(const FunctionCode& code);

  // --- vm_slow.cpp
  FunctionCode* CodeOf(FUNCPROTO_REC* function);
  void Compile(FunctionCode* code);
  static int32_t CaseOf(const SwitchTable& table, int32_t value);
  char* PointedBy(const Site& site, char* pointer, int32_t index) const {
    char* at = Displaced(pointer, int64_t{index} * site.stride);
    const bool there =
        (pointer != nullptr || site.length < 0) && memory_.Reach(at, static_cast<size_t>(site.size));
    return there ? at : nullptr;
  }
  bool KeepTemps(const char* fp, int32_t count);
  void BringTempsBack(char* fp, int32_t count);
  void ReportFullStack(const Site& site);
  bool ReportElement(const Site& site, int32_t index, char* address);
  void ReportPointer(const Site& site, const char* pointer);
  void ReportPointed(const Site& site, const char* pointer, int32_t index);
  void StoreText(const Site& site, char* address, const char* text);
  void StartGeneral(const Site& site);
  bool RunGeneral(const Site& site);
  bool RunGeneralLow(const Site& site, int32_t* low);
  bool RunGeneralReturn(const Site& site);
  enum class Called : uint8_t { kDone, kFailed, kNotYet };
  Called RunBuiltinSite(BuiltinSite& site, const char* fp, char* result);
  bool RunBuiltinSlowly(BuiltinSite& site, const char* fp, char* result);
  bool Invoke(BuiltinSite& site, char* result);
  bool RunTakenName(const Op& op, char* result);
  bool FetchReady(const BuiltinArgument& argument, const char* fp) const;
  bool FetchArgument(const BuiltinArgument& argument, const char* fp);
  bool TextOfVariable(const BuiltinArgument& argument, const char* fp) const;

  // --- sweep.cpp
  void SweepTexts();
  void SweepIfDue() {
    if (memory_.WantsSweep()) SweepTexts();
  }

  // --- data.cpp
  bool FillLocal(const STATEMENT_BLOCK* statement);
  void StoreLeaf(const InitializerLeaf& leaf, char* base, const Entry& value);
  char* AddressOfSymbol(const SYM_REC* symbol) const;
  bool ConstantEntry(const InitializerLeaf& leaf, Entry* entry);

  SymbolState& StateOf(const SYM_REC* symbol) const { return symbol_states_[symbol->Index + 1]; }
  bool failed() const { return slot_.Display.ErrorCount > 0; }
  bool Fail(const EXPR_NODE* node, const std::string& text);
  char* Word(int64_t index) const {
    return memory_.stack() + index * static_cast<int64_t>(ScriptMemory::kWordSize);
  }

  C_SLOT& slot_;
  ScriptMemory memory_;
  ScriptRuntime runtime_;
  Arena code_arena_;
  Decoder decoder_{slot_, code_arena_, memory_};
  /// Records of calls, kept temporaries, states and known texts; what is left of it is for operands.
  std::optional<ReservedPieces> work_memory_;
  Entry* operands_ = nullptr;  ///< next free operand; expressions in progress lie below
  Entry* operands_begin_ = nullptr;
  Entry* operands_end_ = nullptr;
  /// A postfix step waits until every other step of its expression is done.
  struct PendingStep {
    const Op* op;
    Entry entry;
  };
  std::vector<PendingStep> pending_;

  static constexpr size_t kOperandsInHand = 64;
  static constexpr size_t kMostBuiltinArguments = 16;

  friend class VmCompiler;
  const bool walks_;  ///< the walker runs everything
  CallGraph call_graph_{slot_, decoder_};
  std::unordered_map<const FUNCPROTO_REC*, std::unique_ptr<FunctionCode>> codes_;
  FunctionCode entry_code_;           ///< of `main` as the program's start
  CallRecord* record_top_ = nullptr;  ///< next free record
  CallRecord* record_end_ = nullptr;
  char* save_top_ = nullptr;  ///< temporaries that a call would overwrite
  char* save_end_ = nullptr;
  uint8_t* exec_states_ = nullptr;  ///< of each statement, by its index: how it ended

  Frame frame_;
  PlacedLocals file_level_locals_;
  const void* host_stack_top_ = nullptr;  ///< where the run began on the host's stack
  SourceLine current_line_;               ///< of the statement that runs
  double return_reg_double_ = 0.0;
  const char* return_reg_string_ = nullptr;
  bool return_reg_is_double_ = false;
  bool return_reg_is_string_ = false;

  struct TextSlot {
    char* buffer = nullptr;
    size_t capacity = 0;
  };
  struct TextRing {
    static constexpr size_t kSlots = 64;
    TextSlot slots[kSlots];
    size_t next = 0;
  };
  char* GrowSlot(TextSlot* slot, size_t needed);
  bool TextFits(size_t length);
  bool Holds(const KnownText& known, const char* text) const {
    return known.text == text && text != nullptr && known.texts_reached == memory_.texts_reached();
  }
  SymbolState* symbol_states_ = nullptr;  ///< by the symbol's index; ahead of all those of a full table
  KnownText joined_{};                    ///< what was joined last, for whoever stores it
  KnownText joined_left_{};               ///< what it starts with
  TextRing concat_ring_;
  TextRing return_ring_;
};

}  // namespace vorc
