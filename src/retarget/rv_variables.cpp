#include <algorithm>
#include <bit>

#include "program/layout.h"
#include "program/members.h"
#include "retarget/rv_function_code.h"

namespace vorc {
namespace {

constexpr size_t kMostSlots = 256;
constexpr int32_t kFarthestSlot = 2047;
constexpr int kLowBits = 12;

int64_t SignedLow(int64_t number) {
  return SignExtend(static_cast<uint32_t>(number), kLowBits);
}

}  // namespace

RvFunctionCode::Resident* RvFunctionCode::Find(const RvVariable& variable) {
  const auto found = std::find_if(residents_.begin(), residents_.end(),
                                  [&](const Resident& resident) { return resident.variable == variable; });
  return found == residents_.end() ? nullptr : &*found;
}

bool RvFunctionCode::IsInFrame(const SYM_REC* symbol) const {
  return procedure_->frame.contains(symbol);
}

bool RvFunctionCode::IsShared(const SYM_REC* symbol) const {
  return !IsInFrame(symbol) || procedure_->address_taken.contains(symbol);
}

// A member of the object that the function works on, named without it.
bool RvFunctionCode::IsMember(const SYM_REC* symbol) const {
  return symbol->OwnerStruct != nullptr && proto_->OwnerClass != nullptr && !IsInFrame(symbol);
}

bool RvFunctionCode::IsTooWide(const SYM_REC* symbol) const {
  const AccessWidth width = AccessOfSymbol(procedure_->slot, symbol);
  return width.bytes > unit_.word_bytes() && !width.is_address;
}

// A slot that nothing but its own name reaches holds a whole register.
AccessWidth RvFunctionCode::WidthOf(const RvVariable& variable) const {
  if (variable.kind == RvVariable::kSymbol && IsShared(variable.symbol))
    return AccessOfSymbol(procedure_->slot, variable.symbol);
  return {unit_.word_bytes(), false, true};
}

int64_t RvFunctionCode::BytesOf(const RvVariable& variable) const {
  if (variable.kind != RvVariable::kSymbol) return unit_.word_bytes();
  const SYM_REC* symbol = variable.symbol;
  const bool array = symbol->Shape.DimensionCount > 0 && !symbol->IsParameter;
  const bool pointer = symbol->TotalDepth > 0 || symbol->IsFunctionPointer;
  // Only the lower half of a longer pointer counts.
  const bool whole =
      array || (!pointer && (symbol->Struct != nullptr || procedure_->address_taken.contains(symbol)));
  return whole ? GetDeclaredDataSize(procedure_->slot, symbol) : unit_.word_bytes();
}

int32_t RvFunctionCode::GlobalOf(const SYM_REC* symbol) {
  // Variables of functions that outlive their call have storage from their first use on.
  if ((symbol->StorageType & STATIC_VAR) != 0)
    return unit_.rv32_global_for(procedure_->slot, symbol, symbol->name->Text);
  return unit_.GlobalOf(symbol);
}

int32_t RvFunctionCode::MemberOffsetOf(const SYM_REC* symbol) const {
  const MemberResult member = FindStructMember(procedure_->slot, proto_->OwnerClass, symbol->name);
  return member.Symbol == nullptr ? symbol->MemberOffset : MemberDataOffset(member);
}

int32_t RvFunctionCode::rv32_slot_for(const RvVariable& variable) {
  const auto known = slots_.find(variable);
  if (known != slots_.end()) return known->second;
  const int32_t word = unit_.word_bytes();
  const int64_t words = std::max<int64_t>(1, (BytesOf(variable) + word - 1) / word);
  const int64_t offset = slot_words_ * word;
  const bool fits = slots_.size() < kMostSlots && offset <= kFarthestSlot;
  if (fits) slot_words_ += words;
  return slots_[variable] = fits ? static_cast<int32_t>(offset) : -1;
}

bool RvFunctionCode::LoadMemory(AccessWidth width, uint32_t reg, uint32_t base, int32_t offset) {
  const bool rv64 = unit_.is_rv64();
  switch (width.bytes) {
    case 1: return (width.is_unsigned ? vrv_lbu : vrv_lb)(enc_, reg, base, offset) == 0;
    case 2: return (width.is_unsigned ? vrv_lhu : vrv_lh)(enc_, reg, base, offset) == 0;
    case 4: return (rv64 && width.is_unsigned ? vrv_lwu : vrv_lw)(enc_, reg, base, offset) == 0;
    default: return (rv64 ? vrv_ld : vrv_lw)(enc_, reg, base, offset) == 0;
  }
}

bool RvFunctionCode::StoreMemory(int bytes, uint32_t base, int32_t offset, uint32_t reg) {
  switch (bytes) {
    case 1: return vrv_sb(enc_, base, offset, reg) == 0;
    case 2: return vrv_sh(enc_, base, offset, reg) == 0;
    case 4: return vrv_sw(enc_, base, offset, reg) == 0;
    default: return (unit_.is_rv64() ? vrv_sd : vrv_sw)(enc_, base, offset, reg) == 0;
  }
}

bool RvFunctionCode::rv32_load_var(uint32_t reg, const RvVariable& variable) {
  const SYM_REC* symbol = variable.kind == RvVariable::kSymbol ? variable.symbol : nullptr;
  if (symbol != nullptr && IsTooWide(symbol)) return false;
  const AccessWidth width = WidthOf(variable);
  if (symbol != nullptr && !IsInFrame(symbol)) {
    if (!IsMember(symbol)) return LoadAddress(kT6, variable) && LoadMemory(width, reg, kT6, 0);
    const int32_t offset = MemberOffsetOf(symbol);
    return FitsImm12(offset) && rv32_load_var(kT6, {RvVariable::kThis, kNoTemp, nullptr}) &&
           LoadMemory(width, reg, kT6, offset);
  }
  const int32_t slot = rv32_slot_for(variable);
  return slot >= 0 && LoadMemory(width, reg, kSp, slot);
}

bool RvFunctionCode::rv32_store_var(uint32_t reg, const RvVariable& variable) {
  const SYM_REC* symbol = variable.kind == RvVariable::kSymbol ? variable.symbol : nullptr;
  if (symbol != nullptr && IsTooWide(symbol)) return false;
  if (symbol != nullptr && !IsInFrame(symbol)) {
    if (!IsMember(symbol)) return LoadAddress(kT6, variable) && StoreMemory(unit_.word_bytes(), kT6, 0, reg);
    const int32_t offset = MemberOffsetOf(symbol);
    return FitsImm12(offset) && rv32_load_var(kT6, {RvVariable::kThis, kNoTemp, nullptr}) &&
           StoreMemory(WidthOf(variable).bytes, kT6, offset, reg);
  }
  const int32_t slot = rv32_slot_for(variable);
  return slot >= 0 && StoreMemory(unit_.word_bytes(), kSp, slot, reg);
}

int32_t RvFunctionCode::rv32_read_reg(const RvVariable& variable, uint32_t scratch) {
  Resident* resident = Find(variable);
  const uint32_t reg = resident == nullptr ? scratch : resident->reg;
  if (resident == nullptr || !resident->loaded) {
    if (!rv32_load_var(reg, variable)) return -1;
    if (resident != nullptr) resident->loaded = true;
  }
  return static_cast<int32_t>(reg);
}

uint32_t RvFunctionCode::TargetOf(const RvVariable& variable, uint32_t scratch) const {
  const Resident* resident = Find(variable);
  return resident == nullptr ? scratch : resident->reg;
}

bool RvFunctionCode::rv32_write_done(const RvVariable& variable, uint32_t reg) {
  Resident* resident = Find(variable);
  if (resident == nullptr) return rv32_store_var(reg, variable);
  resident->loaded = resident->dirty = true;
  return variable.kind != RvVariable::kSymbol || !IsTooWide(variable.symbol);
}

bool RvFunctionCode::rv32_flush_residents() {
  bool stored = true;
  for (Resident& resident : residents_) {
    if (!resident.dirty) continue;
    resident.dirty = false;
    stored = rv32_store_var(resident.reg, resident.variable) && stored;
  }
  return stored;
}

void RvFunctionCode::ForgetResident(const RvVariable& variable) {
  if (Resident* resident = Find(variable)) resident->loaded = resident->dirty = false;
}

void RvFunctionCode::ForgetResidents() {
  for (Resident& resident : residents_) resident.loaded = false;
}

bool RvFunctionCode::LoadAddress(uint32_t reg, const RvVariable& variable) {
  if (variable.kind == RvVariable::kSymbol && !IsInFrame(variable.symbol))
    return unit_.rv32_emit_global_addr(reg, GlobalOf(variable.symbol));
  const int32_t slot = rv32_slot_for(variable);
  return slot >= 0 && vrv_addi(enc_, reg, kSp, slot) == 0;
}

bool RvFunctionCode::ZeroExtend(uint32_t reg) {
  return vrv_slli64(enc_, reg, reg, 32) == 0 && vrv_srli64(enc_, reg, reg, 32) == 0;
}

// A long number is its upper part, moved up, and what the lowest 12 bits add to it.
bool RvFunctionCode::LoadNumber(uint32_t reg, int64_t number) {
  const auto low = static_cast<int32_t>(static_cast<uint32_t>(number));
  if (!unit_.is_rv64()) {
    const int64_t upper = number >> 32;
    return (upper == 0 || upper == -1) && vrv_li(enc_, reg, low) == 0;
  }
  if (number == low) return vrv_li64(enc_, reg, low) == 0;
  const int64_t added = SignedLow(number);
  const auto rest = static_cast<uint64_t>(number) - static_cast<uint64_t>(added);
  const int shift = std::countr_zero(rest);
  if (!LoadNumber(reg, static_cast<int64_t>(rest) >> shift)) return false;
  if (vrv_slli64(enc_, reg, reg, static_cast<uint32_t>(shift)) != 0) return false;
  return added == 0 || vrv_addi(enc_, reg, reg, static_cast<int32_t>(added)) == 0;
}

}  // namespace vorc
