#include "program/symtab.h"

#include <algorithm>

#include "program/members.h"

namespace vorc {

namespace {

void InsertDeclSequence(C_SLOT& slot, SYMBOLS_HEADER* header, DeclKind kind, void* record) {
  DECL_SEQ* node = slot.New(slot.DeclSequence, "declarations");
  node->DeclType = kind;
  node->Record = record;
  node->Line = slot.Place;
  header->DeclSequence.Append(node);
}

bool SkippedFunction(const Binding* binding) {
  return binding->Kind == BindingKind::kFunction &&
         static_cast<FUNCPROTO_REC*>(binding->Record)->PrototypeOnly;
}

constexpr int kMadeUp = 9;
constexpr int kNothing = 10;

// The order in which kinds hide each other. A name that a call made up gives way to anything real.
int Rank(const Binding* binding) {
  switch (binding->Kind) {
    case BindingKind::kSymbol: return static_cast<SYM_REC*>(binding->Record)->ImplicitExtern ? kMadeUp : 0;
    case BindingKind::kFunction: return 1;
    case BindingKind::kTypedef: return 2;
    case BindingKind::kStruct: return 3;
    case BindingKind::kEnum: return 4;
    case BindingKind::kEnumElement: return 5;
    case BindingKind::kNone: break;
  }
  return kNothing;
}

FuncRetKind GetRetType(const TypeSpec& type) {
  switch (type.BasicType) {
    case Tok::struct_:
    case Tok::class_:
    case Tok::union_: return FUNC_RETTYPE_STRUCT_CLASS;
    case Tok::IDENTIFIER: return FUNC_RETTYPE_TYPEDEF;
    case Tok::enum_: return FUNC_RETTYPE_ENUM;
    case Tok::dollar:
    case Tok::void_: return FUNC_RETTYPE_BASICTYPE;
    default: return BasicTypeList.Has(type.BasicType) ? FUNC_RETTYPE_BASICTYPE : FUNC_RETTYPE_NULL;
  }
}

TypedefKind TypedefKindOf(const TypeSpec& type) {
  if (type.Typedef != nullptr) return TYPEDEF_ANOTHER_TYPEDEF;
  if (type.Enum != nullptr) return TYPEDEF_ENUM_TYPE;
  switch (type.BasicType) {
    case Tok::struct_: return TYPEDEF_STRUCT_TYPE;
    case Tok::class_: return TYPEDEF_CLASS_TYPE;
    case Tok::union_: return TYPEDEF_UNION_TYPE;
    default: return TYPEDEF_BASIC_TYPE;
  }
}

}  // namespace

SYM_REC* InsertVarName(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, const TypeSpec& type,
                       bool is_parameter) {
  SYM_REC* symbol = slot.New(slot.SymbolRecords, "variables");
  static_cast<TypeSpec&>(*symbol) = type;
  symbol->name = name;
  symbol->IsParameter = is_parameter;
  symbol->Line = slot.Place;
  if (header->ParentDataStructureType == PARENT_DATA_STRUCTURE_STRUCT) {
    symbol->OwnerStruct = static_cast<STRUCT_REC*>(header->Parent);
  }
  SettleType(slot, symbol);
  header->Symbols.Append(symbol);
  slot.Index.Add(header, name, BindingKind::kSymbol, symbol);
  InsertDeclSequence(slot, header, DECLTYPE_SYMBOL_RECORD, symbol);
  return symbol;
}

void DeclareAt(SYMBOLS_HEADER* header, SYM_REC* symbol, SourceLine line) {
  symbol->Line = line;
  DECL_SEQ* last = header->DeclSequence.Last;
  if (last != nullptr && last->Record == symbol) last->Line = line;
}

FUNCPROTO_REC* InsertFuncName(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, const TypeSpec& return_type) {
  FUNCPROTO_REC* proto = slot.New(slot.FuncPrototypes, "functions");
  proto->name = name;
  proto->IsMain = name->Text == "main";
  proto->ReturnType = return_type;
  proto->ReturnKind = GetRetType(return_type);
  proto->ParametersHeader.ParentDataStructureType = PARENT_DATA_STRUCTURE_FUNCPROTO;
  proto->ParametersHeader.Parent = proto;
  proto->Line = slot.Place;
  if (header != nullptr) {
    if (header->ParentDataStructureType == PARENT_DATA_STRUCTURE_STRUCT) {
      proto->OwnerClass = static_cast<STRUCT_REC*>(header->Parent);
    }
    header->Functions.Append(proto);
    slot.Index.Add(header, name, BindingKind::kFunction, proto);
  }
  return proto;
}

STRUCT_REC* InsertNewStruct(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, Tok token, uint16_t storage) {
  STRUCT_REC* record = slot.New(slot.Structs, "structs");
  record->name = name;
  record->DeclType = token;
  record->StorageType = storage;
  record->IsForwardDeclared = true;
  record->StartLine = slot.Place;
  record->MembersHeader.ParentDataStructureType = PARENT_DATA_STRUCTURE_STRUCT;
  record->MembersHeader.Parent = record;
  header->Structs.Append(record);
  if (!name->Text.empty()) slot.Index.Add(header, name, BindingKind::kStruct, record);
  InsertDeclSequence(slot, header, DECLTYPE_STRUCT_RECORD, record);
  return record;
}

TYPEDEF_REC* CreateTypeDef(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, const TypeSpec& type) {
  TYPEDEF_REC* record = slot.New(slot.Typedefs, "typedefs");
  static_cast<TypeSpec&>(*record) = type;
  record->name = name;
  record->TypeDefType = TypedefKindOf(type);
  header->Typedefs.Append(record);
  slot.Index.Add(header, name, BindingKind::kTypedef, record);
  if (header->ParentDataStructureType == PARENT_DATA_STRUCTURE_NULL) name->IsTypedef = true;
  InsertDeclSequence(slot, header, DECLTYPE_TYPEDEF_RECORD, record);
  return record;
}

ENUM_REC* CreateEnumRecord(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name) {
  ENUM_REC* record = slot.New(slot.EnumRecords, "enums");
  record->name = name;
  header->Enums.Append(record);
  if (!name->Text.empty()) slot.Index.Add(header, name, BindingKind::kEnum, record);
  InsertDeclSequence(slot, header, DECLTYPE_ENUM_RECORD, record);
  return record;
}

ENUM_ELEMENT* InsertEnumItem(C_SLOT& slot, SYMBOLS_HEADER* header, ENUM_REC* owner, Name* name,
                             int64_t value) {
  ENUM_ELEMENT* element = slot.New(slot.EnumElements, "enum elements");
  element->name = name;
  element->Value = value;
  owner->Elements.Append(element);
  slot.Index.Add(header, name, BindingKind::kEnumElement, element);
  return element;
}

PROC_TABLE* AttachProcBody(C_SLOT& slot, FUNCPROTO_REC* proto) {
  PROC_TABLE* body = slot.New(slot.ProcTables, "function bodies");
  body->name = proto->name;
  body->Owner = proto;
  body->Line = slot.Place;
  body->LocalsHeader.ParentDataStructureType = PARENT_DATA_STRUCTURE_PROCBODY;
  body->LocalsHeader.Parent = body;
  proto->ProcBody = body;
  return body;
}

CODE_BLOCK* NewCodeBlock(C_SLOT& slot, FUNCPROTO_REC* proto, STATEMENT_BLOCK* statement) {
  CODE_BLOCK* block = slot.New(slot.CodeBlocks, "blocks");
  block->LocalsHeader.ParentDataStructureType = PARENT_DATA_STRUCTURE_CODE_BLOCK;
  block->LocalsHeader.Parent = block;
  block->OwnerFunction = proto;
  block->ParentStatement = statement;
  block->Line = slot.Place;
  if (statement != nullptr) statement->Block = block;
  if (proto != nullptr && proto->ProcBody != nullptr) proto->ProcBody->Blocks.Append(block);
  return block;
}

STATEMENT_BLOCK* NewStatementBlock(C_SLOT& slot, FUNCPROTO_REC* proto, StatementList* list,
                                   CODE_BLOCK* block) {
  STATEMENT_BLOCK* statement = slot.New(slot.StatementBlocks, "statements");
  statement->OwnerFunction = proto;
  statement->ParentCodeBlock = block;
  statement->Line = slot.Place;
  list->Append(statement);
  return statement;
}

STATEMENT_BLOCK* NewDerivedStatementBlock(C_SLOT& slot, STATEMENT_BLOCK* parent, const char* name) {
  STATEMENT_BLOCK* statement =
      NewStatementBlock(slot, parent->OwnerFunction, &parent->ChildStatements, parent->ParentCodeBlock);
  statement->DerivedName = name;
  statement->ParentStatement = parent;
  statement->EnclosingFor = parent->EnclosingFor;
  return statement;
}

void SettleType(C_SLOT& slot, SYM_REC* symbol) {
  symbol->ValueType = symbol->BasicType == Tok::enum_ ? Tok::int_ : symbol->BasicType;
  symbol->TotalDepth = symbol->PointerDepth;
  for (TYPEDEF_REC* record = symbol->Typedef; record != nullptr; record = record->Typedef) {
    symbol->TotalDepth = static_cast<int16_t>(symbol->TotalDepth + record->PointerDepth);
    symbol->StorageType |= record->StorageType & (UNSIGNED_VAR | SHORT_VAR);
    if (record->Function != nullptr) {
      symbol->IsFunctionPointer = true;
      symbol->FunctionPointer = record->Function;
    }
    if (record->Typedef != nullptr) continue;
    symbol->ValueType = record->Enum != nullptr ? Tok::int_ : record->BasicType;
    symbol->Struct = record->Struct;
    symbol->Enum = record->Enum;
  }
  if (symbol->Typedef != nullptr) SetShape(slot, symbol, nullptr, 0);
}

void SetShape(C_SLOT& slot, SYM_REC* symbol, const int64_t* dimensions, int count) {
  // Behind a pointer the array that a typedef stands for is gone.
  ArrayShape rest;
  if (symbol->Typedef != nullptr && symbol->PointerDepth == 0) rest = symbol->Typedef->Shape;
  const int total = count + rest.DimensionCount;
  if (total == 0) return;
  auto* all = static_cast<int64_t*>(slot.Texts.Allocate(static_cast<size_t>(total) * sizeof(int64_t), 8));
  std::copy_n(dimensions, count, all);
  std::copy_n(rest.Dimensions, rest.DimensionCount, all + count);
  symbol->Shape.Dimensions = all;
  symbol->Shape.DimensionCount = static_cast<int16_t>(total);
  symbol->Shape.UnsizedFirstDimension = all[0] == 0;
}

void SupersedePrototype(FUNCPROTO_REC* proto) {
  proto->PrototypeOnly = true;
}

FoundName FindInScope(const C_SLOT& slot, const SYMBOLS_HEADER* header, const Name* name) {
  const Binding* best = nullptr;
  for (const Binding* at = slot.Index.Find(header, name); at != nullptr; at = at->Next) {
    if (SkippedFunction(at)) continue;
    if (best == nullptr || Rank(at) < Rank(best)) best = at;
  }
  if (best == nullptr) return {};
  FoundName result;
  result.Kind = best->Kind;
  result.Record = best->Record;
  return result;
}

FoundName FindLocalIdentifier(const C_SLOT& slot, const FUNCPROTO_REC* proto,
                              const STATEMENT_BLOCK* statement, const CODE_BLOCK* block, const Name* name) {
  if (block == nullptr && statement != nullptr) block = statement->ParentCodeBlock;
  while (statement != nullptr || block != nullptr) {
    const STATEMENT_BLOCK* clause = statement == nullptr ? nullptr : statement->EnclosingFor;
    for (; clause != nullptr; clause = clause->ParentStatement->EnclosingFor) {
      if (clause->Block == nullptr) continue;
      if (auto hit = FindInScope(slot, &clause->Block->LocalsHeader, name)) return hit;
    }
    if (block == nullptr) break;
    if (auto hit = FindInScope(slot, &block->LocalsHeader, name)) return hit;
    statement = block->ParentStatement;
    block = statement == nullptr ? nullptr : statement->ParentCodeBlock;
  }
  if (proto == nullptr) return {};
  if (auto hit = FindInScope(slot, &proto->ParametersHeader, name)) {
    hit.IsParameter = true;
    return hit;
  }
  if (proto->ProcBody == nullptr) return {};
  return FindInScope(slot, &proto->ProcBody->LocalsHeader, name);
}

FoundName FindVisible(const C_SLOT& slot, const FUNCPROTO_REC* proto, const STATEMENT_BLOCK* statement,
                      const CODE_BLOCK* block, const Name* name) {
  if (auto hit = FindLocalIdentifier(slot, proto, statement, block, name)) {
    // A label has its name to itself: it hides no variable and no function.
    const bool label = hit.Symbol() != nullptr && hit.Symbol()->IsLabel;
    const FoundName global = label ? FindInScope(slot, &slot.Globals, name) : FoundName();
    return global ? global : hit;
  }
  if (proto != nullptr && proto->OwnerClass != nullptr) {
    const MemberResult member = FindStructMember(slot, proto->OwnerClass, name);
    FoundName hit;
    if (member.Symbol != nullptr) {
      hit.Kind = BindingKind::kSymbol;
      hit.Record = member.Symbol;
      return hit;
    }
    if (member.Function != nullptr) {
      hit.Kind = BindingKind::kFunction;
      hit.Record = member.Function;
      return hit;
    }
  }
  return FindInScope(slot, &slot.Globals, name);
}

FUNCPROTO_REC* FindFunction(const C_SLOT& slot, const SYMBOLS_HEADER* header, const Name* name) {
  for (const Binding* at = slot.Index.Find(header, name); at != nullptr; at = at->Next) {
    if (at->Kind == BindingKind::kFunction && !SkippedFunction(at))
      return static_cast<FUNCPROTO_REC*>(at->Record);
  }
  return nullptr;
}

FUNCPROTO_REC* FindProgramEntryLabel(const C_SLOT& slot) {
  for (FUNCPROTO_REC* proto : slot.Globals.Functions) {
    if (proto->IsMain && !proto->PrototypeOnly) return proto;
  }
  return nullptr;
}

bool IsExternVariable(const FoundName& result) {
  return result.Symbol() != nullptr && (result.Symbol()->StorageType & EXTERN_VAR) != 0;
}

bool IsNoFunction(const FoundName& result) {
  if (result.Symbol() != nullptr && result.Symbol()->ImplicitExtern) return false;
  return result.Kind != BindingKind::kNone && result.Kind != BindingKind::kFunction;
}

}  // namespace vorc
