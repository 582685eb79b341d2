#include <cstring>

#include "base/console.h"
#include "base/format.h"
#include "base/trace.h"
#include "interp/interpreter.h"
#include "program/diagnostics.h"
#include "program/layout.h"

namespace vorc {

namespace {

constexpr const char* kTitle = "MorvScript Interpreter";

const char* ReadPointer(const char* address) {
  const char* pointer = nullptr;
  std::memcpy(&pointer, address, sizeof pointer);
  return pointer;
}

void Classify(Entry* entry) {
  entry->kind = entry->dimensions > 0 ? 1 : entry->depth > 0 ? 3 : 2;
}

}  // namespace

// The address of a name's variable at this moment of the run.
void Interpreter::PlaceVariable(const Op& op, Entry* entry) {
  SYM_REC* symbol = op.symbol;
  entry->symbol = symbol;
  entry->record = op.record;
  entry->type = op.type;
  entry->kind = op.kind;
  entry->depth = op.depth;
  entry->dimensions = op.dimensions;
  switch (op.storage) {
    case Storage::kLocal:
      entry->address = Word(frame_.base - op.offset);
      VORC_TRACE("DIAG: local-var-addr name=%s base=%d offset=%ld addr=%p\n", symbol->name->c_str(),
                 static_cast<int>(frame_.base), static_cast<long>(op.offset),
                 static_cast<void*>(entry->address));
      break;
    case Storage::kParameter:
      entry->address = Word(frame_.base + op.offset);
      if (op.dimensions > 0) {
        entry->address = const_cast<char*>(ReadPointer(entry->address));
        entry->is_parameter_array = true;
        if (op.index_count == 0 && !memory_.Reach(entry->address, 1)) {
          // A wild pointer can be handed on, but nothing can be read or stored behind it.
          entry->value = reinterpret_cast<int64_t>(entry->address);
          entry->address = nullptr;
        }
      }
      break;
    case Storage::kMember:
      entry->address = frame_.this_base == nullptr ? nullptr : Displaced(frame_.this_base, op.offset);
      if (entry->address != nullptr) memory_.Reach(entry->address, 1);
      break;
    default:
      if (StateOf(symbol).data == nullptr) AllocateData(symbol);
      entry->address = StateOf(symbol).data;
  }
}

bool Interpreter::PushVariable(const Op& op, Mode, Entry* entry) {
  *entry = Entry();
  entry->token = op.token == Tok::DOLLAR_IDENTIFIER ? Tok::DOLLAR_IDENTIFIER : Tok::IDENTIFIER;
  if (op.symbol == nullptr || op.symbol->ImplicitExtern) {
    return Fail(op.node, Format("Undeclared variable '%s'", op.node->Literal));
  }
  PlaceVariable(op, entry);
  if (op.storage == Storage::kMember && entry->address == nullptr)
    return Fail(op.node, "'this' is pointing to invalid object");
  if (op.index_count == 0) return true;
  entry->indexed = true;
  return ApplyIndices(op.list, op.index_count, op.node, entry);
}

bool Interpreter::ApplyIndices(Code** indices, int count, const EXPR_NODE* node, Entry* entry) {
  if (count > entry->dimensions + entry->depth) return Fail(node, "Illegal array reference.");
  const int total = entry->dimensions;
  for (int i = 0; i < count; ++i) {
    int32_t index = 0;
    operands_ = entry + 1;
    if (!EvaluateLow(indices[i], Mode::kNormal, &index)) return false;
    const bool good = entry->dimensions > 0 ? IndexArray(node, index, total - entry->dimensions, entry)
                                            : FollowPointer(node, index, entry);
    if (!good) return false;
  }
  return true;
}

bool Interpreter::IndexArray(const EXPR_NODE* node, int64_t index, int dimension, Entry* entry) {
  const ArrayShape& shape = entry->symbol->Shape;
  int64_t stride = ElementSize(*entry);
  for (int i = dimension + 1; i < shape.DimensionCount; ++i)
    stride = SizeProduct(stride, shape.Dimensions[i]);
  // No type is larger than 2 GiB, so the product of a 32-bit index and a row fits.
  const bool inside = index >= 0 && index < shape.Dimensions[dimension];
  if (index >= shape.Dimensions[dimension] && !entry->is_parameter_array) {
    slot_.WarningAt(node->Line, "Array index out of range!!");
  }
  entry->address = Displaced(entry->address, index * stride);
  --entry->dimensions;
  Classify(entry);
  if (inside && !entry->is_parameter_array) return true;
  if (memory_.Reach(entry->address, static_cast<size_t>(stride > 0 ? stride : 1))) return true;
  return NullPointer(node, *entry, entry->address);
}

bool Interpreter::FollowPointer(const EXPR_NODE* node, int64_t index, Entry* entry) {
  const char* pointer = ReadPointer(entry->address);
  if (pointer == nullptr) return NullPointer(node, *entry, pointer);
  --entry->depth;
  const int64_t size = ElementSize(*entry);
  entry->address = Displaced(pointer, index * size);
  Classify(entry);
  return memory_.Reach(entry->address, static_cast<size_t>(size)) ||
         NullPointer(node, *entry, entry->address);
}

// A pointer that leads nowhere: told on standard error and as an error of the script.
bool Interpreter::NullPointer(const EXPR_NODE* node, const Entry& entry, const char* pointer) {
  const char* name = entry.symbol == nullptr ? "?" : entry.symbol->name->c_str();
  const std::string text = Format("Unhandled Exception: '%s' has a value of 0x%08llX at line %d", name,
                                  static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(pointer)),
                                  node == nullptr ? 0 : node->Line.Line);
  MessageBox(text.c_str(), kTitle);
  return Fail(node, text);
}

