#include "interp/interpreter.h"
#include "interp/vm_compiler.h"
#include "program/layout.h"

namespace vorc {

namespace {

constexpr int64_t kLargestStride = int64_t{1} << 24;

Form FormOfType(Tok type) {
  switch (type) {
    case Tok::int_:
    case Tok::INT32:
    case Tok::UINT32: return Form::kInt;
    case Tok::char_:
    case Tok::UCHAR:
    case Tok::bool_: return Form::kByte;
    case Tok::INT16:
    case Tok::UINT16: return Form::kHalf;
    case Tok::double_: return Form::kReal;
    case Tok::float_: return Form::kFloat;
    default: return Form::kNone;
  }
}

}  // namespace

Form VmCompiler::FormOf(const Item& item) const {
  if (item.kind == 3) return Form::kWord;
  if (item.kind != 2 || item.record != nullptr) return Form::kNone;
  if (item.type == Tok::dollar) return item.typeless ? Form::kWord : Form::kNone;
  return FormOfType(item.type);
}

void VmCompiler::Classify(Item* item) const {
  item->kind = item->dimensions > 0 ? 1 : item->depth > 0 ? 3 : 2;
  item->form = FormOf(*item);
  item->is_real = item->form == Form::kReal || item->form == Form::kFloat;
  item->is_unsigned = item->kind == 2 && (item->symbol->StorageType & UNSIGNED_VAR) != 0;
  item->exact = item->kind == 2 && item->type == Tok::int_ && !item->is_unsigned;
}

int32_t VmCompiler::ElementSize(const Item& item) const {
  if (item.depth > 0) return 8;
  if (item.record != nullptr) return GetObjectStructSize(item.record);
  const int32_t size = GetBasicTypeSize(slot_, item.type);
  return size == 0 ? 4 : size;
}

// A check of an operator or a pointer: fails along the general road, or by itself.
int VmCompiler::CheckSite(const Op& op, int32_t size) {
  int number = 0;
  Site& site = NewSite(&number);
  site.op = &op;
  site.size = size;
  if (order_ == Order::kPlain) {
    fails_ = true;
    fails_at_.push_back({static_cast<size_t>(number), fail_});
  }
  return number;
}

bool VmCompiler::PlaceOf(const Op& op, Item* item) {
  SYM_REC* symbol = op.symbol;
  if (symbol == nullptr || symbol->ImplicitExtern || symbol->BitFieldWidth > 0 || symbol->IsFunctionPointer)
    return false;
  item->symbol = symbol;
  item->record = op.record;
  item->type = op.type;
  item->depth = op.depth;
  item->dimensions = op.dimensions;
  constexpr int64_t kWord = ScriptMemory::kWordSize;
  int64_t place = 0;
  switch (op.storage) {
    case Storage::kLocal: place = -op.offset * kWord; break;
    case Storage::kParameter:
      place = op.offset * kWord;
      item->parameter_array = op.dimensions > 0;
      break;
    case Storage::kGlobal:
      if (host_.StateOf(symbol).data == nullptr) return false;
      place = host_.StateOf(symbol).data - host_.memory_.stack();
      item->in_data = true;
      break;
    default: return false;
  }
  if (place < INT32_MIN / 2 || place > INT32_MAX / 2) return false;
  item->where = item->in_data ? Item::Where::kData : Item::Where::kFrame;
  item->place = static_cast<int32_t>(place);
  item->typeless = op.type == Tok::dollar && op.depth == 0 && op.dimensions == 0;
  Classify(item);
  return true;
}

bool VmCompiler::Variable(const Op& op) {
  Item item;
  if (!PlaceOf(op, &item)) return false;
  if (op.index_count > 0) {
    item.indexed = true;
    if (!ApplyIndices(op, op.list, op.index_count, &item)) return false;
  } else if (item.parameter_array) {
    item.form = Form::kWord;  // only fit to be handed on
  }
  items_.push_back(item);
  return true;
}

bool VmCompiler::ApplyIndices(const Op& op, Code** indices, int count, Item* item) {
  if (count > item->dimensions + item->depth) return false;
  int used = 0;
  if (item->dimensions > 0) {
    used = item->dimensions < count ? item->dimensions : count;
    if (!IndexArray(op, indices, used, item)) return false;
  }
  for (; used < count; ++used) {
    if (!FollowPointer(op, indices[used], item)) return false;
  }
  return order_ == Order::kPlain || item->where == Item::Where::kFrame || item->where == Item::Where::kData ||
         ToAddress(item);
}

// The value of an index, which stays on the operands while its array is looked up.
bool VmCompiler::IndexPlace(Code* index, Item* item) {
  const Item held = *item;
  items_.push_back(held);  // its temporaries are in use
  if (index == nullptr || !Level(*index, false)) return false;
  Item value = Pop();
  items_.pop_back();
  if (!Numeric(value) || value.is_real || !Capture(&value)) return false;
  if (value.where == Item::Where::kNumber) {
    item->number = value.number;
    item->index = kNoPlace;
    return true;
  }
  const int32_t place = IntPlace(value);
  item->index = place;
  return place != kNoPlace;
}

bool VmCompiler::IndexArray(const Op& op, Code** indices, int count, Item* item) {
  const ArrayShape& shape = item->symbol->Shape;
  if (item->parameter_array) {
    // A parameter's array is a pointer, of which nothing but what the script owns is known.
    if (shape.DimensionCount != 1 || item->where != Item::Where::kFrame) return false;
    return FollowPointer(op, indices[0], item);
  }
  for (int i = 0; i < count; ++i) {
    const int64_t length = shape.Dimensions[shape.DimensionCount - item->dimensions];
    int64_t stride = ElementSize(*item);
    for (int k = shape.DimensionCount - item->dimensions + 1; k < shape.DimensionCount; ++k)
      stride = SizeProduct(stride, shape.Dimensions[k]);
    if (stride > kLargestStride || length > INT32_MAX) return false;
    const int32_t first_index = item->index;
    if (!IndexPlace(indices[i], item)) return false;
    --item->dimensions;
    const bool direct = item->where == Item::Where::kFrame || item->where == Item::Where::kData;
    if (item->index == kNoPlace && item->number >= 0 && item->number < length &&
        (direct || item->where == Item::Where::kAddress)) {
      const auto distance = static_cast<int32_t>(item->number * stride);
      (direct ? item->place : item->offset) += distance;
      continue;
    }
    if (item->index == kNoPlace) {
      item->index = NewTemp();
      Emit(VmOp::kConstInt, item->index, 0, static_cast<int32_t>(item->number));
    }
    if (direct && order_ == Order::kPlain) {
      const int number = CheckSite(op, 0);
      Site& site = code_.sites[static_cast<size_t>(number)];
      site.place = item->place;
      site.length = length;
      site.stride = static_cast<int32_t>(stride);
      site.symbol = item->symbol;
      item->where = Item::Where::kElement;
      item->index_count = 1;
      item->site = number;
      continue;
    }
    const bool second = item->where == Item::Where::kElement && item->index_count == 1 && stride > 0 &&
                        code_.sites[static_cast<size_t>(item->site)].stride == stride * length &&
                        code_.sites[static_cast<size_t>(item->site)].offset == 0;
    if (second) {
      Site& site = code_.sites[static_cast<size_t>(item->site)];
      site.row = length;
      site.stride = static_cast<int32_t>(stride);
      item->index2 = item->index;
      item->index = first_index;
      item->index_count = 2;
      continue;
    }
    const int32_t last_index = item->index;
    item->index = first_index;
    if (!ToAddress(item)) return false;
    const int number = CheckSite(op, 0);
    Site& site = code_.sites[static_cast<size_t>(number)];
    site.length = length;
    site.stride = static_cast<int32_t>(stride);
    site.symbol = item->symbol;
    site.offset = item->offset;
    const int32_t place = NewTemp();
    Emit(VmOp::kElementAddress, place, last_index, item->place, number);
    item->place = place;
    item->offset = 0;
  }
  Classify(item);
  return true;
}

bool VmCompiler::FollowPointer(const Op& op, Code* index, Item* item) {
  int32_t pointer = kNoPlace;
  const bool array = item->parameter_array;
  const int32_t first_index = item->index;
  if (!IndexPlace(index, item)) return false;
  const int32_t at = item->index;
  const int64_t number = item->number;
  if (array) {
    pointer = item->place;
    --item->dimensions;
  } else {
    item->form = Form::kWord;
    item->index = first_index;
    Item word = *item;
    word.typeless = false;
    items_.push_back(*item);
    pointer = WordPlace(word);
    items_.pop_back();
    if (pointer == kNoPlace) return false;
    --item->depth;
  }
  const int32_t size = ElementSize(*item);
  if (size > kLargestStride) return false;
  item->index = at;
  if (at == kNoPlace) {
    item->index = NewTemp();
    Emit(VmOp::kConstInt, item->index, 0, static_cast<int32_t>(number));
  }
  const int site_number = CheckSite(op, size);
  Site& site = code_.sites[static_cast<size_t>(site_number)];
  site.stride = size;
  site.length = array ? -1 : 0;
  site.symbol = item->symbol;
  item->where = Item::Where::kPointed;
  item->place = pointer;
  item->offset = 0;
  item->site = site_number;
  item->index_count = 1;
  item->parameter_array = false;
  Classify(item);
  return true;
}

// Turns a variable that has its place by an index or a pointer into one behind an address.
bool VmCompiler::ToAddress(Item* item) {
  const int32_t place = NewTemp();
  switch (item->where) {
    case Item::Where::kFrame:
      Emit(VmOp::kFrameAddress, place, item->place);
      item->offset = 0;
      break;
    case Item::Where::kData:
      Emit(VmOp::kDataAddress, place, item->place);
      item->offset = 0;
      break;
    case Item::Where::kAddress: return true;
    case Item::Where::kMember: Emit(VmOp::kPointerAddress, place, item->place, 0, item->site); break;
    case Item::Where::kPointed: {
      item->offset = code_.sites[static_cast<size_t>(item->site)].offset;
      code_.sites[static_cast<size_t>(item->site)].offset = 0;
      Emit(VmOp::kPointedAddress, place, item->index, item->place, item->site);
      break;
    }
    case Item::Where::kElement: {
      Site& site = code_.sites[static_cast<size_t>(item->site)];
      item->offset = site.offset;
      site.offset = 0;
      Emit(item->in_data ? VmOp::kDataAddress : VmOp::kFrameAddress, place, static_cast<int32_t>(site.place));
      if (item->index_count == 1) {
        Emit(VmOp::kElementAddress, place, item->index, place, item->site);
        break;
      }
      const int number = CheckSite(*site.op, 0);
      Site& first = code_.sites[static_cast<size_t>(number)];
      Site& second = code_.sites[static_cast<size_t>(item->site)];
      first.symbol = second.symbol;
      first.length = second.length;
      first.stride = static_cast<int32_t>(second.stride * second.row);
      second.length = second.row;
      Emit(VmOp::kElementAddress, place, item->index, place, number);
      Emit(VmOp::kElementAddress, place, item->index2, place, item->site);
      break;
    }
    default: return false;
  }
  item->where = Item::Where::kAddress;
  item->place = place;
  item->index = item->index2 = 0;
  return true;
}

bool VmCompiler::Member(const Op& op) {
  if (items_.size() <= level_base_) return false;
  Item item = Pop();
  if (!item.IsVariable() || item.record == nullptr || item.symbol == nullptr) return false;
  const bool arrow = op.token == Tok::POINTER;
  if (item.kind != (arrow ? 3 : 2)) return false;
  const EXPR_NODE* node = op.node;
  const MemberResult member = FindStructMember(slot_, item.record, node->name);
  if (member.Symbol == nullptr || MemberReach(member, item.record, node->OwnerFunction) != Reach::kAllowed)
    return false;
  SYM_REC* symbol = member.Symbol;
  if (symbol->BitFieldWidth > 0 || symbol->IsFunctionPointer) return false;
  const int32_t offset = MemberDataOffset(member);
  if (arrow) {
    items_.push_back(item);
    const int32_t pointer = WordPlace(item);
    items_.pop_back();
    if (pointer == kNoPlace) return false;
    const int number = CheckSite(op, GetObjectStructSize(item.record));
    code_.sites[static_cast<size_t>(number)].symbol = item.symbol;
    item.where = Item::Where::kMember;
    item.place = pointer;
    item.offset = offset;
    item.site = number;
  } else if (item.where == Item::Where::kElement || item.where == Item::Where::kPointed) {
    code_.sites[static_cast<size_t>(item.site)].offset += offset;
  } else if (item.where == Item::Where::kFrame || item.where == Item::Where::kData) {
    item.place += offset;
  } else {
    item.offset += offset;
  }
  item.symbol = symbol;
  item.record = symbol->Struct;
  item.type = symbol->ValueType;
  item.depth = static_cast<int16_t>(symbol->TotalDepth);
  item.dimensions = symbol->Shape.DimensionCount;
  item.indexed = false;
  item.parameter_array = false;
  item.typeless = false;
  if (item.where == Item::Where::kMember && (item.dimensions > 0 || order_ == Order::kOrdered) &&
      !ToAddress(&item))
    return false;
  Classify(&item);
  if (op.index_count > 0) {
    item.indexed = true;
    if (!ApplyIndices(op, op.list, op.index_count, &item)) return false;
  }
  items_.push_back(item);
  return true;
}

bool VmCompiler::Star(const Op& op) {
  if (items_.size() <= level_base_) return false;
  Item item = Pop();
  if (!item.IsVariable() || item.kind != 3 || item.typeless || op.node->StarRefCount != 1) return false;
  items_.push_back(item);
  const int32_t pointer = WordPlace(item);
  items_.pop_back();
  if (pointer == kNoPlace) return false;
  --item.depth;
  const int number = CheckSite(op, ElementSize(item));
  code_.sites[static_cast<size_t>(number)].symbol = item.symbol;
  item.where = Item::Where::kMember;
  item.place = pointer;
  item.offset = 0;
  item.site = number;
  item.indexed = item.grouped = false;
  Classify(&item);
  if (order_ == Order::kOrdered && !ToAddress(&item)) return false;
  items_.push_back(item);
  return true;
}

// Only what a call takes as an argument is worth it.
bool VmCompiler::AddressOf() {
  if (items_.size() <= level_base_) return false;
  Item& item = items_.back();
  if (!item.IsVariable() || item.typeless) return false;
  if (item.parameter_array || (item.kind == 1 && item.dimensions == 0)) return false;
  item.kind = 1;
  item.form = Form::kNone;
  item.is_real = item.exact = false;
  item.indexed = false;
  return true;
}

}  // namespace vorc
