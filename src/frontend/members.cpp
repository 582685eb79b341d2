#include <cstdlib>

#include "base/format.h"
#include "frontend/parser.h"
#include "program/layout.h"
#include "program/overloads.h"

namespace vorc {

namespace {

struct AccessWord {
  Tok token;
  MemberKind kind;
  const char* missing_colon;
};
// The third text names `public` on purpose: it is what users know.
constexpr AccessWord kAccessWords[] = {
    {Tok::public_, MEMBER_TYPE_PUBLIC, "Missing ':' after keyword public"},
    {Tok::private_, MEMBER_TYPE_PRIVATE, "Missing ':' after keyword private"},
    {Tok::protected_, MEMBER_TYPE_PROTECTED, "Missing ':' after keyword public"},
};

constexpr TokenList kPrefixes = {Tok::friend_, Tok::virtual_, Tok::inline_};

}  // namespace

bool Parser::ParseStructMembers(const Scope& scope, STRUCT_REC* record) {
  TypeSpec self;
  self.BasicType = Tok::this_;
  self.Struct = record;
  record->This = InsertVarName(slot_, &record->MembersHeader, slot_.Names.Intern("this"), self, false);
  record->CurrentMemberAccess = record->DeclType == Tok::class_ ? MEMBER_TYPE_PRIVATE : MEMBER_TYPE_PUBLIC;
  Scope members;
  members.kind = Scope::Kind::kStruct;
  members.header = &record->MembersHeader;
  members.tags = scope.TagHeader();
  members.proc = scope.proc;
  members.block = scope.block;
  members.owner = record;
  while (!At(Tok::RSECONDBRACKET)) {
    if (At(Tok::END_OF_FILE)) return Fail(38, "Unexpected end-of-file..");
    const ScanPosition position = scan_.Position();
    if (!ParseMember(members, record)) Synchronize(StructBodyList, EofProcList);
    if (scan_.Position() == position && !At(Tok::RSECONDBRACKET) && !At(Tok::END_OF_FILE)) Next();
  }
  return true;
}

bool Parser::ParseAccessWord(STRUCT_REC* record, bool* seen) {
  for (const AccessWord& word : kAccessWords) {
    if (!At(word.token)) continue;
    *seen = true;
    Next();
    record->CurrentMemberAccess = word.kind;
    return Expect(Tok::COLON, 33, word.missing_colon);
  }
  return true;
}

bool Parser::ParseMember(const Scope& members, STRUCT_REC* record) {
  bool access = false;
  if (!ParseAccessWord(record, &access)) return false;
  if (access) return true;
  switch (Token()) {
    case Tok::SEMICOLON: Next(); return true;
    case Tok::typedef_:
      slot_.Error(41, "'typedef' not supported within struct/class/union.");
      Next();
      return true;
    default: break;
  }
  FunctionTraits traits;
  ParseMemberPrefix(&traits);
  if (traits.is_friend && scan_.TokenIn(TagList)) {
    const bool is_class = LookAhead([&] {
      Peek();
      if (!AtName()) return false;
      Peek();
      return At(Tok::SEMICOLON);
    });
    if (is_class) return ParseFriendClass(members, record);
  }
  if (At(Tok::TILDA)) {
    Next();
    if (scan_.WordName() != record->name) {
      return Fail(33, Format("'%s' is not valid destructor.", scan_.ClipTok().c_str()));
    }
    Next();
    return ParseConstructorOrDestructor(members, record, true, traits);
  }
  if (At(Tok::IDENTIFIER) && scan_.WordName() == record->name) {
    const bool made = LookAhead([&] {
      Peek();
      return At(Tok::LPAREN);
    });
    if (made) {
      Next();
      return ParseConstructorOrDestructor(members, record, false, traits);
    }
  }
  if (!AtTypeStart(members)) {
    if (At(Tok::IDENTIFIER)) return Fail(0, Format("'%s' is not a data type", scan_.ClipTok().c_str()));
    return false;
  }
  return ParseDeclaration(members, traits);
}

// `class B;` behind `friend`.
bool Parser::ParseFriendClass(const Scope& members, STRUCT_REC* record) {
  const Tok kind = Token();
  Next();
  Name* name = scan_.WordName();
  Next();
  STRUCT_REC* home = FindInScope(slot_, members.TagHeader(), name).Struct();
  if (home == nullptr) home = InsertNewStruct(slot_, members.TagHeader(), name, kind, 0);
  record->FriendClasses.Append(slot_.Texts.New<FRIEND_NODE>(home));
  Next();
  return true;
}

void Parser::ParseMemberPrefix(FunctionTraits* traits) {
  while (scan_.TokenIn(kPrefixes)) {
    bool* flag = At(Tok::friend_)    ? &traits->is_friend
                 : At(Tok::virtual_) ? &traits->is_virtual
                                     : &traits->is_inline;
    if (*flag) slot_.Error(0, Format("Keyword '%s' has already been used.", scan_.WordText().c_str()));
    *flag = true;
    if (traits->is_friend && traits->is_virtual)
      slot_.Error(0, "Virtual function cannot be a friend function");
    Next();
  }
}

bool Parser::ParseConstructorOrDestructor(const Scope& members, STRUCT_REC* record, bool destructor,
                                          const FunctionTraits& traits) {
  FUNCPROTO_REC*& known = destructor ? record->Destructor : record->Constructor;
  if (known != nullptr) {
    slot_.Error(33, Format(destructor ? "Struct/Class '%s' already has a destructor declared."
                                      : "Struct/Class '%s' already has a constructor declared.",
                           record->name->c_str()));
  }
  if (!At(Tok::LPAREN)) return Fail(35, "Missing '(' in constructor function declaration.");
  TypeSpec type;
  type.BasicType = Tok::void_;
  Name* name = record->name;
  if (destructor) name = slot_.Names.Intern(std::string("~").append(record->name->Text));
  FUNCPROTO_REC* proto = InsertFuncName(slot_, &record->MembersHeader, name, type);
  proto->IsConstructor = !destructor;
  proto->IsDestructor = destructor;
  proto->IsVirtual = traits.is_virtual;
  proto->IsInline = traits.is_inline;
  proto->MemberType = record->CurrentMemberAccess;
  if (!ParseProcedureArgs(proto, members)) return false;
  const SYM_REC* first = proto->ParametersHeader.Symbols.First;
  if (destructor && proto->ParameterCount > 0 && first->BasicType != Tok::void_) {
    slot_.Error(0, "Error in destructor function declaration. Must be void type");
  } else if (!destructor && first != nullptr && (first->TotalDepth > 0 || first->Shape.DimensionCount > 0)) {
    slot_.Error(0, "Error in constructor function declaration. Must be void type");
  }
  if (known != nullptr)
    SupersedePrototype(proto);
  else
    known = proto;
  if (At(Tok::LSECONDBRACKET)) return ParseProcedureBody(proto);
  return Expect(Tok::SEMICOLON, 48, "Missing ';'.");
}

// `operator` and its sign; the function is named for both.
bool Parser::ParseOperatorName(Declarator* declarator, const FunctionTraits& traits) {
  declarator->line = scan_.Place();
  Next();
  const Tok op = Token();
  if (!OverloadableOperators.Has(op)) {
    return Fail(0, Format(traits.is_friend ? "Invalid friend function for operator '%s'"
                                           : "Invalid function for operator '%s'",
                          scan_.ClipTok().c_str()));
  }
  std::string name = "operator" + std::string(TokenName(op));
  Next();
  if (op == Tok::LBRACKET && !Expect(Tok::RBRACKET, 0, "Missing ']' in operator[] declaration."))
    return false;
  if (op == Tok::LPAREN && !Expect(Tok::RPAREN, 0, "Missing ')' in operator() declaration.")) return false;
  if ((op == Tok::new_ || op == Tok::delete_) && Accept(Tok::LBRACKET)) {
    if (!Expect(Tok::RBRACKET, 0, "Missing ']' in operator new[]/delete[] declaration.")) return false;
    name += "[]";
  }
  declarator->name = slot_.Names.Intern(name);
  return At(Tok::LPAREN) || Fail(0, "Missing '(' in operator declaration.");
}

// Behind the parameters of a member function: `= 0`, a body or nothing.
bool Parser::ParsePureOrBody(const Scope& scope, FUNCPROTO_REC* proto, bool* function_body) {
  const char* name = proto->name->c_str();
  proto->MemberType = scope.owner->CurrentMemberAccess;
  if (Accept(Tok::ASSIGN)) {
    const bool zero = At(Tok::NUMBER) && std::strtol(scan_.WordText().c_str(), nullptr, 10) == 0;
    if (!zero) return Fail(0, "Error in defining pure a virtual function, must be set to zero");
    Next();
    if (!proto->IsVirtual) slot_.Error(0, Format("'%s' is not a virtual function", name));
    proto->PureVirtual = true;
    if (At(Tok::LSECONDBRACKET)) {
      slot_.Error(0, Format("Attempting to define pure virtual function '%s'", name));
      SkipToMatchingBrace();
      *function_body = true;
    } else if (!At(Tok::SEMICOLON)) {
      return Fail(0, Format("Missing ';' in declaring pure vitual function '%s'", name));
    }
  }
  const bool defining = At(Tok::LSECONDBRACKET);
  for (const FUNCPROTO_REC* other : scope.header->Functions) {
    const bool repeats = other != proto && other->name == proto->name && other->IsVirtual &&
                         proto->IsVirtual && !other->PrototypeOnly && CompareParams(other, proto) == 0;
    if (repeats) slot_.Error(0, Format("Duplicate declaration of virtual function '%s'", name));
  }
  proto = SettleOverload(scope.header, proto, defining);
  if (!defining) return true;
  *function_body = true;
  return ParseProcedureBody(proto);
}

bool Parser::ParseFriend(FUNCPROTO_REC* proto, STRUCT_REC* record, bool* function_body) {
  if (!ParseProcedureArgs(proto, MainScope())) return false;
  if (At(Tok::LSECONDBRACKET)) {
    slot_.Error(0, "Body of a friend function can not be defined inside class/struct body");
    SkipToMatchingBrace();
    *function_body = true;
  }
  InsertFriendOf(SettleOverload(&slot_.Globals, proto, false), record);
  return true;
}

void Parser::InsertFriendOf(FUNCPROTO_REC* proto, STRUCT_REC* record) {
  proto->FriendOf.Append(slot_.Texts.New<FRIEND_NODE>(record));
}

// `type Class::member(...)`, with the first `:` current.
bool Parser::ParseMemberFunctionDefinitions(const Scope&, Declarator* declarator, bool* function_body) {
  Next();
  if (!At(Tok::COLON) || !scan_.Touching()) {
    return Fail(0, Format("Bit field not supported in the declaration of type '%s'",
                          TypeText(declarator->type).c_str()));
  }
  Next();
  const FoundName found = FindInScope(slot_, &slot_.Globals, declarator->name);
  const char* class_name = declarator->name->c_str();
  if (!found) return Fail(0, Format("Undeclared type '%s'.", class_name));
  STRUCT_REC* record = found.Struct();
  if (found.Typedef() != nullptr) record = found.Typedef()->Struct;
  if (record == nullptr) return Fail(0, Format("'%s' is not a class or struct.", class_name));
  const bool destructor = Accept(Tok::TILDA);
  if (At(Tok::operator_)) {
    if (!ParseOperatorName(declarator, {})) return false;
  } else {
    if (scan_.WordName() == nullptr)
      return Fail(0, Format("'%s' is not a member of %s.", scan_.ClipTok().c_str(), class_name));
    TakeName(declarator);
  }
  if (destructor) {
    if (declarator->name != record->name) {
      return Fail(0, Format("'%s' is not a valid destructor for class or struct '%s'.",
                            declarator->name->c_str(), class_name));
    }
    declarator->name = slot_.Names.Intern(std::string("~").append(record->name->Text));
  }
  return DefineMemberFunction(record, *declarator, destructor, function_body);
}

bool Parser::DefineMemberFunction(STRUCT_REC* record, const Declarator& declarator, bool destructor,
                                  bool* function_body) {
  const char* name = declarator.name->c_str();
  const FoundName member = FindInScope(slot_, &record->MembersHeader, declarator.name);
  if (!member) return Fail(0, Format("'%s' is not a member of %s.", name, record->name->c_str()));
  if (member.Function() == nullptr) return Fail(0, Format("'%s' is not a function", name));
  if (!At(Tok::LPAREN)) return Fail(0, "Missing '('");
  const FUNCPROTO_REC* known = member.Function();
  const bool made = destructor || declarator.name == record->name;
  const bool same_type = ExtractType(known->ReturnType) == ExtractType(declarator.type) &&
                         known->ReturnType.PointerDepth == declarator.type.PointerDepth;
  if (!made && !same_type) {
    return Fail(0, Format("member '%s' has been declared with different return type", name));
  }
  FUNCPROTO_REC* proto = InsertFuncName(slot_, &record->MembersHeader, declarator.name, known->ReturnType);
  proto->Line = declarator.line;
  if (!ParseProcedureArgs(proto, MainScope())) return false;
  if (Accept(Tok::const_)) proto->IsConst = true;
  FUNCPROTO_REC* declared = nullptr;
  for (FUNCPROTO_REC* other : record->MembersHeader.Functions) {
    const bool same = other != proto && other->name == proto->name && !other->PrototypeOnly;
    if (same && CompareParams(other, proto) == 0) declared = other;
  }
  if (declared == nullptr) {
    SupersedePrototype(proto);
    return Fail(0, Format("'%s' is not a member of %s.", name, record->name->c_str()));
  }
  proto->MemberType = declared->MemberType;
  proto->IsVirtual = declared->IsVirtual;
  proto->IsConstructor = declared->IsConstructor;
  proto->IsDestructor = declared->IsDestructor;
  if (declared->PureVirtual) slot_.Error(0, Format("Attempting to define pure virtual function '%s'", name));
  if (!At(Tok::LSECONDBRACKET)) {
    SupersedePrototype(proto);
    return true;
  }
  proto = SettleOverload(&record->MembersHeader, proto, true);
  if (record->Constructor == declared) record->Constructor = proto;
  if (record->Destructor == declared) record->Destructor = proto;
  *function_body = true;
  return ParseProcedureBody(proto);
}

}  // namespace vorc
