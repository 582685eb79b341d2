#include "base/format.h"
#include "frontend/parser.h"
#include "program/layout.h"
#include "program/overloads.h"

namespace vorc {

namespace {

const SYM_REC* ArgumentWithoutName(const FUNCPROTO_REC* proto, int* position) {
  *position = 0;
  for (const SYM_REC* parameter : proto->ParametersHeader.Symbols) {
    ++*position;
    const bool is_void = parameter->BasicType == Tok::void_ && parameter->PointerDepth == 0;
    if (parameter->name->Text.empty() && !is_void) return parameter;
  }
  return nullptr;
}

constexpr TokenList kBehindArgumentType = {Tok::COMMA,  Tok::RPAREN, Tok::STAR,    Tok::BITAND,
                                           Tok::LPAREN, Tok::const_, Tok::LBRACKET};

bool SameReturnType(const FUNCPROTO_REC* a, const FUNCPROTO_REC* b) {
  return a->ReturnType.BasicType == b->ReturnType.BasicType &&
         a->ReturnType.PointerDepth == b->ReturnType.PointerDepth;
}

}  // namespace

bool Parser::ParseFunctionDeclarator(const Scope& scope, const Declarator& declarator,
                                     const FunctionTraits& traits, bool* function_body) {
  if (scope.is_typedef) {
    FUNCPROTO_REC* proto = InsertFuncName(slot_, nullptr, declarator.name, declarator.type);
    return ParseProcedureArgs(proto, scope) && DeclareTypedef(scope, declarator, proto);
  }
  const bool as_friend = traits.is_friend && scope.owner != nullptr;
  SYMBOLS_HEADER* header = as_friend ? &slot_.Globals : scope.header;
  const FoundName clash = FindInScope(slot_, header, declarator.name);
  if (IsNoFunction(clash)) ShowConflict(clash, declarator.name, false);
  FUNCPROTO_REC* proto = InsertFuncName(slot_, header, declarator.name, declarator.type);
  proto->Line = declarator.line;
  proto->IsInline = traits.is_inline;
  proto->IsVirtual = traits.is_virtual;
  if (as_friend) return ParseFriend(proto, scope.owner, function_body);
  return ParseBasicProcedure(scope, proto, function_body);
}

bool Parser::ParseBasicProcedure(const Scope& scope, FUNCPROTO_REC* proto, bool* function_body) {
  if (!ParseProcedureArgs(proto, scope)) {
    SupersedePrototype(proto);
    return false;
  }
  if (Accept(Tok::const_)) proto->IsConst = true;
  if (scope.kind == Scope::Kind::kStruct) return ParsePureOrBody(scope, proto, function_body);
  const bool defining = At(Tok::LSECONDBRACKET);
  if (defining && scope.InFunction()) {
    slot_.Error(0, "Defining procedure within a procedure body is not allowed.");
    SupersedePrototype(proto);
    SkipToMatchingBrace();
    *function_body = true;
    return true;
  }
  proto = SettleOverload(scope.header, proto, defining);
  if (defining) {
    *function_body = true;
    return ParseProcedureBody(proto);
  }
  if (At(Tok::SEMICOLON)) {
    const int depth = scan_.IncludeDepth();
    const bool body = scope.kind == Scope::Kind::kMain && LookAhead([&] {
                        Peek();
                        return At(Tok::LSECONDBRACKET) && scan_.IncludeDepth() == depth;
                      });
    if (body) slot_.Error(22, Format("Definition of '%s' ends with ';'", proto->name->c_str()));
  }
  return true;
}

// Links a new function to the others of its name. Of two equal signatures one stays.
FUNCPROTO_REC* Parser::SettleOverload(SYMBOLS_HEADER* header, FUNCPROTO_REC* proto, bool defining) {
  FUNCPROTO_REC* last = nullptr;
  for (const Binding* at = slot_.Index.Find(header, proto->name); at != nullptr; at = at->Next) {
    auto* other = static_cast<FUNCPROTO_REC*>(at->Record);
    if (at->Kind != BindingKind::kFunction || other == proto || other->PrototypeOnly) continue;
    // Who types a function again wants the new one.
    if (slot_.Target.typed && defining && CompareParams(other, proto) == 0) {
      SupersedePrototype(other);
      continue;
    }
    if (!SameReturnType(other, proto)) {
      slot_.Error(22, Format("Overloaded function '%s' already defined with different return type",
                             proto->name->c_str()));
      return proto;
    }
    if (CompareParams(other, proto) != 0) {
      last = other;
      continue;
    }
    if (!defining) {
      SupersedePrototype(proto);
      return other;
    }
    if (other->ProcBody != nullptr) {
      slot_.Error(22, Format("Function '%s' already defined", proto->name->c_str()));
      return proto;
    }
    proto->FirstOverload = other->FirstOverload == other ? nullptr : other->FirstOverload;
    for (const FRIEND_NODE* node : other->FriendOf) InsertFriendOf(proto, node->Struct);
    SupersedePrototype(other);
  }
  if (last != nullptr) {
    proto->IsOverload = true;
    proto->FirstOverload = last->FirstOverload != nullptr ? last->FirstOverload : last;
    last->NextOverload = proto;
  }
  return proto;
}

bool Parser::ParseProcedureBody(FUNCPROTO_REC* proto) {
  int position = 0;
  if (ArgumentWithoutName(proto, &position) != nullptr) {
    slot_.Error(22, Format("Parameter %d, missing parameter name.", position));
  }
  if (proto->ProcBody != nullptr) slot_.Error(21, "Fucntion already has a body");
  AttachProcBody(slot_, proto);
  Next();
  ParseProcBody(proto);
  proto->ProcBody->EndLine = scan_.Place();
  return ExpectBrace(proto->ProcBody->Line, 0, "Missing '}'");
}

void Parser::InsertVoidArgument(FUNCPROTO_REC* proto, bool counted) {
  TypeSpec type;
  type.BasicType = Tok::void_;
  InsertVarName(slot_, &proto->ParametersHeader, slot_.Names.Intern(""), type, true);
  if (counted) proto->ParameterCount = 1;
}

bool Parser::ParseProcedureArgs(FUNCPROTO_REC* proto, const Scope& scope) {
  Next();
  if (Accept(Tok::RPAREN)) {
    InsertVoidArgument(proto, false);
    return true;
  }
  while (!At(Tok::RPAREN)) {
    const bool starts = scan_.TokenIn(ArgumentTypesList) || scan_.TokenIn(BasicTypeList);
    if (!starts) return Fail(0, "Error in procedure argument declaration.");
    if (!InsertArgument(proto, scope)) return false;
    if (!Accept(Tok::COMMA)) break;
  }
  return Expect(Tok::RPAREN, 0, "Missing ')' .");
}

bool Parser::ParseVarArgs(FUNCPROTO_REC* proto) {
  int dots = 0;
  for (; At(Tok::DOT); ++dots) Next();
  if (dots < 3) return Fail(0, "Too less  '.' in the function arguments list");
  if (dots > 3) return Fail(0, "Too many '.' in the function arguments list");
  proto->HasVarArgs = true;
  return true;
}

// A parameter's type: in scripts also `$`, or nothing in front of a bare name.
bool Parser::ParseArgumentType(const Scope& scope, TypeSpec* type) {
  const bool plain_name = slot_.IsScript() && At(Tok::IDENTIFIER) && !AtTypeStart(scope);
  if (At(Tok::dollar) || plain_name) {
    type->BasicType = Tok::dollar;
    type->StorageType = DOLLAR_VAR;
    Accept(Tok::dollar);
  } else {
    Scope types = scope;
    types.kind = scope.kind == Scope::Kind::kMain ? Scope::Kind::kBlock : scope.kind;
    const bool is_unsigned = At(Tok::unsigned_);
    if (!ParseSpecifiers(types, type)) return false;
    if (is_unsigned && !scan_.TokenIn(kBehindArgumentType) && !AtDeclaredName()) {
      return Fail(0, "Missing parameter name for the declaration of type 'unsigned'");
    }
  }
  ParseStars(&type->PointerDepth);
  return true;
}

// `(* name)(args)`; the name may be missing.
FUNCPROTO_REC* Parser::ParseFuncPtrArgument(const Scope& scope, Declarator* declarator) {
  Next();
  if (!Expect(Tok::STAR, 0, "Missing '*' in function pointer declaration .")) return nullptr;
  if (AtDeclaredName()) TakeName(declarator);
  if (!Expect(Tok::RPAREN, 0, "Missing ')' in function pointer declaration .")) return nullptr;
  if (!At(Tok::LPAREN)) {
    slot_.Error(0, "Missing '(' in function pointer declaration .");
    return nullptr;
  }
  FUNCPROTO_REC* function = InsertFuncName(slot_, nullptr, declarator->name, declarator->type);
  return ParseProcedureArgs(function, scope) ? function : nullptr;
}

bool Parser::InsertArgument(FUNCPROTO_REC* proto, const Scope& scope) {
  if (At(Tok::DOT)) return ParseVarArgs(proto);
  Declarator declarator;
  declarator.name = slot_.Names.Intern("");
  if (!ParseArgumentType(scope, &declarator.type)) return false;
  FUNCPROTO_REC* function_pointer = nullptr;
  if (At(Tok::LPAREN)) {
    function_pointer = ParseFuncPtrArgument(scope, &declarator);
    if (function_pointer == nullptr) return false;
  } else {
    if (AtDeclaredName()) TakeName(&declarator);
  }
  if (At(Tok::LBRACKET) && !ParseArrayDimension(scope, &declarator.dimensions)) return false;
  // A list that just isn't closed is the caller's to report.
  const bool open_end = At(Tok::LSECONDBRACKET) || At(Tok::SEMICOLON) || At(Tok::END_OF_FILE);
  if (!At(Tok::COMMA) && !At(Tok::RPAREN) && !open_end) return Fail(0, "Invalid argument parameter");
  const bool is_void = declarator.type.BasicType == Tok::void_ && declarator.type.PointerDepth == 0;
  if (is_void && function_pointer == nullptr && declarator.name->Text.empty()) {
    InsertVoidArgument(proto, true);
    return true;
  }
  DeclareArgument(proto, declarator, function_pointer);
  return true;
}

void Parser::DeclareArgument(FUNCPROTO_REC* proto, const Declarator& declarator,
                             FUNCPROTO_REC* function_pointer) {
  if (!declarator.name->Text.empty() && FindInScope(slot_, &proto->ParametersHeader, declarator.name)) {
    slot_.Error(0, Format("Duplicate parameter declaration '%s'", declarator.name->c_str()));
  }
  const STRUCT_REC* record = declarator.type.Struct;
  const bool by_value = declarator.type.PointerDepth == 0 && function_pointer == nullptr;
  if (record != nullptr && by_value && record->IsForwardDeclared && record->This == nullptr) {
    slot_.Error(0, Format("'%s' is not class/struct/union", record->name->c_str()));
  }
  SYM_REC* symbol = InsertVarName(slot_, &proto->ParametersHeader, declarator.name, declarator.type, true);
  if (!declarator.name->Text.empty()) DeclareAt(&proto->ParametersHeader, symbol, declarator.line);
  if (function_pointer != nullptr) {
    symbol->IsFunctionPointer = true;
    symbol->FunctionPointer = function_pointer;
  }
  if (ShapeSymbol(symbol, declarator.dimensions)) CheckTypeSize(symbol);
  ++proto->ParameterCount;
}

bool Parser::ParseFunctionSubroutineNamed(SYMBOLS_HEADER* header) {
  const Tok word = Token();
  const std::string text(TokenName(word));
  Next();
  if (!AtName()) {
    slot_.Error(0, Format("Missing %s name after '%s' - expected '%s name(param1,param2,...) { ... }'.",
                          text.c_str(), text.c_str(), text.c_str()));
    SkipToSemicolon();
    return false;
  }
  Declarator declarator;
  declarator.type.BasicType = Tok::dollar;
  declarator.type.StorageType = DOLLAR_VAR;
  TakeName(&declarator);
  if (!At(Tok::LPAREN)) {
    slot_.Error(0, Format("Missing '(' after %s name '%s'.", text.c_str(), declarator.name->c_str()));
    SkipToSemicolon();
    return false;
  }
  const FoundName clash = FindInScope(slot_, header, declarator.name);
  if (IsNoFunction(clash)) ShowConflict(clash, declarator.name, false);
  FUNCPROTO_REC* proto = InsertFuncName(slot_, header, declarator.name, declarator.type);
  proto->Line = declarator.line;
  proto->DefinedBy = word;
  Scope scope = MainScope();
  scope.header = header;
  bool function_body = false;
  const bool good = ParseBasicProcedure(scope, proto, &function_body);
  if (good && !function_body) return Expect(Tok::SEMICOLON, 48, "Missing ';'.");
  return good;
}

}  // namespace vorc
