#include <cstring>

#include "base/trace.h"
#include "interp/interpreter.h"

namespace vorc {

namespace {

constexpr int kStackSize = 64;

int32_t LoadInt(const char* address) {
  int32_t value;
  std::memcpy(&value, address, sizeof value);
  return value;
}

// Narrow integers are read without their sign.
int32_t Load(const char* address, uint8_t size) {
  if (size == sizeof(int32_t)) return LoadInt(address);
  if (size == 1) return static_cast<unsigned char>(*address);
  uint16_t value;
  std::memcpy(&value, address, sizeof value);
  return value;
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

int32_t Wrap(uint32_t value) {
  return static_cast<int32_t>(value);
}

int32_t Add(int32_t a, int32_t b) {
  return Wrap(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}
int32_t Subtract(int32_t a, int32_t b) {
  return Wrap(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
int32_t Multiply(int32_t a, int32_t b) {
  return Wrap(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}
int32_t Xor(int32_t a, int32_t b) {
  return a ^ b;
}
int32_t And(int32_t a, int32_t b) {
  return a & b;
}
int32_t Or(int32_t a, int32_t b) {
  return a | b;
}
int32_t ShiftLeft(int32_t a, int32_t b) {
  return Wrap(static_cast<uint32_t>(a) << (b & 31));
}
int32_t ShiftRight(int32_t a, int32_t b) {
  return a >> (b & 31);
}
int32_t Less(int32_t a, int32_t b) {
  return a < b;
}
int32_t Greater(int32_t a, int32_t b) {
  return a > b;
}
int32_t LessEqual(int32_t a, int32_t b) {
  return a <= b;
}
int32_t GreaterEqual(int32_t a, int32_t b) {
  return a >= b;
}
int32_t Equal(int32_t a, int32_t b) {
  return a == b;
}
int32_t NotEqual(int32_t a, int32_t b) {
  return a != b;
}

struct Place {
  char* address;
  uint8_t size;
  Tok type;
};

// An old value as a compound assignment reads it: narrow integers keep their sign.
int64_t LoadSigned(const Place& place) {
  switch (place.size) {
    case 1:
      return place.type == Tok::UCHAR ? static_cast<unsigned char>(*place.address)
                                      : static_cast<signed char>(*place.address);
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

// The address that indices select. The general way takes over where one is out of range.
char* Interpreter::FastElement(const FastOp& fast, char* base, const int32_t* indices) {
  const Op& op = *fast.op;
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
  const int64_t frame = reinterpret_cast<int64_t>(Word(frame_.base));
  const auto address = [frame](const FastOp& op) {
    return reinterpret_cast<char*>(op.in_frame ? frame + op.place : op.place);
  };
  const auto right = [&](const FastOp& op) {
    if (op.right == FastRight::kConstant) return op.number;
    if (op.right == FastRight::kVariable) return LoadInt(address(op));
    return *top--;
  };
  const auto element = [&](const FastOp& op, const int32_t* indices) {
    // One comparison sees a negative index too.
    if (static_cast<uint64_t>(int64_t{indices[0]}) < static_cast<uint64_t>(op.length)) {
      return address(op) + int64_t{indices[0]} * op.size;
    }
    return FastElement(op, address(op), indices);
  };
  const FastOp* op = program.ops;
  const auto apply = [&](auto operation) {
    const int32_t b = right(*op);
    *top = operation(*top, b);
  };
  for (const FastOp* end = op + program.count; op != end; ++op) {
    switch (op->code) {
      case FastCode::kConstant: *++top = op->number; break;
      case FastCode::kLoad: *++top = Load(address(*op), op->size); break;
      case FastCode::kLoadElement: {
        top -= op->op->index_count - 1;
        const char* at = element(*op, top);
        if (at == nullptr) return false;
        *top = Load(at, op->size);
        break;
      }
      case FastCode::kPlaceElement: {
        top -= op->op->index_count;
        char* at = element(*op, top + 1);
        if (at == nullptr) return false;
        *++place = {at, op->size, op->op->type};
        break;
      }
      case FastCode::kAdd: apply(Add); break;
      case FastCode::kSubtract: apply(Subtract); break;
      case FastCode::kMultiply: apply(Multiply); break;
      case FastCode::kDivide:
      case FastCode::kRemainder: {
        const int64_t b = right(*op);
        if (b == 0) return Fail(op->op->node, "Division by zero");
        *top = static_cast<int32_t>(op->code == FastCode::kDivide ? *top / b : *top % b);
        break;
      }
      case FastCode::kXor: apply(Xor); break;
      case FastCode::kAnd: apply(And); break;
      case FastCode::kOr: apply(Or); break;
      case FastCode::kShiftLeft: apply(ShiftLeft); break;
      case FastCode::kShiftRight: apply(ShiftRight); break;
      case FastCode::kLess: apply(Less); break;
      case FastCode::kGreater: apply(Greater); break;
      case FastCode::kLessEqual: apply(LessEqual); break;
      case FastCode::kGreaterEqual: apply(GreaterEqual); break;
      case FastCode::kEqual: apply(Equal); break;
      case FastCode::kNotEqual: apply(NotEqual); break;
      case FastCode::kLogicalAnd:
        --top;
        *top = *top != 0 && top[1] != 0;
        break;
      case FastCode::kLogicalOr:
        --top;
        *top = *top != 0 || top[1] != 0;
        break;
      case FastCode::kNegate: *top = Wrap(0U - static_cast<uint32_t>(*top)); break;
      case FastCode::kNot: *top = *top == 0; break;
      case FastCode::kInvert: *top = ~*top; break;
      case FastCode::kDrop: --top; break;
      case FastCode::kStore: Store(address(*op), op->size, *top); break;
      case FastCode::kStoreElement:
        Store(place->address, place->size, *top);
        --place;
        break;
      case FastCode::kCompound:
      case FastCode::kCompoundElement: {
        const Place target =
            op->code == FastCode::kCompound ? Place{address(*op), op->size, op->type} : *place--;
        int64_t value = 0;
        if (!Compound(op->op->token, LoadSigned(target), *top, &value))
          return Fail(op->op->node, "Division by zero");
        *top = static_cast<int32_t>(value);
        Store(target.address, target.size, *top);
        break;
      }
      case FastCode::kIncrement:
      case FastCode::kDecrement: {
        char* at = address(*op);
        const uint32_t step = op->code == FastCode::kIncrement ? 1U : ~0U;
        *++top = Wrap(static_cast<uint32_t>(LoadInt(at)) + step);
        Store(at, op->size, *top);
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
bool Interpreter::TryFast(Code* code) {
  // A trace shows every step, and only the general evaluation takes them one by one.
  if (code->fast_tried || TraceOn() || code->runs++ == 0) return false;
  code->fast_tried = true;
  code->fast = CompileFast(code_arena_, *code);
  return code->fast != nullptr && !failed();
}

}  // namespace vorc
