#include <cstring>

#include "base/trace.h"
#include "interp/interpreter.h"

namespace vorc {

namespace {

constexpr int kStackSize = 64;

int32_t Load(const char* address, const FastOp& op) {
  switch (op.size) {
    case 1: return static_cast<unsigned char>(*address);
    case 2: {
      uint16_t value;
      std::memcpy(&value, address, sizeof value);
      return value;
    }
    default: {
      int32_t value;
      std::memcpy(&value, address, sizeof value);
      return value;
    }
  }
}

void Store(char* address, uint8_t size, int32_t value) {
  switch (size) {
    case 1: *address = static_cast<char>(value); break;
    case 2: {
      const auto narrow = static_cast<uint16_t>(value);
      std::memcpy(address, &narrow, sizeof narrow);
      break;
    }
    default: std::memcpy(address, &value, sizeof value);
  }
}

int32_t Wrap(uint32_t value) { return static_cast<int32_t>(value); }

struct Place {
  char* address;
  uint8_t size;
  Tok type;
};

// An old value as a compound assignment reads it: narrow integers keep their sign.
int64_t LoadSigned(const Place& place) {
  switch (place.size) {
    case 1: return place.type == Tok::UCHAR ? static_cast<unsigned char>(*place.address) : static_cast<signed char>(*place.address);
    case 2: {
      int16_t value;
      std::memcpy(&value, place.address, sizeof value);
      return value;
    }
    default: {
      int32_t value;
      std::memcpy(&value, place.address, sizeof value);
      return value;
    }
  }
}

bool Compound(Tok token, int64_t a, int64_t b, int64_t* result) {
  const auto shift = static_cast<uint32_t>(b) & 31;
  switch (token) {
    case Tok::PLUS_EQ: *result = a + b; return true;
    case Tok::MINUS_EQ: *result = a - b; return true;
    case Tok::STAR_EQ: *result = a * b; return true;
    case Tok::BITOR_EQ: *result = a | b; return true;
    case Tok::BITAND_EQ: *result = a & b; return true;
    case Tok::HAT_EQ: *result = a ^ b; return true;
    case Tok::LEFTSHIFT_EQ: *result = Wrap(static_cast<uint32_t>(a) << shift); return true;
    case Tok::RIGHTSHIFT_EQ: *result = static_cast<int32_t>(a) >> shift; return true;
    default: break;
  }
  if (b == 0) return false;
  *result = token == Tok::SLASH_EQ ? a / b : a % b;
  return true;
}

}  // namespace

char* Interpreter::FastAddress(const FastOp& op) const {
  switch (op.storage) {
    case Storage::kLocal: return Word(frame_.base - op.number);
    case Storage::kParameter: return Word(frame_.base + op.number);
    default: return op.data;
  }
}

// The address that indices select. The general way takes over where one is out of range.
char* Interpreter::FastElement(const FastOp& fast, const int32_t* indices) {
  const Op& op = *fast.op;
  char* base = FastAddress(fast);
  if (fast.through_pointer) {
    char* pointer = nullptr;
    std::memcpy(&pointer, base, sizeof pointer);
    char* address = Displaced(pointer, int64_t{indices[0]} * fast.size);
    if (pointer != nullptr && memory_.Contains(address, fast.size)) return address;
  } else {
    const ArrayShape& shape = op.symbol->Shape;
    int64_t index = 0;
    bool inside = true;
    for (int i = 0; i < op.index_count; ++i) {
      inside &= indices[i] >= 0 && indices[i] < shape.Dimensions[i];
      index = inside ? index * shape.Dimensions[i] + indices[i] : 0;
    }
    if (inside) return base + index * fast.size;
  }
  Entry entry;
  entry.token = Tok::IDENTIFIER;
  PlaceVariable(op, &entry);
  const int total = entry.dimensions;
  for (int i = 0; i < op.index_count; ++i) {
    const bool good = entry.dimensions > 0 ? IndexArray(op.node, indices[i], total - entry.dimensions, &entry)
                                           : FollowPointer(op.node, indices[i], &entry);
    if (!good) return nullptr;
  }
  return entry.address;
}

bool Interpreter::RunFast(const FastProgram& program, int32_t* result) {
  // The first of each is never used: both begin one below what they hold.
  int32_t stack[kStackSize];
  Place places[kStackSize];
  int32_t* top = stack;
  Place* place = places;
  for (const FastOp *op = program.ops, *end = op + program.count; op != end; ++op) {
    switch (op->code) {
      case FastCode::kConstant: *++top = op->number; break;
      case FastCode::kLoad: *++top = Load(FastAddress(*op), *op); break;
      case FastCode::kLoadElement: {
        top -= op->op->index_count - 1;
        const char* address = FastElement(*op, top);
        if (address == nullptr) return false;
        *top = Load(address, *op);
        break;
      }
      case FastCode::kPlace: *++place = {FastAddress(*op), op->size, op->op->type}; break;
      case FastCode::kPlaceElement: {
        top -= op->op->index_count;
        char* address = FastElement(*op, top + 1);
        if (address == nullptr) return false;
        *++place = {address, op->size, op->op->type};
        break;
      }
      case FastCode::kAdd: --top; *top = Wrap(static_cast<uint32_t>(*top) + static_cast<uint32_t>(top[1])); break;
      case FastCode::kSubtract: --top; *top = Wrap(static_cast<uint32_t>(*top) - static_cast<uint32_t>(top[1])); break;
      case FastCode::kMultiply: --top; *top = Wrap(static_cast<uint32_t>(*top) * static_cast<uint32_t>(top[1])); break;
      case FastCode::kDivide:
      case FastCode::kRemainder: {
        --top;
        if (top[1] == 0) return Fail(op->op->node, "Division by zero");
        const int64_t a = *top;
        *top = static_cast<int32_t>(op->code == FastCode::kDivide ? a / top[1] : a % top[1]);
        break;
      }
      case FastCode::kXor: --top; *top ^= top[1]; break;
      case FastCode::kAnd: --top; *top &= top[1]; break;
      case FastCode::kOr: --top; *top |= top[1]; break;
      case FastCode::kShiftLeft: --top; *top = Wrap(static_cast<uint32_t>(*top) << (top[1] & 31)); break;
      case FastCode::kShiftRight: --top; *top >>= top[1] & 31; break;
      case FastCode::kLess: --top; *top = *top < top[1]; break;
      case FastCode::kGreater: --top; *top = *top > top[1]; break;
      case FastCode::kLessEqual: --top; *top = *top <= top[1]; break;
      case FastCode::kGreaterEqual: --top; *top = *top >= top[1]; break;
      case FastCode::kEqual: --top; *top = *top == top[1]; break;
      case FastCode::kNotEqual: --top; *top = *top != top[1]; break;
      case FastCode::kLogicalAnd: --top; *top = *top != 0 && top[1] != 0; break;
      case FastCode::kLogicalOr: --top; *top = *top != 0 || top[1] != 0; break;
      case FastCode::kNegate: *top = Wrap(0U - static_cast<uint32_t>(*top)); break;
      case FastCode::kNot: *top = *top == 0; break;
      case FastCode::kInvert: *top = ~*top; break;
      case FastCode::kDrop: --top; break;
      case FastCode::kStore:
        Store(place->address, place->size, *top);
        --place;
        break;
      case FastCode::kCompound: {
        int64_t value = 0;
        if (!Compound(op->op->token, LoadSigned(*place), *top, &value)) return Fail(op->op->node, "Division by zero");
        *top = static_cast<int32_t>(value);
        Store(place->address, place->size, *top);
        --place;
        break;
      }
      case FastCode::kIncrement:
      case FastCode::kDecrement: {
        char* address = FastAddress(*op);
        const uint32_t step = op->code == FastCode::kIncrement ? 1U : ~0U;
        *++top = Wrap(static_cast<uint32_t>(Load(address, *op)) + step);
        Store(address, op->size, *top);
        break;
      }
    }
  }
  *result = *top;
  return true;
}

// The low 32 bits of an expression's value, which is all that conditions and indices look at.
bool Interpreter::EvaluateLow(Code* code, Mode mode, int32_t* low) {
  if (code != nullptr && PrepareFast(code)) return RunFast(*code->fast, low);
  Entry value;
  if (!EvaluateSteps(code, mode, &value)) return false;
  *low = value.Low();
  return true;
}

// True if the expression has an integer program, which is made at its second run.
bool Interpreter::PrepareFast(Code* code) {
  if (code->fast != nullptr) return !failed();
  // A trace shows every step, and only the general evaluation takes them one by one.
  if (code->fast_tried || TraceOn() || code->runs++ == 0) return false;
  code->fast_tried = true;
  code->fast = CompileFast(code_arena_, *code);
  return code->fast != nullptr && !failed();
}

}  // namespace vorc