bool Interpreter::StarRef(const EXPR_NODE* node, Entry* entry) {
  if (!entry->IsVariable() || entry->symbol == nullptr)
    return Fail(node, "Improper use of '*' in the expression.");
  if (entry->symbol->IsFunctionPointer && entry->dimensions == 0) return true;
  const int levels = node->StarRefCount;
  if (entry->depth + entry->dimensions == 0 || levels > entry->depth + entry->dimensions) {
    return Fail(node, "Illegal indirection '*'.");
  }
  for (int i = 0; i < levels; ++i) {
    if (entry->address == nullptr)
      return NullPointer(node, *entry, reinterpret_cast<const char*>(entry->value));
    if (entry->dimensions > 0) {
      --entry->dimensions;
      continue;
    }
    const char* pointer = ReadPointer(entry->address);
    --entry->depth;
    if (pointer == nullptr || !memory_.Reach(pointer, static_cast<size_t>(ElementSize(*entry)))) {
      return NullPointer(node, *entry, pointer);
    }
    entry->address = const_cast<char*>(pointer);
  }
  Classify(entry);
  entry->indexed = entry->address_taken = false;
  return true;
}

bool Interpreter::AddressOf(const EXPR_NODE* node, Entry* entry) {
  if (entry->token == Tok::this_) return true;
  if (!entry->IsVariable()) {
    if (entry->kind == 1) return Fail(node, "Improper use of '&' in the expression.");
    if (entry->number_type != Tok::INT64) entry->kind = 1;
    return true;
  }
  if (entry->kind == 1 && entry->dimensions == 0) return Fail(node, "Address Constant cannot be changed.");
  entry->kind = 1;
  entry->address_taken = true;
  entry->indexed = false;
  return true;
}

// A cast changes no value; of a variable it changes what an indirection or a member will read.
void Interpreter::Cast(const EXPR_NODE* node, Entry* entry) {
  const CAST* cast = node->Cast;
  if (!entry->IsVariable() || entry->dimensions > 0 || entry->kind != 3 || cast->PointerDepth == 0) return;
  entry->depth = cast->PointerDepth;
  entry->record = cast->Struct;
  // Only what reads through the pointer sees the other type.
  const bool read_through = node->Next != nullptr && node->Next->Token == Tok::STAR_REF;
  if (read_through && cast->Struct == nullptr && cast->Typedef == nullptr) entry->type = cast->TypeToken;
}

