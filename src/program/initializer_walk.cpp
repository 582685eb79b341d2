#include "program/initializer_walk.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "program/layout.h"

namespace vorc {

namespace {

bool IsList(const INITIALIZER* element) {
  return element->InitializerType == INITIALIZER_TYPE_ANOTHER_INTIALIZER_LIST;
}

bool IsText(const INITIALIZER* element) {
  return element->Expression != nullptr && element->Expression->Token == Tok::STRING &&
         element->Expression->Next == nullptr;
}

bool IsCharType(const SYM_REC* symbol) {
  return symbol->TotalDepth == 0 && !symbol->IsFunctionPointer &&
         (symbol->ValueType == Tok::char_ || symbol->ValueType == Tok::UCHAR);
}

bool IsStruct(const SYM_REC* symbol) {
  return symbol->Struct != nullptr && symbol->TotalDepth == 0 && !symbol->IsFunctionPointer;
}

constexpr int64_t kNoEnd = std::numeric_limits<int64_t>::max();

}  // namespace

int64_t InitializerWalk::RowSize(const SYM_REC* symbol, int dimension) const {
  int64_t size = GetObjectSize(slot_, symbol);
  for (int i = dimension + 1; i < symbol->Shape.DimensionCount; ++i)
    size = SizeProduct(size, symbol->Shape.Dimensions[i]);
  return size;
}

int64_t InitializerWalk::Run(const SYM_REC* symbol) {
  const INITIALIZER* element = symbol->Initializer.First;
  if (element == nullptr) return 0;
  if (symbol->Shape.DimensionCount > 0 && symbol->Shape.UnsizedFirstDimension) {
    if (IsText(element)) {
      visit_({symbol, 0, kNoEnd, element});
      return static_cast<int64_t>(std::string_view(element->Expression->Literal).size()) + 1;
    }
    const INITIALIZER* at = element->List.First;
    const bool one_text = symbol->Shape.DimensionCount == 1 && at != nullptr && at->Next == nullptr &&
                          IsText(at) && IsCharType(symbol);
    if (one_text) {
      visit_({symbol, 0, kNoEnd, at});
      return static_cast<int64_t>(std::string_view(at->Expression->Literal).size()) + 1;
    }
    return FillRows(symbol, 0, 0, &at);
  }
  FillElement(symbol, 0, &element);
  return 0;
}

void InitializerWalk::FillElement(const SYM_REC* symbol, int64_t offset, const INITIALIZER** at) {
  if (symbol->Shape.DimensionCount > 0) return FillArray(symbol, 0, offset, at);
  const INITIALIZER* element = *at;
  if (IsStruct(symbol)) return FillStruct(symbol->Struct, offset, at);
  if (IsList(element)) {
    const INITIALIZER* inner = element->List.First;
    if (inner != nullptr && (inner->Next != nullptr || IsList(inner)))
      return Fail(element, "incorrect initializer {");
    if (inner != nullptr) visit_({symbol, offset, 0, inner});
  } else {
    visit_({symbol, offset, 0, element});
  }
  *at = element->Next;
}

void InitializerWalk::FillArray(const SYM_REC* symbol, int dimension, int64_t offset,
                                const INITIALIZER** at) {
  const INITIALIZER* element = *at;
  const bool last = dimension + 1 == symbol->Shape.DimensionCount;
  if (last && IsCharType(symbol)) {
    const INITIALIZER* text = IsList(element) ? element->List.First : element;
    if (text != nullptr && IsText(text) && (text == element || text->Next == nullptr)) {
      const int64_t room = symbol->Shape.Dimensions[dimension];
      if (static_cast<int64_t>(std::string_view(text->Expression->Literal).size()) + 1 > room) {
        Fail(text, "Too many initializer '%s'");
      }
      visit_({symbol, offset, room, text});
      *at = element->Next;
      return;
    }
  }
  if (!IsList(element)) {
    FillRows(symbol, dimension, offset, at);
    return;
  }
  const INITIALIZER* inner = element->List.First;
  FillRows(symbol, dimension, offset, &inner);
  if (inner != nullptr && good_) Fail(inner, "Too many initialized '%s'");
  *at = element->Next;
}

int64_t InitializerWalk::FillRows(const SYM_REC* symbol, int dimension, int64_t offset,
                                  const INITIALIZER** at) {
  const int64_t declared = symbol->Shape.Dimensions[dimension];
  const int64_t rows = declared > 0 ? declared : kNoEnd;
  const int64_t size = RowSize(symbol, dimension);
  const bool last = dimension + 1 == symbol->Shape.DimensionCount;
  int64_t row = 0;
  for (; row < rows && *at != nullptr && good_; ++row) {
    if (!last) {
      FillArray(symbol, dimension + 1, offset + SizeProduct(row, size), at);
      continue;
    }
    if (IsStruct(symbol)) {
      FillStruct(symbol->Struct, offset + SizeProduct(row, size), at);
    } else if (IsList(*at)) {
      Fail(*at, "Extra '{' found.\n");
    } else {
      visit_({symbol, offset + SizeProduct(row, size), 0, *at});
      *at = (*at)->Next;
    }
  }
  return row;
}

void InitializerWalk::FillStruct(STRUCT_REC* record, int64_t offset, const INITIALIZER** at) {
  const INITIALIZER* element = *at;
  if (!IsList(element)) return FillMembers(record, offset, at);
  const INITIALIZER* inner = element->List.First;
  FillMembers(record, offset, &inner);
  if (inner != nullptr && good_) Fail(inner, "Too many initialized '%s'");
  *at = element->Next;
}

void InitializerWalk::FillMembers(STRUCT_REC* record, int64_t offset, const INITIALIZER** at) {
  const INITIALIZER* before = *at;
  for (const PARENT_NODE* base : record->Parents) {
    if (*at == nullptr || !good_) return;
    FillMembers(base->Struct, offset, at);
    offset += GetObjectStructSize(base->Struct);
  }
  for (const SYM_REC* member : record->MembersHeader.Symbols) {
    if (member == record->This) continue;
    if (*at == nullptr || !good_) return;
    FillElement(member, offset + member->MemberOffset, at);
    if (record->DeclType == Tok::union_) break;
  }
  // A struct without members takes no value, and must not be asked again for the same one.
  if (*at != nullptr && *at == before && record->Parents.empty()) Fail(*at, "Too many initialized '%s'");
}

}  // namespace vorc
