#include "sim/machine.h"

#include <algorithm>
#include <bit>
#include <cinttypes>
#include <cstring>

#include "base/format.h"

namespace vorc::sim {
namespace {

// Registers and the stack hold this before anything is written, so that what reads them too early shows.
constexpr uint8_t kFresh = 0xcd;
constexpr uint64_t kFreshRegister = 0xcdcdcdcdcdcdcdcd;

int64_t Signed(uint64_t value, int shift) {
  return static_cast<int64_t>(value << shift) >> shift;
}

uint64_t Unsigned(uint64_t value, int shift) {
  return value << shift >> shift;
}

uint64_t Extend(uint64_t value, int shift) {
  return static_cast<uint64_t>(Signed(value, shift));
}

uint64_t Rotate(uint64_t value, uint64_t count, int shift) {
  const uint64_t bits = static_cast<uint64_t>(64 - shift);
  value = Unsigned(value, shift);
  count %= bits;
  return count == 0 ? value : value << count | value >> (bits - count);
}

uint64_t ReverseBits(uint64_t value) {
  uint64_t reversed = 0;
  for (int i = 0; i < 64; ++i) reversed |= (value >> i & 1) << (63 - i);
  return reversed;
}

// Signed division that wraps where the quotient doesn't fit.
int64_t Divide(int64_t a, int64_t b) {
  return b == -1 ? static_cast<int64_t>(0 - static_cast<uint64_t>(a)) : a / b;
}

int64_t Remainder(int64_t a, int64_t b) {
  return b == -1 ? 0 : a % b;
}

uint64_t DivideAs(Operation operation, uint64_t a, uint64_t b, int shift) {
  const int64_t x = Signed(a, shift);
  const int64_t y = Signed(b, shift);
  switch (operation) {
    case Operation::kDiv: return Extend(static_cast<uint64_t>(Divide(x, y)), shift);
    case Operation::kMod: return static_cast<uint64_t>(Remainder(x, y));
    case Operation::kDivU: return Unsigned(a, shift) / Unsigned(b, shift);
    default: return Unsigned(a, shift) % Unsigned(b, shift);
  }
}

// What the operations that need nothing but their operands leave in their register.
[[gnu::always_inline]] inline uint64_t Compute(Operation operation, uint64_t a, uint64_t b, int shift) {
  const uint64_t count = b & static_cast<uint64_t>(63 - shift);
  switch (operation) {
    case Operation::kAdd: return Extend(a + b, shift);
    case Operation::kAddU: return Unsigned(a + b, shift);
    case Operation::kSub: return Extend(a - b, shift);
    case Operation::kSubU: return Unsigned(a - b, shift);
    case Operation::kMul: return Extend(a * b, shift);
    case Operation::kMulU: return Unsigned(a * b, shift);
    case Operation::kInc: return Extend(a + 1, shift);
    case Operation::kDec: return Extend(a - 1, shift);
    case Operation::kShl: return Extend(a << count, shift);
    case Operation::kShlU: return Unsigned(a << count, shift);
    case Operation::kShr: return static_cast<uint64_t>(Signed(a, shift) >> count);
    case Operation::kShrU: return Unsigned(a, shift) >> count;
    case Operation::kRotl: return Extend(Rotate(a, b, shift), shift);
    case Operation::kRotr: return Extend(Rotate(a, 0 - b, shift), shift);
    case Operation::kAnd: return Extend(a & b, shift);
    case Operation::kOr: return Extend(a | b, shift);
    case Operation::kXor: return Extend(a ^ b, shift);
    case Operation::kInv: return Extend(~a, shift);
    case Operation::kSetBit: return Extend(a | uint64_t{1} << count, shift);
    case Operation::kClrBit: return Extend(a & ~(uint64_t{1} << count), shift);
    case Operation::kFlipByte: return Extend(__builtin_bswap64(a) >> shift, shift);
    case Operation::kFlipBit: return Extend(ReverseBits(a) >> shift, shift);
    case Operation::kCmpL: return Signed(a, shift) < Signed(b, shift);
    case Operation::kCmpG: return Signed(a, shift) > Signed(b, shift);
    case Operation::kCmpLE: return Signed(a, shift) <= Signed(b, shift);
    case Operation::kCmpGE: return Signed(a, shift) >= Signed(b, shift);
    case Operation::kCmpLU: return Unsigned(a, shift) < Unsigned(b, shift);
    case Operation::kCmpGU: return Unsigned(a, shift) > Unsigned(b, shift);
    case Operation::kCmpLEU: return Unsigned(a, shift) <= Unsigned(b, shift);
    case Operation::kCmpGEU: return Unsigned(a, shift) >= Unsigned(b, shift);
    case Operation::kCmpEQ: return Unsigned(a, shift) == Unsigned(b, shift);
    case Operation::kCmpNE: return Unsigned(a, shift) != Unsigned(b, shift);
    case Operation::kMove: return Extend(a, shift);
    case Operation::kMoveU: return Unsigned(a, shift);
    case Operation::kClr: return 0;
    default: return 0;
  }
}

// The widths are told apart so that each copy is one instruction.
[[gnu::always_inline]] inline uint64_t ReadMemory(const uint8_t* place, int width) {
  uint64_t value = 0;
  switch (width) {
    case 1: value = *place; break;
    case 2: std::memcpy(&value, place, 2); break;
    case 4: std::memcpy(&value, place, 4); break;
    default: std::memcpy(&value, place, 8); break;
  }
  return value;
}

[[gnu::always_inline]] inline void WriteMemory(uint8_t* place, int width, uint64_t value) {
  switch (width) {
    case 1: std::memcpy(place, &value, 1); break;
    case 2: std::memcpy(place, &value, 2); break;
    case 4: std::memcpy(place, &value, 4); break;
    default: std::memcpy(place, &value, 8); break;
  }
}

template <class Number>
uint8_t Compare(Number a, Number b) {
  return a < b ? kLess : a == b ? kEqual : kGreater;
}

}  // namespace

Machine::Machine(const Program& program, const Limits& limits)
    : program_(program), limits_(limits), code_(program.code), data_(program.data) {
  limits_.stack_bytes = std::clamp<uint64_t>(limits.stack_bytes, 256, kMaxStackBytes) & ~uint64_t{15};
  stack_.assign(limits_.stack_bytes, kFresh);
  stack_begin_ = kStackEndAddress - limits_.stack_bytes;
  address_mask_ = std::min(program.address_bits, program.cpu_bits) == 32 ? 0xffffffff : ~uint64_t{0};
  Instruction returned;
  returned.operation = Operation::kReturned;
  code_.push_back(returned);
  registers_.fill(kFreshRegister);
  registers_[kConstantRegister + 1] = 0;
  registers_[kStackPtr] = kStackEndAddress;
  registers_[kStackBegin] = stack_begin_;
  registers_[kStackEnd] = kStackEndAddress;
  registers_[kCodeBase] = program.base;
}

std::optional<uint64_t> Machine::FindAddress(std::string_view name) const {
  const auto found = program_.addresses.find(std::string(name));
  if (found == program_.addresses.end()) return std::nullopt;
  return found->second;
}

std::span<const uint8_t> Machine::Bytes(const DataSymbol& symbol) const {
  const uint64_t size = symbol.count * static_cast<uint64_t>(symbol.width);
  return std::span(data_).subspan(symbol.address - program_.DataBegin(), size);
}

uint8_t* Machine::Find(uint64_t address, uint64_t width) {
  const uint64_t in_stack = address - stack_begin_;
  if (in_stack <= stack_.size() - width && address >= registers_[kStackPtr]) return &stack_[in_stack];
  const uint64_t in_data = address - program_.DataBegin();
  if (in_data < data_.size() && width <= data_.size() - in_data) return &data_[in_data];
  return nullptr;
}

bool Machine::Push(uint64_t value, int width) {
  registers_[kStackPtr] -= static_cast<uint64_t>(width);
  uint8_t* const place = Find(registers_[kStackPtr], static_cast<uint64_t>(width));
  if (place == nullptr) return false;
  std::memcpy(place, &value, static_cast<size_t>(width));
  return true;
}

bool Machine::Enter(std::string_view procedure, std::span<const Argument> arguments, uint64_t* index) {
  const auto found = std::find_if(program_.procedures.begin(), program_.procedures.end(),
                                  [&](const Procedure& known) { return known.name == procedure; });
  if (found == program_.procedures.end()) {
    fault_ = "no procedure '" + std::string(procedure) + "'";
    return false;
  }
  *index = found->first;
  const int address_bytes = program_.address_bits / 8;
  registers_[kStackPtr] = kStackEndAddress;
  bool pushed = true;
  for (const int saved : {kReturnValue, kFramePtr, kLink}) {
    pushed = pushed && Push(registers_[static_cast<size_t>(saved)], address_bytes);
  }
  for (const Argument& argument : arguments) {
    pushed = pushed && Push(argument.value, argument.width != 0 ? argument.width : address_bytes);
  }
  if (!pushed) fault_ = "the arguments don't fit the stack";
  registers_[kLink] = program_.AddressOf(code_.size() - 1);
  stack_at_call_ = registers_[kStackPtr];
  return pushed;
}

std::optional<int64_t> Machine::Call(std::string_view procedure, std::span<const Argument> arguments,
                                     std::string* fault) {
  fault_.clear();
  uint64_t index = 0;
  const bool entered = Enter(procedure, arguments, &index);
  const bool ended = entered && (trace_ != nullptr ? Run<true>(index) : Run<false>(index)) == Stop::kReturned;
  if (!ended || !CheckReturn()) {
    *fault = fault_;
    return std::nullopt;
  }
  return Signed(registers_[kReturnValue], 64 - program_.cpu_bits);
}

bool Machine::CheckReturn() {
  if (code_[index_].operation == Operation::kEndSim || registers_[kStackPtr] == stack_at_call_) return true;
  const int64_t off = static_cast<int64_t>(registers_[kStackPtr] - stack_at_call_);
  fault_ = Format("the procedure comes back with STACKPTR %" PRId64 " bytes %s where it was at the call",
                  off < 0 ? -off : off, off < 0 ? "below" : "above");
  return false;
}

template <bool kTraced>
Machine::Stop Machine::Run(uint64_t index) {
  uint64_t* const r = registers_.data();
  const Instruction* const code = code_.data();
  const Instruction* at = code + index;
  uint8_t ordering = ordering_;
  uint64_t left = limits_.steps;
  const auto stop = [&](const Instruction* where) {
    index_ = static_cast<uint64_t>(where - code);
    steps_ += limits_.steps - left;
    ordering_ = ordering;
  };

  while (true) {
    const Instruction& i = *at;
    const int shift = i.shift;
    r[kConstantRegister] = static_cast<uint64_t>(i.constant);
    if (left == 0) {
      stop(at);
      return Fault(Format("no end after %" PRIu64 " instructions", limits_.steps));
    }
    --left;
    ++at;
    uint64_t jump_address = 0;
    const uint64_t a = r[i.a];
    const uint64_t b = r[i.b];
    switch (i.operation) {
      case Operation::kDiv:
      case Operation::kDivU:
      case Operation::kMod:
      case Operation::kModU:
        if (Unsigned(b, shift) == 0) {
          stop(&i);
          return Fault("division by zero");
        }
        r[i.d] = DivideAs(i.operation, a, b, shift);
        break;
      case Operation::kCmp: ordering = Compare(Signed(a, shift), Signed(b, shift)); break;
      case Operation::kCmpU: ordering = Compare(Unsigned(a, shift), Unsigned(b, shift)); break;
      case Operation::kLoad:
      case Operation::kLoadU:
      case Operation::kPop: {
        const uint64_t address = (i.operation == Operation::kPop ? r[kStackPtr] : a + b) & address_mask_;
        const uint8_t* const place = Find(address, i.width);
        if (place == nullptr) {
          stop(&i);
          return MemoryFault(i, address);
        }
        const uint64_t value = ReadMemory(place, i.width);
        if (i.operation == Operation::kPop) r[kStackPtr] += i.width;
        r[i.d] = i.operation == Operation::kLoadU ? Unsigned(value, shift) : Extend(value, shift);
        break;
      }
      case Operation::kStore:
      case Operation::kPush: {
        const bool push = i.operation == Operation::kPush;
        const uint64_t value = Extend(r[i.d], shift);
        if (push) r[kStackPtr] -= i.width;
        const uint64_t address = (push ? r[kStackPtr] : a + b) & address_mask_;
        uint8_t* const place = Find(address, i.width);
        if (place == nullptr) {
          stop(&i);
          return MemoryFault(i, address);
        }
        WriteMemory(place, i.width, value);
        break;
      }
      case Operation::kJump:
        if ((ordering & i.detail) != 0) at = code + i.constant;
        break;
      case Operation::kCall:
        r[kLink] = program_.AddressOf(static_cast<uint64_t>(at - code));
        at = code + i.constant;
        break;
      case Operation::kCallRegister:
        jump_address = a;
        r[kLink] = program_.AddressOf(static_cast<uint64_t>(at - code));
        goto jump;
      case Operation::kJumpRegister:
        if ((ordering & i.detail) == 0) break;
        jump_address = a;
      jump : {
        const uint64_t offset = (jump_address & address_mask_) - program_.CodeBegin();
        const uint64_t target = offset / kInstructionBytes;
        if (offset % kInstructionBytes != 0 || target >= code_.size()) {
          stop(&i);
          return JumpFault(jump_address & address_mask_);
        }
        at = code + target;
        break;
      }
      case Operation::kNop: break;
      case Operation::kReturned:
      case Operation::kEndSim:
        left += i.operation == Operation::kReturned;
        stop(&i);
        return Stop::kReturned;
      case Operation::kSystem:
      case Operation::kUndefined:
      case Operation::kEndOfProcedure: stop(&i); return NamedFault(i);
      default: r[i.d] = Compute(i.operation, a, b, shift); break;
    }
    if constexpr (kTraced) Trace(i);
  }
}

void Machine::Trace(const Instruction& instruction) const {
  const auto index = static_cast<size_t>(&instruction - code_.data());
  if (index >= program_.origins.size()) return;
  const Origin& origin = program_.origins[index];
  std::fprintf(trace_, "%6u  %-44.*s", origin.line, static_cast<int>(origin.text.size()), origin.text.data());
  switch (instruction.operation) {
    case Operation::kCmp:
    case Operation::kCmpU:
    case Operation::kJump:
    case Operation::kJumpRegister:
    case Operation::kCall:
    case Operation::kNop: std::fputc('\n', trace_); break;
    default:
      std::fprintf(trace_, " %" PRId64 " (0x%" PRIx64 ")\n", static_cast<int64_t>(registers_[instruction.d]),
                   registers_[instruction.d]);
  }
}

Machine::Stop Machine::Fault(std::string reason) {
  fault_ = std::move(reason);
  if (index_ >= program_.origins.size()) return Stop::kFault;
  const Origin& origin = program_.origins[index_];
  const std::string source = origin.source_line != 0 ? Format(", source line %u", origin.source_line) : "";
  fault_ = Format("line %u (%s%s): ", origin.line, program_.procedures[origin.procedure].name.c_str(),
                  source.c_str()) +
           fault_;
  return Stop::kFault;
}

Machine::Stop Machine::MemoryFault(const Instruction& instruction, uint64_t address) {
  const bool push = instruction.operation == Operation::kPush;
  const bool writes = push || instruction.operation == Operation::kStore;
  const uint64_t stack_ptr = registers_[kStackPtr] & address_mask_;
  // The room below the stack belongs to nobody: whoever runs into it had more frames than fit.
  const uint64_t room = kStackEndAddress - kMaxStackBytes - (uint64_t{64} << 20);
  if (stack_ptr < stack_begin_ && stack_ptr >= room && address < stack_begin_ && address >= room) {
    return Fault(Format("stack overflow, %" PRIu64 " bytes are not enough", limits_.stack_bytes));
  }
  if (instruction.operation == Operation::kPop && address >= stack_begin_) return Fault("stack underflow");
  const char* where = "outside of memory";
  if (address >= stack_begin_ && address < kStackEndAddress) where = "below STACKPTR";
  if (address >= program_.CodeBegin() && address < program_.AddressOf(code_.size())) where = "in the code";
  if (address + instruction.width < kCodeAddress) where = "through a null pointer";
  return Fault(Format("%s %d byte%s at 0x%" PRIx64 ", %s", writes ? "writes" : "reads", instruction.width,
                      instruction.width == 1 ? "" : "s", address, where));
}

Machine::Stop Machine::JumpFault(uint64_t address) {
  return Fault(Format("jumps to 0x%" PRIx64 ", where no instruction stands", address));
}

Machine::Stop Machine::NamedFault(const Instruction& instruction) {
  if (instruction.operation == Operation::kUndefined) {
    return Fault(program_.undefined[static_cast<size_t>(instruction.constant)]);
  }
  if (instruction.operation == Operation::kEndOfProcedure) return Fault("runs past the end of the procedure");
  return Fault("a system instruction, which the simulator doesn't have");
}

}  // namespace vorc::sim
