#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "codegen/mnemonics.h"
#include "codegen/procedure.h"
#include "retarget/rv_unit_code.h"

namespace vorc {

/// What code of a function names: a temporary, a variable of the source, or a cell that only the frame knows.
struct RvVariable {
  enum Kind : uint8_t {
    kUnnamed,
    kTemp,
    kSymbol,
    kIncoming,  ///< the address that a struct parameter came as
    kThis,      ///< the address of the object that a member function works on
  };

  Kind kind = kUnnamed;
  int32_t temp = kNoTemp;
  const SYM_REC* symbol = nullptr;

  static RvVariable Temp(int32_t temp) { return {kTemp, temp, nullptr}; }
  static RvVariable Symbol(const SYM_REC* symbol) { return {kSymbol, kNoTemp, symbol}; }

  bool operator==(const RvVariable&) const = default;
};

struct RvVariableHash {
  size_t operator()(const RvVariable& variable) const {
    const size_t name = variable.symbol == nullptr ? static_cast<size_t>(variable.temp)
                                                   : std::hash<const void*>()(variable.symbol);
    return name * 4 + variable.kind;
  }
};

/// The open function: its frame, its labels, and which registers hold variables of the block in hand. What
/// can't be done answers false or -1, and the statement that asked for it stays untranslated.
class RvFunctionCode {
 public:
  static constexpr std::array<uint32_t, 9> RV32_REGPOOL = {12, 13, 14, 15, 16, 17, 28, 29, 30};

  explicit RvFunctionCode(RvUnitCode& unit) : unit_(unit), enc_(unit.enc) {}

  // --- rv_function_code.cpp: from the first word to the last

  /// Starts a function: its label, a frame that is settled at the end, and its parameters in the frame. False
  /// if a parameter has no register or no slot, or the function no place in the unit's table.
  bool Open(Procedure& procedure);
  bool is_open() const { return proto_ != nullptr; }
  const FUNCPROTO_REC* proto() const { return proto_; }
  const std::string& name() const { return name_; }
  /// Gives registers to the first variables of a block; answers how many got one.
  int BeginBlock(Procedure& procedure, const BasicBlock& block);
  /// The first of a function's footers becomes the way out.
  bool WriteEpilogue();
  bool epilogue_seen() const { return epilogue_; }
  /// True if it has a way out and every branch in it leads somewhere.
  bool IsComplete() const;
  /// Settles the frame. False if it is beyond reach of the instructions that make it.
  bool rv32_flush_function(bool emitted);
  int32_t frame_bytes() const;
  /// Brings the result in a0 to the form in which callers of any origin expect it.
  bool FinishResult();

  // --- rv_variables.cpp: registers and memory

  /// The place of a variable in the frame, in bytes from sp, made where it is new. -1 if it has no room.
  int32_t rv32_slot_for(const RvVariable& variable);
  /// Memory of a variable; registers that hold it are not looked at.
  bool rv32_load_var(uint32_t reg, const RvVariable& variable);
  bool rv32_store_var(uint32_t reg, const RvVariable& variable);
  /// The register that holds a variable: its own, or the one given, into which it is loaded. -1 if it can't
  /// be.
  int32_t rv32_read_reg(const RvVariable& variable, uint32_t scratch);
  /// The register that a new value goes to: the variable's own, or the one given.
  uint32_t TargetOf(const RvVariable& variable, uint32_t scratch) const;
  /// Ends a definition whose value is in TargetOf.
  bool rv32_write_done(const RvVariable& variable, uint32_t reg);
  /// Brings all changed variables to memory.
  bool rv32_flush_residents();
  /// Makes the next read load anew, whatever the register holds.
  void ForgetResident(const RvVariable& variable);
  /// Makes later reads load anew.
  void ForgetResidents();
  bool IsResident(const RvVariable& variable) const { return Find(variable) != nullptr; }
  /// The address of a variable's memory in a register.
  bool LoadAddress(uint32_t reg, const RvVariable& variable);
  bool LoadNumber(uint32_t reg, int64_t number);
  /// Zeros above the lower 32 bits.
  bool ZeroExtend(uint32_t reg);
  bool LoadMemory(AccessWidth width, uint32_t reg, uint32_t base, int32_t offset);
  bool StoreMemory(int bytes, uint32_t base, int32_t offset, uint32_t reg);

  // --- labels and arguments

  /// The label of that text, -1 if the table is full.
  int32_t rv32_label_for(std::string_view text);
  /// An argument that a call will take.
  struct Argument {
    RvVariable variable;  ///< kUnnamed for a number
    int64_t number = 0;
  };
  std::vector<Argument> pending;
  bool has_call = false;

 private:
  struct Resident {
    RvVariable variable;
    uint32_t reg = 0;
    bool loaded = false;
    bool dirty = false;
  };

  Resident* Find(const RvVariable& variable);
  const Resident* Find(const RvVariable& variable) const {
    return const_cast<RvFunctionCode*>(this)->Find(variable);
  }
  bool IsInFrame(const SYM_REC* symbol) const;
  bool IsShared(const SYM_REC* symbol) const;
  bool IsMember(const SYM_REC* symbol) const;
  bool IsTooWide(const SYM_REC* symbol) const;
  AccessWidth WidthOf(const RvVariable& variable) const;
  int64_t BytesOf(const RvVariable& variable) const;
  int32_t GlobalOf(const SYM_REC* symbol);
  int32_t MemberOffsetOf(const SYM_REC* symbol) const;
  bool StoreParameters();
  bool StoreParameter(uint32_t reg, const SYM_REC* parameter);
  bool PatchFrame(int32_t frame);
  void PatchReturnAddress();
  void ReleaseLabels(bool emitted);

  RvUnitCode& unit_;
  VrvEncoder& enc_;
  Procedure* procedure_ = nullptr;  ///< valid while its blocks come
  const FUNCPROTO_REC* proto_ = nullptr;
  std::string name_;
  int32_t number_ = RvUnitCode::kNone;
  uint32_t start_ = 0;
  size_t first_fixup_ = 0;
  bool epilogue_ = false;
  bool result_is_uint32_ = false;
  int64_t slot_words_ = 0;
  std::unordered_map<RvVariable, int32_t, RvVariableHash> slots_;
  std::unordered_map<std::string, int32_t> labels_;
  std::vector<Resident> residents_;
  std::vector<uint32_t> frame_sites_;
  std::vector<uint32_t> return_address_sites_;
};

}  // namespace vorc