STRUCT_REC* Interpreter::ClassOf(const EXPR_NODE* node, const Entry& object) {
  if (object.token == Tok::this_) {
    if (object.record == nullptr || object.address == nullptr) {
      Fail(node, "'this' is pointing to invalid object");
      return nullptr;
    }
    return object.record;
  }
  if (!object.IsVariable()) {
    Fail(node, "Invalid expression");
    return nullptr;
  }
  if (object.record == nullptr) {
    const char* name = object.symbol == nullptr
                           ? node->OwnerObject == nullptr ? "?" : node->OwnerObject->name->c_str()
                           : object.symbol->name->c_str();
    Fail(node, Format("'%s' is not a struct/class/union.", name));
    return nullptr;
  }
  return object.record;
}

bool Interpreter::CheckMemberAccess(const EXPR_NODE* node, STRUCT_REC* record, const MemberResult& member) {
  const Reach reach = MemberReach(member, record, node->OwnerFunction);
  if (reach == Reach::kAllowed) return true;
  return Fail(node, Format("'%s' cannot access %s member of struct/class/union '%s'", node->name->c_str(),
                           reach == Reach::kPrivate ? "private" : "protected", record->name->c_str()));
}

// Where the object on the left of `.` or `->` lies, with the checks that the operator fits it.
bool Interpreter::ObjectAddress(const Op& op, Entry* object, const char* member, char** address) {
  const bool arrow = op.token == Tok::POINTER;
  const EXPR_NODE* node = op.node;
  if (object->token == Tok::this_) {
    *address = object->address;
    return arrow || Fail(node, "Use of '->' instead of '.'");
  }
  if (!object->IsVariable() || object->symbol == nullptr) return Fail(node, "Invalid expression");
  const char* name = object->symbol->name->c_str();
  switch (object->kind) {
    case 2:
      *address = object->address;
      return !arrow ||
             Fail(node,
                  Format("'%s' is a struct/union/class variable. Use '.' instead of '->' at the left of '%s'",
                         name, member));
    case 3: {
      if (!arrow && !object->indexed) {
        return Fail(node, Format("'%s' is a pointer to struct/union/class variable. Use '->' instead of '.' "
                                 "at the left of '%s'",
                                 name, member));
      }
      const char* pointer = ReadPointer(object->address);
      const auto size = static_cast<size_t>(GetObjectStructSize(object->record));
      *address = const_cast<char*>(pointer);
      return (pointer != nullptr && memory_.Reach(pointer, size)) || NullPointer(node, *object, pointer);
    }
    default: return Fail(node, "Invalid indirection.");
  }
}

// The member that a step names, in the class of the object on its left.
bool Interpreter::FindMember(const EXPR_NODE* node, const Entry& object, MemberResult* member) {
  STRUCT_REC* record = ClassOf(node, object);
  if (record == nullptr) return false;
  *member = FindStructMember(slot_, record, node->name);
  if (*member) return CheckMemberAccess(node, record, *member);
  return Fail(node, Format("'%s' is not a member of struct/class/union '%s'", node->name->c_str(),
                           record->name->c_str()));
}

bool Interpreter::Member(const Op& op, Entry* object) {
  const EXPR_NODE* node = op.node;
  MemberResult member;
  char* base = nullptr;
  if (!FindMember(node, *object, &member) || !ObjectAddress(op, object, node->name->c_str(), &base))
    return false;
  if (member.Symbol == nullptr) return Fail(node, "Invalid expression");
  SYM_REC* symbol = member.Symbol;
  *object = Entry();
  object->token = Tok::IDENTIFIER;
  object->symbol = symbol;
  object->record = symbol->Struct;
  object->type = symbol->ValueType;
  object->depth = static_cast<int16_t>(symbol->IsFunctionPointer ? 1 : symbol->TotalDepth);
  object->dimensions = symbol->Shape.DimensionCount;
  object->address = Displaced(base, MemberDataOffset(member));
  Classify(object);
  if (op.index_count == 0) return true;
  object->indexed = true;
  return ApplyIndices(op.list, op.index_count, node, object);
}

}  // namespace vorc
