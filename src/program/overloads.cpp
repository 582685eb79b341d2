#include "program/overloads.h"

#include "program/layout.h"
#include "program/symtab.h"

namespace vorc {

bool FirstIsVoid(const FUNCPROTO_REC* function) {
  const SYM_REC* first = function->ParametersHeader.Symbols.First;
  return first != nullptr && first->BasicType == Tok::void_ && first->PointerDepth == 0;
}

bool ParameterDataTypeMatch(const FUNCPROTO_REC* function, int count) {
  if (FirstIsVoid(function)) return count == 0;
  return function->HasVarArgs ? count >= function->ParameterCount : count == function->ParameterCount;
}

FUNCPROTO_REC* ChooseOverload(FUNCPROTO_REC* function, int count) {
  FUNCPROTO_REC* first = function->FirstOverload != nullptr ? function->FirstOverload : function;
  int alternatives = 0;
  for (FUNCPROTO_REC* at = first; at != nullptr; at = at->NextOverload) {
    if (at->PrototypeOnly) continue;
    ++alternatives;
    if (ParameterDataTypeMatch(at, count)) return at;
  }
  return alternatives <= 1 ? function : nullptr;
}

bool ArgumentCountFits(const FUNCPROTO_REC* function, int count) {
  if (FirstIsVoid(function)) return count == 0 || (count == 1 && function->ParameterCount == 1);
  return count == function->ParameterCount || (count == 0 && function->ParameterCount == 1) ||
         (function->HasVarArgs && count >= function->ParameterCount);
}

FUNCPROTO_REC* CurrentFunction(const C_SLOT& slot, FUNCPROTO_REC* function) {
  if (!function->PrototypeOnly) return function;
  const SYMBOLS_HEADER* header =
      function->OwnerClass != nullptr ? &function->OwnerClass->MembersHeader : &slot.Globals;
  FUNCPROTO_REC* now = FindFunction(slot, header, function->name);
  return now != nullptr ? now : function;
}

int CompareParams(const FUNCPROTO_REC* a, const FUNCPROTO_REC* b) {
  const SYM_REC* left = FirstIsVoid(a) ? nullptr : a->ParametersHeader.Symbols.First;
  const SYM_REC* right = FirstIsVoid(b) ? nullptr : b->ParametersHeader.Symbols.First;
  for (; left != nullptr && right != nullptr; left = left->Next, right = right->Next) {
    const bool same = ExtractType(*left) == ExtractType(*right) && left->Struct == right->Struct &&
                      left->TotalDepth == right->TotalDepth &&
                      left->Shape.DimensionCount == right->Shape.DimensionCount;
    if (!same) return -1;
  }
  if (left == nullptr && right == nullptr) return a->HasVarArgs == b->HasVarArgs ? 0 : 1;
  return left == nullptr ? -1 : 1;
}

}  // namespace vorc
