#include "base/format.h"
#include "frontend/parser.h"
#include "program/constants.h"
#include "program/layout.h"

namespace vorc {

namespace {

constexpr int16_t kMostPointerLevels = 255;
constexpr size_t kMostDimensions = 128;
constexpr const char* kTooManyDimensions = "Error in array declaration. More than 128 dimensions.";
constexpr int64_t kLargestDimension = INT32_MAX;  // what is too large to hold is told later

struct StorageWord {
  Tok token;
  StorageBit bit;
};
constexpr StorageWord kStorageWords[] = {
    {Tok::const_, CONSTANT_VAR},    {Tok::volatile_, VOLATILE_VAR}, {Tok::static_, STATIC_VAR},
    {Tok::register_, REGISTER_VAR}, {Tok::auto_, AUTO_VAR},         {Tok::extern_, EXTERN_VAR},
};

constexpr TokenList kUnsignedTypes = {Tok::UINT16, Tok::UINT32, Tok::UINT64,  Tok::UINT128,
                                      Tok::UINT8,  Tok::UINT4,  Tok::UINT256, Tok::UCHAR};

struct UnsignedForm {
  Tok word;
  Tok type;
};
// What `unsigned` makes of the word behind it.
constexpr UnsignedForm kUnsignedForms[] = {
    {Tok::char_, Tok::UCHAR},  {Tok::short_, Tok::UINT16},  {Tok::long_, Tok::UINT64},
    {Tok::INT64, Tok::UINT64}, {Tok::INT32, Tok::UINT32},   {Tok::INT16, Tok::UINT16},
    {Tok::INT8, Tok::UINT8},   {Tok::INT128, Tok::UINT128}, {Tok::INT256, Tok::UINT256},
    {Tok::INT4, Tok::UINT4},   {Tok::int_, Tok::int_},
};

bool Reads(const EXPR_NODE* node, const SYM_REC* symbol) {
  for (; node != nullptr; node = node->Next) {
    if (node->Symbol == symbol && node->Token == Tok::IDENTIFIER) return true;
    if (node->Token == Tok::LPAREN && Reads(node->SubExpression, symbol)) return true;
  }
  return false;
}

}  // namespace

bool Parser::AtTypeStart(const Scope& scope) const {
  if (scan_.TokenIn(BasicTypeList) || scan_.TokenIn(StorageList) || scan_.TokenIn(TagList)) return true;
  if (Token() == Tok::void_ || Token() == Tok::enum_) return true;
  if (Token() != Tok::IDENTIFIER) return false;
  if (scope.proc != nullptr) {
    if (auto hit = FindLocalIdentifier(slot_, scope.proc, nullptr, scope.block, scan_.WordName()))
      return hit.IsType();
  }
  return FindInScope(slot_, &slot_.Globals, scan_.WordName()).IsType();
}

bool Parser::ParseSpecifiers(const Scope& scope, TypeSpec* type) {
  bool settled = false;
  bool storage_seen = false;
  while (true) {
    if (scan_.TokenIn(StorageList)) {
      ParseStorageWord(scope, type);
      storage_seen = true;
    } else if (storage_seen && At(Tok::inline_)) {
      Next();
    } else if (settled) {
      return true;
    } else if (scan_.TokenIn(BasicTypeList)) {
      const bool is_unsigned = At(Tok::unsigned_);
      settled = ParseBasicTypeWord(type);
      const bool open = is_unsigned && type->BasicType == Tok::int_ && scope.is_typedef;
      if (open && !scan_.TokenIn(ValidVarList) && !AtDeclaredName()) {
        return Fail(31, "Invalid typedef  '%' declaration.");
      }
    } else if (At(Tok::void_)) {
      type->BasicType = Tok::void_;
      settled = true;
      Next();
    } else if (scan_.TokenIn(TagList)) {
      if (!ParseStructDecl(scope, type)) return false;
      settled = true;
    } else if (At(Tok::enum_)) {
      if (!ParseEnum(scope, type)) return false;
      settled = true;
    } else if (At(Tok::IDENTIFIER) && AtTypeStart(scope)) {
      settled = ParseUserTypeName(scope, type);
    } else if (storage_seen && scan_.TokenIn(ValidVarList)) {
      type->BasicType = Tok::int_;
      return true;
    } else if (At(Tok::IDENTIFIER)) {
      return Fail(0, scope.is_typedef ? "typedef to unknown type"
                                      : Format("'%s' is not a data type", scan_.ClipTok().c_str()));
    } else {
      return Fail(0, "Declaration syntax error.");
    }
  }
}

void Parser::ParseStorageWord(const Scope& scope, TypeSpec* type) {
  for (const StorageWord& word : kStorageWords) {
    if (!At(word.token)) continue;
    const bool misplaced =
        scope.kind == Scope::Kind::kMain && (word.bit == AUTO_VAR || word.bit == REGISTER_VAR);
    if (misplaced) {
      slot_.Error(0, Format("Invalid storage class '%s' for the scope.", std::string(scan_.Word()).c_str()));
    } else {
      type->StorageType |= word.bit;
    }
  }
  Next();
}

bool Parser::ParseBasicTypeWord(TypeSpec* type) {
  Tok word = Token();
  Next();
  // `long long` is one type.
  if (word == Tok::long_ && Accept(Tok::long_)) word = Tok::INT64;
  switch (word) {
    case Tok::unsigned_: ParseUnsignedWord(type); return true;
    case Tok::short_:
      type->BasicType = Tok::INT16;
      type->StorageType |= SHORT_VAR | SIGNED_VAR;
      Accept(Tok::int_);
      return true;
    case Tok::long_:
    case Tok::INT64: Accept(Tok::int_); break;
    default: break;
  }
  type->BasicType = word;
  type->StorageType |= kUnsignedTypes.Has(word) ? UNSIGNED_VAR : SIGNED_VAR;
  return true;
}

void Parser::ParseUnsignedWord(TypeSpec* type) {
  type->BasicType = Tok::int_;
  type->StorageType |= UNSIGNED_VAR;
  for (const UnsignedForm& form : kUnsignedForms) {
    if (!At(form.word)) continue;
    type->BasicType = form.type;
    Next();
    if (form.word == Tok::long_) Accept(Tok::long_);
    if (form.word == Tok::short_ || form.word == Tok::long_ || form.word == Tok::INT64) Accept(Tok::int_);
    return;
  }
}

bool Parser::ParseUserTypeName(const Scope& scope, TypeSpec* type) {
  FoundName found;
  if (scope.proc != nullptr)
    found = FindLocalIdentifier(slot_, scope.proc, nullptr, scope.block, scan_.WordName());
  if (!found) found = FindInScope(slot_, &slot_.Globals, scan_.WordName());
  UseNamedType(found, type);
  Next();
  return true;
}

bool Parser::UseNamedType(const FoundName& found, TypeSpec* type) {
  if (found.Typedef() != nullptr) {
    type->BasicType = Tok::IDENTIFIER;
    type->Typedef = found.Typedef();
  } else if (found.Struct() != nullptr) {
    type->BasicType = found.Struct()->DeclType;
    type->Struct = found.Struct();
  } else if (found.Enum() != nullptr) {
    type->BasicType = Tok::enum_;
    type->Enum = found.Enum();
  }
  return found.IsType();
}

std::string Parser::TypeText(const TypeSpec& type) const {
  if (type.Typedef != nullptr) return type.Typedef->name->c_str();
  return std::string(TokenName(type.BasicType));
}

bool Parser::ParseDeclaration(const Scope& scope, const FunctionTraits& traits) {
  TypeSpec type;
  bool good = ParseSpecifiers(scope, &type);
  const bool tag_only = type.Struct != nullptr || type.Enum != nullptr || type.BasicType == Tok::enum_;
  if (good && tag_only && type.Typedef == nullptr && Accept(Tok::SEMICOLON)) return true;
  if (good && At(Tok::COLON) && scope.kind == Scope::Kind::kMain && type.Struct != nullptr && tag_only) {
    Declarator declarator;
    declarator.name = type.Struct->name;
    declarator.type.BasicType = Tok::void_;
    good = ParseMemberFunctionDefinitions(scope, &declarator, &declarator.function_body);
    if (good && !declarator.function_body) good = Expect(Tok::SEMICOLON, 48, "Missing ';'.");
  } else {
    good = good && ParseDeclarators(scope, type, traits);
  }
  if (!good && scope.kind == Scope::Kind::kMain) Synchronize(Begin(), EofList, DollarListAndFunctionList);
  return good;
}

bool Parser::ParseDeclarators(const Scope& scope, const TypeSpec& type, const FunctionTraits& traits) {
  for (bool first = true;; first = false) {
    const bool starts =
        scan_.TokenIn(ValidVarList) || At(Tok::BITAND) || At(Tok::operator_) || AtDeclaredName();
    if (!starts) return FailMissingName(scope, type, first);
    bool function_body = false;
    if (!ParseBasicTypeDecl(scope, type, traits, &function_body)) return false;
    if (function_body) return true;
    if (Accept(Tok::COMMA)) continue;
    return Accept(Tok::SEMICOLON) || FailMissingSemicolon(scope, type);
  }
}

// The stars of a declarator; a reference counts like a pointer.
void Parser::ParseStars(int16_t* depth) {
  bool told = false;
  for (; At(Tok::STAR) || At(Tok::BITAND) || At(Tok::const_); Next()) {
    if (At(Tok::const_)) continue;
    if (*depth < kMostPointerLevels)
      ++*depth;
    else if (!told)
      told = !Fail(0, Format("More than %d pointer levels.", kMostPointerLevels));
  }
}

bool Parser::FailMissingName(const Scope& scope, const TypeSpec& type, bool first) {
  if (scope.by_name && slot_.IsScript())
    return Fail(45, Format("Invalid variable name: '%s'", scan_.ClipTok().c_str()));
  if (scope.by_name && type.BasicType != Tok::enum_) return Fail(0, "Declaration syntax error.");
  if (type.BasicType == Tok::enum_) return Fail(29, "Unexpected end in declaration of type 'enum'.");
  if (TagList.Has(type.BasicType)) {
    if (struct_defined_) return Fail(14, "Unexpected end of declaration of type 'struct/class'.");
    return first ? Fail(17, "Syntax error in declaration of type 'class/struct'.")
                 : Fail(20, "Unexpected end in declaration of type 'class/struct'.");
  }
  return Fail(48, Format("Unexpected end of declaration of type '%s'", TypeText(type).c_str()));
}

bool Parser::FailMissingSemicolon(const Scope& scope, const TypeSpec& type) {
  if (scope.by_name && slot_.IsScript()) slot_.Error(46, "Unexpected end of declaration.");
  if (scope.by_name && (slot_.IsScript() || type.BasicType != Tok::enum_)) return Fail(0, "Missing ';'.");
  if (type.BasicType == Tok::enum_) return Fail(30, "Missing ';' in declaration of type 'enum'.");
  if (TagList.Has(type.BasicType)) return Fail(19, "Missing ';' in declaration of type 'class/struct'.");
  if (scope.kind == Scope::Kind::kForClause) {
    return Fail(0, Format("Unexpected expression in for clause: '%s'", scan_.ClipTok().c_str()));
  }
  if (scope.kind == Scope::Kind::kBlock)
    return Fail(0, Format("Unexpected symbol '%s'", scan_.ClipTok().c_str()));
  return Fail(48, "Missing ';'.");
}

bool Parser::ParseBasicTypeDecl(const Scope& scope, const TypeSpec& type, const FunctionTraits& traits,
                                bool* function_body) {
  Declarator declarator;
  declarator.type = type;
  ParseStars(&declarator.type.PointerDepth);
  if (At(Tok::LPAREN)) {
    if (!ParseFunctionPointer(scope, &declarator)) return false;
    return true;
  }
  if (At(Tok::operator_)) {
    FunctionTraits kind = traits;
    kind.is_friend |= scope.owner == nullptr;
    if (!ParseOperatorName(&declarator, kind)) return false;
    return ParseFunctionDeclarator(scope, declarator, traits, function_body);
  }
  const bool function_only = scope.owner != nullptr && (traits.is_friend || traits.is_inline);
  if (!AtDeclaredName() && function_only) {
    return Fail(0, Format("Missing function name for the declaration of type '%s'", TypeText(type).c_str()));
  }
  if (!AtDeclaredName() && TagList.Has(type.BasicType)) return Fail(0, "Missing struct variable name");
  if (!AtDeclaredName()) {
    return Fail(0, Format("Missing variable name for the declaration of type '%s'", TypeText(type).c_str()));
  }
  TakeName(&declarator);
  if (function_only && !At(Tok::LPAREN)) return Fail(0, "Missing '(' in friend/inline function declaration");
  if (!ParseNamedDeclarator(scope, &declarator, traits)) return false;
  *function_body = declarator.function_body;
  return true;
}

bool Parser::ParseNamedDeclarator(const Scope& scope, Declarator* declarator, const FunctionTraits& traits) {
  if (At(Tok::COLON) && scope.kind == Scope::Kind::kMain) {
    return ParseMemberFunctionDefinitions(scope, declarator, &declarator->function_body);
  }
  if (At(Tok::LPAREN)) return ParseFunctionDeclarator(scope, *declarator, traits, &declarator->function_body);
  if (At(Tok::LBRACKET) && !ParseArrayDimension(scope, &declarator->dimensions)) return false;
  if (!scope.is_typedef && DisplayPureVirtualVarError(declarator->type)) return false;
  return ParseVariable(scope, declarator, nullptr);
}

bool Parser::DeclareTypedef(const Scope& scope, const Declarator& declarator, FUNCPROTO_REC* function) {
  if (At(Tok::ASSIGN)) return Fail(0, "Can't initialize a typedef");
  if (const FoundName hit = FindInScope(slot_, scope.header, declarator.name)) {
    const bool implicit = hit.Symbol() != nullptr && hit.Symbol()->ImplicitExtern;
    const bool own_tag = (hit.Struct() != nullptr && hit.Struct() == declarator.type.Struct) ||
                         (hit.Enum() != nullptr && hit.Enum() == declarator.type.Enum);
    if (!implicit && !own_tag) ShowConflict(hit, declarator.name, false);
  }
  TYPEDEF_REC* record = CreateTypeDef(slot_, scope.header, declarator.name, declarator.type);
  if (function != nullptr) {
    record->TypeDefType = TYPEDEF_FUNCPROTO_TYPE;
    record->Function = function;
  }
  SYM_REC shaped;
  static_cast<TypeSpec&>(shaped) = declarator.type;
  shaped.name = declarator.name;
  SettleType(slot_, &shaped);
  if (shaped.TotalDepth > kMostPointerLevels) {
    record->PointerDepth = 0;
    return Fail(0, Format("More than %d pointer levels.", kMostPointerLevels));
  }
  if (!ShapeSymbol(&shaped, declarator.dimensions)) return false;
  record->Shape = shaped.Shape;
  return function != nullptr || CheckTypeSize(&shaped);
}

// Gives a symbol the dimensions of its declarator in front of those of its type.
bool Parser::ShapeSymbol(SYM_REC* symbol, const std::vector<int64_t>& dimensions) {
  if (dimensions.empty()) return true;
  const bool behind = symbol->Typedef != nullptr && symbol->PointerDepth == 0;
  const size_t more = behind ? static_cast<size_t>(symbol->Typedef->Shape.DimensionCount) : 0;
  if (dimensions.size() + more > kMostDimensions) return Fail(23, kTooManyDimensions);
  SetShape(slot_, symbol, dimensions.data(), static_cast<int>(dimensions.size()));
  return true;
}

// False after an error if a variable is too large; it goes on as one element then.
bool Parser::CheckTypeSize(SYM_REC* symbol) {
  if (TypeFits(slot_, symbol)) return true;
  for (int i = 0; i < symbol->Shape.DimensionCount; ++i) symbol->Shape.Dimensions[i] = 1;
  return FailTypeSize(symbol->name);
}

bool Parser::FailTypeSize(const Name* name) {
  return Fail(0, Format("The type of '%s' is larger than %lld bytes.", name->c_str(),
                        static_cast<long long>(kLargestType)));
}

bool Parser::ParseVariable(const Scope& scope, Declarator* declarator, FUNCPROTO_REC* function_pointer) {
  if (scope.is_typedef) return DeclareTypedef(scope, *declarator, function_pointer);
  SYM_REC* existing = nullptr;
  const bool dropped = CheckVariableConflict(scope, *declarator, &existing);
  SYM_REC* symbol = existing;
  declarator->room = existing == nullptr ? kLargestType : slot_.Services->RoomOf(existing);
  if (symbol == nullptr) {
    // A dropped declaration is still read to its end, into a symbol that no scope knows.
    SYMBOLS_HEADER aside;
    SYMBOLS_HEADER* header = dropped ? &aside : scope.header;
    symbol = InsertVarName(slot_, header, declarator->name, declarator->type, false);
    DeclareAt(header, symbol, declarator->line);
    const bool is_static = (symbol->StorageType & STATIC_VAR) != 0;
    if (is_static && scope.InFunction() && !dropped) slot_.ProcStatics.push_back(symbol);
  }
  if (function_pointer != nullptr) {
    symbol->IsFunctionPointer = true;
    symbol->FunctionPointer = function_pointer;
  }
  if (!ShapeSymbol(symbol, declarator->dimensions)) return false;
  symbol->MemberType = scope.owner != nullptr ? scope.owner->CurrentMemberAccess : MEMBER_TYPE_NONE;
  const bool is_void =
      symbol->ValueType == Tok::void_ && symbol->TotalDepth == 0 && !symbol->IsFunctionPointer;
  if (is_void) return Fail(48, "Unexpected end of declaration of type 'void'");
  if (symbol->Struct != nullptr && symbol->TotalDepth == 0 && !CompleteStruct(symbol->Struct)) {
    // As a pointer it has a size, and a struct that contains itself has an end.
    symbol->PointerDepth = symbol->TotalDepth = 1;
    return false;
  }
  if (!CheckTypeSize(symbol)) return false;
  if (At(Tok::COLON)) return ParseBitField(*declarator, symbol);
  if (At(Tok::ASSIGN)) return ParseInitialValue(scope, *declarator, symbol);
  if (symbol->Shape.UnsizedFirstDimension && scope.InFunction()) return Fail(0, "Unknown array size.");
  if (!CheckRoom(*declarator, symbol)) return false;
  FinishVariable(scope, symbol);
  return true;
}

void Parser::FinishVariable(const Scope& scope, SYM_REC* symbol) {
  // An `extern` gets its storage where it is defined or used.
  if ((symbol->StorageType & EXTERN_VAR) != 0) return;
  const bool lives_on = scope.kind == Scope::Kind::kMain || (symbol->StorageType & STATIC_VAR) != 0;
  if (lives_on && scope.kind != Scope::Kind::kStruct) slot_.Services->AllocateData(symbol);
}

// True if the new declaration is to be dropped; `existing` is set where it completes an older one.
bool Parser::CheckVariableConflict(const Scope& scope, const Declarator& declarator, SYM_REC** existing) {
  FoundName hit;
  if (scope.InFunction()) {
    hit = FindInScope(slot_, &scope.proc->ParametersHeader, declarator.name);
    hit.IsParameter = static_cast<bool>(hit);
  }
  if (!hit) hit = FindInScope(slot_, scope.header, declarator.name);
  SYM_REC* old = hit.Symbol();
  if (!hit || (old != nullptr && old->ImplicitExtern)) return false;
  const bool is_extern = (declarator.type.StorageType & EXTERN_VAR) != 0;
  if (is_extern && old != nullptr) {
    ShowConflict(hit, declarator.name, true);
    return true;
  }
  if (old != nullptr && IsExternVariable(hit) && !hit.IsParameter) {
    ShowConflict(hit, declarator.name, true);
    old->StorageType &= static_cast<uint16_t>(~EXTERN_VAR);
    *existing = old;
    return false;
  }
  const bool function_pointers = old != nullptr && old->IsFunctionPointer && old->Shape.DimensionCount > 0;
  if (function_pointers && old->FunctionPointer->ReturnType.BasicType != declarator.type.BasicType) {
    slot_.Error(0, Format("Function pointer variable '%s' has duplicate declaration of diffrent return types",
                          declarator.name->c_str()));
  } else if (old != nullptr && old->IsFunctionPointer && declarator.function_pointer) {
    slot_.Error(0, Format("Duplicate declaration function pointer variable '%s'", declarator.name->c_str()));
  } else {
    ShowConflict(hit, declarator.name, false);
  }
  return false;
}

void Parser::ShowConflict(const FoundName& conflict, const Name* name, bool warning) {
  const char* text = name->c_str();
  const SYM_REC* symbol = conflict.Symbol();
  if (warning) return slot_.Warning(Format("Duplicate declaration '%s'", text));
  if (conflict.IsParameter && !(symbol != nullptr && symbol->BasicType == Tok::dollar)) {
    slot_.Error(0, Format("Local variable name conflicts with function parameter name '%s'", text));
  } else if (slot_.IsScript() && symbol != nullptr && symbol->BasicType == Tok::dollar) {
    slot_.Error(
        0, Format("Duplicate declaration '%s': it is already a typeless name here (the $var '$%s', or a "
                  "typeless function's parameter). Declare a typed '%s' before the first '$%s', or rename "
                  "one of them.",
                  text, text, text, text));
  } else {
    slot_.Error(0, Format("Duplicate declaration '%s'", text));
  }
}

bool Parser::CheckRoom(const Declarator& declarator, const SYM_REC* symbol) {
  return GetDeclaredDataSize(slot_, symbol) <= declarator.room ||
         Fail(0, Format("Array '%s' was used before its size was known.", symbol->name->c_str()));
}

bool Parser::ParseInitialValue(const Scope& scope, const Declarator& declarator, SYM_REC* symbol) {
  if (scope.kind == Scope::Kind::kStruct) return Fail(81, "Invalid initializer.");
  Next();
  const bool is_static = (symbol->StorageType & STATIC_VAR) != 0;
  if (scope.InFunction() && !is_static) return ParseLocalValue(scope, symbol);
  if (slot_.IsScript() && scope.kind == Scope::Kind::kMain && symbol->Typedef != nullptr) {
    return ParseScriptValue(declarator, symbol);
  }
  ExprContext context;
  context.proc = scope.proc;
  context.block = scope.block;
  context.constant = true;
  if (!InitializeBasicType(symbol, context) || !CheckRoom(declarator, symbol)) return false;
  symbol->HasInitializer = true;
  slot_.Services->AllocateData(symbol);
  slot_.Services->InitializeData(symbol);
  return true;
}

// A local's initial value is a statement: an assignment, or for arrays and structs one that fills
// the variable from its list.
bool Parser::ParseLocalValue(const Scope& scope, SYM_REC* symbol) {
  STATEMENT_BLOCK* statement = NewStatementBlock(slot_, scope.proc, scope.statements, scope.block);
  const ExprContext context = ContextOf(statement);
  if (IsAggregate(symbol) || At(Tok::LSECONDBRACKET)) {
    statement->Symbol = symbol;
    return InitializeBasicType(symbol, context);
  }
  ExprChain chain;
  AddIdentifier(context, &chain, symbol->name, symbol);
  chain.First->IsLvalue = true;
  if (!AssignmentExpression(context, &chain)) return false;
  if (Reads(chain.First->Next, symbol)) {
    const char* format = scope.kind == Scope::Kind::kBlock
                             ? "Math/Logical opration on an uninitialized variable '%s'"
                             : "Math/Logical operation on an uninitialized variable '%s'";
    slot_.Error(0, Format(format, symbol->name->c_str()));  // NOLINT(clang-diagnostic-format-nonliteral)
  }
  Append(context, &chain, Tok::ASSIGN);
  statement->Expression = chain.First;
  return true;
}

// A script's declaration that starts with a type's name runs like its statements, so its initial
// value may be anything.
bool Parser::ParseScriptValue(const Declarator& declarator, SYM_REC* symbol) {
  const Scope scope = MorvScope();
  const bool good = ParseLocalValue(scope, symbol) && CheckRoom(declarator, symbol);
  // Not before the values have settled how large it is.
  slot_.Services->AllocateData(symbol);
  return good && RunMorvStatement(scope.statements->Last);
}

bool Parser::ParseArrayDimension(const Scope& scope, std::vector<int64_t>* dimensions) {
  while (At(Tok::LBRACKET)) {
    Next();
    if (dimensions->size() == kMostDimensions) return Fail(23, kTooManyDimensions);
    if (At(Tok::RBRACKET))
      dimensions->push_back(0);
    else
      dimensions->push_back(EvalArrayDimensionExpression(scope));
    if (!Expect(Tok::RBRACKET, 23, "Error in array declaration. Missing ']'.")) return false;
  }
  return true;
}

int64_t Parser::EvalArrayDimensionExpression(const Scope& scope) {
  ExprContext context;
  context.proc = scope.proc;
  context.block = scope.block;
  context.constant = true;
  EXPR_NODE* head = nullptr;
  int64_t size = 0;
  if (!ParseFullExpression(context, &head)) return 1;
  if (!EvalConstantInteger(slot_, head, &size) || size < 1 || size > kLargestDimension) {
    slot_.Error(25, "Error in array declaration. The size must be a positive constant.");
    return 1;
  }
  return size;
}

bool Parser::ParseTypeDef(const Scope& outer) {
  Scope scope = outer;
  scope.is_typedef = true;
  Next();
  const bool starts = scan_.TokenIn(ValidTypeDefList) || scan_.TokenIn(BasicTypeList);
  const bool good = starts ? ParseDeclaration(scope) : Fail(0, "Syntax error in declaration of 'typedef'.");
  if (!good && outer.kind == Scope::Kind::kMain) Synchronize(Begin(), EofList);
  return good;
}

bool Parser::ParseFunctionPointer(const Scope& scope, Declarator* declarator) {
  Next();
  if (!Expect(Tok::STAR, 0, "Missing '*' in function pointer declaration .")) return false;
  while (Accept(Tok::STAR)) {
  }
  if (!AtDeclaredName()) return Fail(0, "Missing variable name in function pointer declaration .");
  TakeName(declarator);
  if (At(Tok::LBRACKET)) {
    if (scope.is_typedef) return Fail(0, "Typedef'd array of function pointers is not supported.");
    if (!ParseArrayDimension(scope, &declarator->dimensions)) return false;
  }
  if (!Expect(Tok::RPAREN, 0, "Missing ')' in function pointer declaration .")) return false;
  if (!At(Tok::LPAREN)) return Fail(0, "Missing '(' in function pointer declaration .");
  FUNCPROTO_REC* proto = InsertFuncName(slot_, nullptr, declarator->name, declarator->type);
  proto->Line = declarator->line;
  if (!ParseProcedureArgs(proto, scope)) return false;
  declarator->function_pointer = true;
  return ParseVariable(scope, declarator, proto);
}

bool Parser::ParseBitField(const Declarator& declarator, SYM_REC* symbol) {
  const std::string type = TypeText(declarator.type);
  const bool plain = symbol->TotalDepth == 0 && symbol->Shape.DimensionCount == 0;
  if (!plain || !ValidBitFieldType.Has(ExtractType(*symbol))) {
    return Fail(0, Format("Bit field not supported in the declaration of type '%s'", type.c_str()));
  }
  Next();
  if (!At(Tok::NUMBER) && !At(Tok::HEXNUMBER)) {
    return Fail(0, Format("Missing Bit field size in the declaration of type '%s'", type.c_str()));
  }
  const long width = std::strtol(scan_.WordText().c_str(), nullptr, 0);
  if (symbol->OwnerStruct == nullptr || width < 1 || width > 8L * GetObjectSize(slot_, symbol)) {
    return Fail(0, Format("Bit field not supported in the declaration of type '%s'", type.c_str()));
  }
  symbol->BitFieldWidth = static_cast<int32_t>(width);
  Next();
  return true;
}

bool Parser::ParseEnum(const Scope& scope, TypeSpec* type) {
  Next();
  type->BasicType = Tok::enum_;
  Name* tag = slot_.Names.Intern("");
  ENUM_REC* known = nullptr;
  if (AtName()) {
    tag = scan_.WordName();
    FoundName found = FindVisible(slot_, scope.proc, nullptr, scope.block, tag);
    known = found.Enum();
    Next();
  }
  if (!At(Tok::LSECONDBRACKET)) {
    if (known == nullptr) return Fail(26, "Syntax error in enum declaration.");
    type->Enum = known;
    return true;
  }
  if (known != nullptr) slot_.Error(31, "Duplicate enum type '%' declaration.");
  type->Enum = CreateEnumRecord(slot_, scope.TagHeader(), tag);
  const SourceLine opened = scan_.Place();
  Next();
  return ParseEnumBody(scope, type->Enum, opened);
}

bool Parser::ParseEnumBody(const Scope& scope, ENUM_REC* record, SourceLine opened) {
  int64_t value = 0;
  while (AtDeclaredName()) {
    Name* name = scan_.WordName();
    if (FindInScope(slot_, scope.TagHeader(), name)) slot_.Error(31, "Duplicate declaration of '%' .");
    Next();
    if (Accept(Tok::ASSIGN)) {
      ExprContext context;
      context.proc = scope.proc;
      context.block = scope.block;
      context.constant = true;
      EXPR_NODE* head = nullptr;
      if (!ParseFullExpression(context, &head)) return false;
      if (!EvalConstantInteger(slot_, head, &value)) return Fail(27, "Syntax error in enum declaration.");
    }
    InsertEnumItem(slot_, scope.TagHeader(), record, name, value++);
    if (!Accept(Tok::COMMA)) break;
  }
  return ExpectBrace(opened, 28, "Missing '}' in enum declaration.");
}

}  // namespace vorc
