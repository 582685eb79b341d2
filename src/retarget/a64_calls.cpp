#include "codegen/frame.h"
#include "retarget/a64_function.h"

namespace vorc {

namespace {

constexpr int32_t kWord = 8;
constexpr uint32_t kStackUnit = 16;

bool IsReturnRegister(const Instruction& instruction) {
  return instruction.reg == "return_reg";
}

}  // namespace

// --- what comes in

// The records know a parameter's word by its distance from FRAMEPTR, the first one's lying highest.
bool A64Function::TakeParameters() {
  ArgumentPlacer placer;
  int32_t distance = -procedure_.total_arg_size;
  if (procedure_.proto->OwnerClass != nullptr &&
      !TakeParameter({kWord, true, false, nullptr}, nullptr, distance, &placer))
    return false;
  for (const SYM_REC* parameter : procedure_.proto->ParametersHeader.Symbols) {
    if (IsVoidParameter(parameter)) continue;
    distance += ParameterSlotWidth(procedure_.slot, parameter);
    const PassedValue value = PassedOf(procedure_.slot, ValueType::OfSymbol(*parameter));
    const bool is_struct = value.record != nullptr;
    if (!TakeParameter(value, is_struct ? nullptr : parameter, distance, &placer)) return false;
  }
  return true;
}

bool A64Function::TakeParameter(const PassedValue& value, const SYM_REC* symbol, int32_t distance,
                                ArgumentPlacer* placer) {
  const ArgumentPlace from = placer->Place(value);
  const int32_t home = frame_.AddParameter(symbol, distance);
  if (from.kind == ArgumentPlace::Kind::kNone) return false;
  if (!CrossesByValue(value)) {
    const bool whole = value.record != nullptr;
    TakeWord(from, 0, value, {kSp, home, {whole ? kWord : value.bytes, value.is_unsigned}});
    return true;
  }
  // The records expect the address of a struct.
  const int32_t bytes = frame_.Take(from.words);
  for (uint32_t word = 0; word < from.words; ++word)
    TakeWord(from, word, value, {kSp, bytes + static_cast<int32_t>(word) * kWord, {kWord, true}});
  va64_add_imm(enc_, kX9, kSp, bytes, 0);
  va64_str(enc_, kX9, kSp, home);
  return true;
}

// What lies above a narrow value's bits is unknown: only its own bytes are kept.
void A64Function::TakeWord(const ArgumentPlace& from, uint32_t word, const PassedValue& value,
                           const Place& to) {
  switch (from.kind) {
    case ArgumentPlace::Kind::kGeneral: return Store(from.first + word, to);
    case ArgumentPlace::Kind::kReal:
      (value.bytes == kWord ? va64_fmov_from_double : va64_fmov_from_float)(enc_, kX9, from.first);
      return Store(kX9, to);
    case ArgumentPlace::Kind::kStack:
      incoming_.push_back({va64_here(enc_), from.first + word * kWord});
      va64_ldr(enc_, kX9, kSp, 0);
      return Store(kX9, to);
    case ArgumentPlace::Kind::kNone: break;
  }
}

// --- what goes out

// The value is kept until the call, which may have other calls before it.
bool A64Function::SelectPush(const Instruction& instruction) {
  const PassedValue& value = instruction.passed;
  if (!Read(instruction.operand1, kX9)) return false;
  const int32_t bytes = CrossesByValue(value) ? (value.bytes + kWord - 1) / kWord * kWord : kWord;
  const int32_t place = bytes == kWord ? frame_.TakeOne() : frame_.Take(bytes / kWord);
  if (CrossesByValue(value))
    CopyIntoFrame(place, value.bytes);
  else
    va64_str(enc_, kX9, kSp, place);
  pending_.push_back({place, value});
  return true;
}

// From where x9 leads.
void A64Function::CopyIntoFrame(int32_t place, int32_t bytes) {
  int32_t at = 0;
  for (int32_t chunk = kWord; chunk > 0; chunk /= 2) {
    for (; at + chunk <= bytes; at += chunk) {
      Load(kX10, {kX9, at, {chunk, true}});
      Store(kX10, {kSp, place + at, {chunk, true}});
    }
  }
}

// `shift` is how far sp lies below the frame by then.
void A64Function::PassWord(const ArgumentPlace& to, uint32_t word, const Pending& argument, int32_t shift) {
  const int32_t from = argument.place + static_cast<int32_t>(word) * kWord + shift;
  switch (to.kind) {
    case ArgumentPlace::Kind::kGeneral: va64_ldr(enc_, to.first + word, kSp, from); break;
    case ArgumentPlace::Kind::kReal:
      va64_ldr(enc_, kX9, kSp, from);
      (argument.passed.bytes == kWord ? va64_fmov_to_double : va64_fmov_to_float)(enc_, to.first, kX9);
      break;
    case ArgumentPlace::Kind::kStack:
      va64_ldr(enc_, kX9, kSp, from);
      va64_str(enc_, kX9, kSp, static_cast<int32_t>(to.first + word * kWord));
      break;
    case ArgumentPlace::Kind::kNone: break;
  }
}

// Takes what was pushed for a call: those without a parameter were pushed first and come last.
bool A64Function::PassArguments(const Instruction& call, bool through_pointer, uint32_t* stack_bytes) {
  const auto count = static_cast<size_t>(call.arguments);
  if (count > pending_.size()) return false;
  const std::vector<Pending> pushed(pending_.end() - call.arguments, pending_.end());
  pending_.resize(pending_.size() - count);
  const auto variadic = static_cast<size_t>(call.variadic);
  ArgumentPlacer placer;
  std::vector<ArgumentPlace> places(count);
  for (size_t i = 0; i < count; ++i) {
    const size_t at = (i + variadic) % count;
    const PassedValue& value = pushed[at].passed;
    const bool by_address = value.record != nullptr && !CrossesByValue(value);
    // A callee of another unit may write to the struct, and is given a double where a float has no parameter.
    if (by_address && through_pointer) return false;
    if (value.is_real && value.bytes != kWord && at < variadic) return false;
    places[at] = placer.Place(value);
    if (places[at].kind == ArgumentPlace::Kind::kNone) return false;
  }
  *stack_bytes = (placer.stack_bytes() + kStackUnit - 1) / kStackUnit * kStackUnit;
  constexpr uint32_t kMostStackBytes = 4080;
  if (*stack_bytes > kMostStackBytes) return false;
  const auto shift = static_cast<int32_t>(*stack_bytes);
  if (shift > 0) va64_sub_imm(enc_, kSp, kSp, shift, 0);
  for (size_t i = 0; i < count; ++i) {
    for (uint32_t word = 0; word < places[i].words; ++word) PassWord(places[i], word, pushed[i], shift);
    if (places[i].words == 1) frame_.GiveBack(pushed[i].place);
  }
  return true;
}

bool A64Function::SelectCall(const Instruction& instruction) {
  uint32_t stack_bytes = 0;
  if (!PassArguments(instruction, false, &stack_bytes)) return false;
  va64_bl(enc_, unit_.FunctionLabel(instruction.label));
  if (stack_bytes > 0) va64_add_imm(enc_, kSp, kSp, static_cast<int32_t>(stack_bytes), 0);
  return true;
}

bool A64Function::SelectMoveToRegister(const Instruction& instruction) {
  if (IsReturnRegister(instruction)) {
    if (result_.is_real && result_.bytes == 0) return false;
    if (!Read(instruction.operand1, kX0)) return false;
    GiveResult();
    return true;
  }
  if (instruction.reg != "PC" || !Read(instruction.operand1, kX16)) return false;
  uint32_t stack_bytes = 0;
  if (!PassArguments(instruction, true, &stack_bytes)) return false;
  va64_blr(enc_, kX16);
  if (stack_bytes > 0) va64_add_imm(enc_, kSp, kSp, static_cast<int32_t>(stack_bytes), 0);
  return true;
}

void A64Function::GiveResult() {
  if (result_.is_real) (result_.bytes == kWord ? va64_fmov_to_double : va64_fmov_to_float)(enc_, 0, kX0);
}

bool A64Function::SelectMoveFromRegister(const Instruction& instruction) {
  const PassedValue& value = instruction.passed;
  if (!IsReturnRegister(instruction) || value.bytes == 0) return false;
  if (value.is_real) (value.bytes == kWord ? va64_fmov_from_double : va64_fmov_from_float)(enc_, kX0, 0);
  Extend(kX0, value);
  return Write(instruction.result, kX0);
}

}  // namespace vorc
