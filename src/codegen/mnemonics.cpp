#include "codegen/mnemonics.h"

#include <charconv>

#include "base/format.h"

namespace vorc {

namespace {

struct Widths {
  std::string_view one, two, four, eight;

  std::string_view Of(int bytes) const {
    return bytes == 1 ? one : bytes == 2 ? two : bytes == 4 ? four : eight;
  }
};
constexpr Widths kLoads = {"load1", "load2", "load4", "load8"};
constexpr Widths kUnsignedLoads = {"uload1", "uload2", "uload4", "load8"};
constexpr Widths kStores = {"store1", "store2", "store4", "store8"};
constexpr Widths kPushes = {"push1", "push2", "push4", "push8"};

}  // namespace

Mnemonics::Mnemonics(const TargetOptions& target)
    : cpu_bytes(target.cpu_size / 8), address_bytes(target.address_size / 8) {
  const bool wide = cpu_bytes == 8;
  const bool far = address_bytes == 8;
  loadimm = wide ? "loadimm8" : "loadimm4";
  word_load = kLoads.Of(cpu_bytes);
  word_store = kStores.Of(cpu_bytes);
  word_move = wide ? "move8" : "move4";
  compare = wide ? "cmp8" : "cmp4";
  addr_load = kLoads.Of(address_bytes);
  addr_store = kStores.Of(address_bytes);
  addr_move = far ? "move8" : "move4";
  addr_add = far ? "add8" : "add4";
  addr_sub = far ? "sub8" : "sub4";
  frame_move = far ? "MOVE8" : "MOVE4";
  alu_move = wide ? "MOVE8" : "MOVE4";
  alu_add = far ? "ADD8" : "ADD4";
  push = far ? "PUSH8" : "PUSH4";
  pop = far ? "POP8" : "POP4";
  word_digit = wide ? '8' : '4';
}

std::string_view LoadMnemonic(AccessWidth width) {
  return (width.is_unsigned ? kUnsignedLoads : kLoads).Of(width.bytes);
}

std::string_view StoreMnemonic(AccessWidth width) {
  return kStores.Of(width.bytes);
}

std::string_view PushMnemonic(int bytes) {
  return kPushes.Of(bytes);
}

AccessWidth AccessOfType(const C_SLOT& slot, Tok type, int depth, bool is_unsigned) {
  if (depth > 0) return {slot.Target.AddressBytes(), true, true};
  switch (type) {
    case Tok::INT16: return {2, is_unsigned};
    case Tok::UINT16:
    case Tok::wchar_t_: return {2, true};
    case Tok::INT32:
    case Tok::int_: return {4, is_unsigned};
    case Tok::UINT32:
    case Tok::float_: return {4, true};
    case Tok::char_:
    case Tok::INT8:
    case Tok::INT4: return {1, is_unsigned};
    case Tok::UCHAR:
    case Tok::UINT8:
    case Tok::UINT4:
    case Tok::BIT:
    case Tok::bool_: return {1, true};
    case Tok::long_: return {slot.Target.cpu_size / 8, is_unsigned};
    default: return {8, is_unsigned || type == Tok::UINT64};
  }
}

AccessWidth AccessOfSymbol(const C_SLOT& slot, const SYM_REC* symbol) {
  const bool array_parameter = symbol->IsParameter && symbol->Shape.DimensionCount > 0;
  const int depth = symbol->TotalDepth > 0 || symbol->IsFunctionPointer || array_parameter ? 1 : 0;
  const Tok type = symbol->Enum != nullptr ? Tok::int_ : symbol->ValueType;
  return AccessOfType(slot, type, depth, (symbol->StorageType & UNSIGNED_VAR) != 0);
}

std::string vorc_imm_for_target(const TargetOptions& target, std::string_view text) {
  int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  if (target.cpu_size != 32 || !whole || static_cast<int32_t>(number) >= 0) return std::string(text);
  return Format("0x%08X", static_cast<uint32_t>(number));
}

}  // namespace vorc
