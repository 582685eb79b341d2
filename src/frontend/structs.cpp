#include "base/format.h"
#include "frontend/parser.h"
#include "program/layout.h"
#include "program/members.h"

namespace vorc {

namespace {

constexpr int32_t kMostBases = 1000;

constexpr TokenList kAccessWords = {Tok::public_, Tok::private_, Tok::protected_};

InheritanceKind AccessOf(Tok word, Tok kind) {
  switch (word) {
    case Tok::public_: return INHERITANCE_TYPE_PUBLIC;
    case Tok::private_: return INHERITANCE_TYPE_PRIVATE;
    case Tok::protected_: return INHERITANCE_TYPE_PROTECTED;
    default: return kind == Tok::class_ ? INHERITANCE_TYPE_PRIVATE : INHERITANCE_TYPE_PUBLIC;
  }
}

}  // namespace

bool Parser::ParseStructDecl(const Scope& scope, TypeSpec* type) {
  const Nesting nesting(*this);
  if (!nesting) return false;
  const Tok kind = Token();
  type->BasicType = kind;
  struct_defined_ = false;
  Next();
  Name* tag = slot_.Names.Intern("");
  if (AtDeclaredName()) {
    tag = scan_.WordName();
    Next();
    if (!At(Tok::LSECONDBRACKET) && !At(Tok::COLON)) {
      const FoundName found = FindVisible(slot_, scope.proc, nullptr, scope.block, tag);
      type->Struct = found.Struct();
      if (found.Typedef() != nullptr) type->Struct = found.Typedef()->Struct;
      if (type->Struct == nullptr && At(Tok::SEMICOLON) && found) {
        return Fail(0, Format("Duplicate definition of symbol '%s'", tag->c_str()));
      }
      if (type->Struct == nullptr)
        type->Struct = InsertNewStruct(slot_, scope.TagHeader(), tag, kind, type->StorageType);
      type->BasicType = type->Struct->DeclType;
      return true;
    }
  } else if (!At(Tok::LSECONDBRACKET)) {
    return Fail(18, "Syntax error in declaration of type 'class/struct'.");
  }
  type->Struct = StructForDefinition(scope, tag, kind);
  if (type->Struct == nullptr) {
    while (!At(Tok::LSECONDBRACKET) && !At(Tok::SEMICOLON) && !At(Tok::END_OF_FILE)) Next();
    if (At(Tok::LSECONDBRACKET)) SkipToMatchingBrace();
    return false;
  }
  STRUCT_REC* record = type->Struct;
  record->DeclType = kind;
  record->StartLine = scan_.Place();
  if (Accept(Tok::COLON) && !ParseBases(scope, record)) return false;
  if (!At(Tok::LSECONDBRACKET)) return Fail(18, "Syntax error in declaration of type 'class/struct'.");
  const SourceLine opened = scan_.Place();
  Next();
  ParseStructMembers(scope, record);
  record->EndLine = scan_.Place();
  record->IsForwardDeclared = false;
  if (!ExpectBrace(opened, 15, "Missing '}' in declaration of type 'class/struct'.")) return false;
  ResolveVirtualReference(record);
  if (!SettleLayout(slot_, record)) FailTypeSize(record->name);
  struct_defined_ = true;
  return true;
}

STRUCT_REC* Parser::StructForDefinition(const Scope& scope, Name* tag, Tok kind) {
  SYMBOLS_HEADER* header = scope.TagHeader();
  const FoundName found = tag->Text.empty() ? FoundName() : FindInScope(slot_, header, tag);
  if (STRUCT_REC* known = found.Tagged()) {
    if (known->IsForwardDeclared && known->This == nullptr) return known;
    slot_.Error(0, Format("Duplicate definition of class/struct/union '%s'", tag->c_str()));
    return nullptr;
  }
  if (found) {
    slot_.Error(0, Format("Duplicate definition of symbol '%s'", tag->c_str()));
    return nullptr;
  }
  return InsertNewStruct(slot_, header, tag, kind, 0);
}

bool Parser::ParseBases(const Scope& scope, STRUCT_REC* record) {
  do {
    Tok word = Tok::NOTOKEN;
    while (scan_.TokenIn(kAccessWords) || At(Tok::virtual_)) {
      if (!At(Tok::virtual_)) word = Token();
      Next();
    }
    if (!AtName()) return Fail(0, Format("'%s' is not a base class/struct type", scan_.ClipTok().c_str()));
    Name* name = scan_.WordName();
    const FoundName found = FindVisible(slot_, scope.proc, nullptr, scope.block, name);
    STRUCT_REC* base = found.Struct();
    if (found.Typedef() != nullptr) base = found.Typedef()->Struct;
    Next();
    if (found.Enum() != nullptr || (base != nullptr && base->DeclType == Tok::union_)) {
      slot_.Error(0, "Enum/Union cannot be a base class");
    } else if (base == nullptr || base->IsForwardDeclared) {
      // A class that is not complete can be no base, and so no class derives from itself.
      slot_.Error(0, Format("'%s' is not a base class/struct type", name->c_str()));
    } else {
      Inherit(base, record, AccessOf(word, record->DeclType));
    }
  } while (Accept(Tok::COMMA));
  return true;
}

void Parser::Inherit(STRUCT_REC* base, STRUCT_REC* derived, InheritanceKind access) {
  for (const PARENT_NODE* other : derived->Parents) {
    if (other->Struct != base) continue;
    slot_.Error(0, Format("'%s' is a base class/struct of '%s' already", base->name->c_str(),
                          derived->name->c_str()));
    return;
  }
  // Bases that share a base double with each level; this bounds every walk over them.
  if (derived->BaseCount + 1 + base->BaseCount > kMostBases) {
    slot_.Error(0, Format("class/struct '%s' has more than %d bases", derived->name->c_str(), kMostBases));
    return;
  }
  derived->BaseCount += 1 + base->BaseCount;
  const auto check = [&](const Name* name) {
    for (const PARENT_NODE* other : derived->Parents) {
      const MemberResult clash = FindStructMember(slot_, other->Struct, name);
      if (!clash) continue;
      slot_.Error(
          0, Format("Inheritance of '%s' from base class/struct '%s' is ambiguous as it is also declared in "
                    "base class/struct '%s'",
                    name->c_str(), base->name->c_str(), other->Struct->name->c_str()));
    }
  };
  const auto check_all = [&](const auto& self, const STRUCT_REC* record) -> void {
    for (const SYM_REC* member : record->MembersHeader.Symbols) {
      if (member != record->This) check(member->name);
    }
    for (const FUNCPROTO_REC* member : record->MembersHeader.Functions) {
      if (!member->PrototypeOnly && !member->IsConstructor && !member->IsDestructor) check(member->name);
    }
    for (const PARENT_NODE* parent : record->Parents) self(self, parent->Struct);
  };
  if (!derived->Parents.empty()) check_all(check_all, base);
  derived->Parents.Append(slot_.Texts.New<PARENT_NODE>(access, base));
  if (base->DerivedFrom == nullptr) base->DerivedFrom = derived;
}

// A variable needs the whole of its type.
bool Parser::CompleteStruct(STRUCT_REC* record) {
  if (!record->IsForwardDeclared) return true;
  return Fail(0, record->This != nullptr ? Format("struct '%s' contains itself", record->name->c_str())
                                         : Format("struct '%s' not declared", record->name->c_str()));
}

const FUNCPROTO_REC* Parser::FindPureVirtual(STRUCT_REC* record) {
  for (const FUNCPROTO_REC* function : record->MembersHeader.Functions) {
    if (function->PureVirtual && !function->PrototypeOnly) return function;
  }
  for (const PARENT_NODE* parent : record->Parents) {
    const FUNCPROTO_REC* pure = FindPureVirtual(parent->Struct);
    if (pure != nullptr && FindFunction(slot_, &record->MembersHeader, pure->name) == nullptr) return pure;
  }
  return nullptr;
}

void Parser::ResolveVirtualReference(STRUCT_REC* record) {
  const FUNCPROTO_REC* pure = FindPureVirtual(record);
  if (pure == nullptr || pure->OwnerClass == record) return;
  slot_.Error(
      22,
      Format("cannot instantiate from abstract class '%s', because pure virtual function '%s' not defined",
             record->name->c_str(), pure->name->c_str()));
}

// True, and reported, if a variable of this type cannot exist.
bool Parser::DisplayPureVirtualVarError(const TypeSpec& type) {
  if (type.Struct == nullptr || type.PointerDepth > 0 || type.Typedef != nullptr) return false;
  const FUNCPROTO_REC* pure = FindPureVirtual(type.Struct);
  if (pure == nullptr) return false;
  slot_.Error(
      22,
      Format("cannot instantiate from abstract class '%s', because pure virtual function '%s' not defined",
             type.Struct->name->c_str(), pure->name->c_str()));
  return true;
}

}  // namespace vorc
