#pragma once

#include <cstdint>
#include <string_view>

#include "base/record_table.h"
#include "program/enumerations.h"
#include "program/source_text.h"
#include "program/tokens.h"

// The program records: everything the parser learns of a source file. The interpreter, the code
// generator and the object writer read this graph and nothing else. A reference is a pointer; the
// index that a file would hold stands in the record it points to.

namespace vorc {

struct CAST;
struct CODE_BLOCK;
struct ConstantValue;
struct DEFINE_REC;
struct ENUM_REC;
struct EXPR_NODE;
struct FUNCPROTO_REC;
struct INITIALIZER;
struct PROC_TABLE;
struct STATEMENT_BLOCK;
struct STRUCT_REC;
struct SYM_REC;
struct TYPEDEF_REC;

/// An interned word: one per spelling, so names compare by address.
struct Name {
  std::string_view Text;
  uint32_t Id = 0;
  Tok Reserved = Tok::NOTOKEN;   ///< token of a reserved word
  bool IsTypedef = false;        ///< a global typedef took this word
  DEFINE_REC* Define = nullptr;  ///< the live macro of this name

  const char* c_str() const { return Text.data(); }
};

/// A type as a declaration spells it.
struct TypeSpec {
  Tok BasicType = Tok::NOTOKEN;  ///< IDENTIFIER for a typedef name
  uint16_t StorageType = NO_SPECIAL_STORAGE_TYPE;
  int16_t PointerDepth = 0;
  TYPEDEF_REC* Typedef = nullptr;
  STRUCT_REC* Struct = nullptr;
  ENUM_REC* Enum = nullptr;
};

/// One declaration of a scope, of whatever kind, in source order.
struct DECL_SEQ {
  int64_t Index = -1;
  DeclKind DeclType = DECLTYPE_SYMBOL_NULL;
  void* Record = nullptr;
  SourceLine Line;
  DECL_SEQ* Next = nullptr;
};

/// A scope. Every record that opens one embeds a header.
struct SYMBOLS_HEADER {
  List<SYM_REC> Symbols;
  List<FUNCPROTO_REC> Functions;
  List<STRUCT_REC> Structs;
  List<ENUM_REC> Enums;
  List<DECL_SEQ> DeclSequence;
  List<TYPEDEF_REC> Typedefs;
  ParentDataStructure ParentDataStructureType = PARENT_DATA_STRUCTURE_NULL;
  uint32_t Id = 0;         ///< number in the name index, 0 while nothing is declared
  void* Parent = nullptr;  ///< the embedding record
};

/// Array shape of a declaration.
struct ArrayShape {
  int64_t* Dimensions = nullptr;
  int16_t DimensionCount = 0;
  bool UnsizedFirstDimension = false;
  bool CountedFirstDimension = false;  ///< written as [], and settled by the initial values
};

/// Values of a `{ }` list, or the one value of a scalar.
struct InitializerList : List<INITIALIZER> {
  int32_t Count = 0;
};

struct INITIALIZER {
  int64_t Index = -1;
  InitializerKind InitializerType = INITIALIZER_TYPE_NULL;
  SourceLine Line;
  EXPR_NODE* Expression = nullptr;
  InitializerList List;  ///< the elements of a nested `{ }`
  INITIALIZER* Next = nullptr;
};

struct SYM_REC : TypeSpec {
  int64_t Index = -1;
  Name* name = nullptr;
  MemberKind MemberType = MEMBER_TYPE_NONE;
  bool IsFunctionPointer = false;
  bool ImplicitExtern = false;  ///< inserted because it was undeclared at its first use
  bool OnlyCalled = false;      ///< undeclared, and so far only called
  bool IsParameter = false;
  bool IsLocal = false;  ///< lives in the frame of a function
  bool IsLabel = false;
  bool HasInitializer = false;
  Tok ValueType = Tok::NOTOKEN;  ///< basic type with typedefs resolved
  int16_t TotalDepth = 0;        ///< pointer levels, those of the typedef included
  ArrayShape Shape;
  int32_t BitFieldWidth = 0;
  int32_t BitFieldOffset = 0;
  int32_t MemberOffset = 0;  ///< bytes from the start of the owner's own members
  int32_t FrameOffset = 0;   ///< bytes from the frame base: upward for a parameter, else downward
  SourceLine Line;
  STRUCT_REC* OwnerStruct = nullptr;
  FUNCPROTO_REC* FunctionPointer = nullptr;  ///< signature behind a function pointer
  InitializerList Initializer;
  const ConstantValue* Constant = nullptr;  ///< value of a `const` number
  SYM_REC* Next = nullptr;
};

struct TYPEDEF_REC : TypeSpec {
  int64_t Index = -1;
  Name* name = nullptr;
  TypedefKind TypeDefType = TYPEDEF_TYPE_NULL;
  ArrayShape Shape;  ///< with the dimensions of the typedef behind it
  FUNCPROTO_REC* Function = nullptr;
  TYPEDEF_REC* Next = nullptr;
};

/// A class that is a friend, or that a function is a friend of.
struct FRIEND_NODE {
  STRUCT_REC* Struct = nullptr;
  FRIEND_NODE* Next = nullptr;
};

/// A base class of a struct.
struct PARENT_NODE {
  InheritanceKind Access = INHERITANCE_TYPE_DEFAULT;
  STRUCT_REC* Struct = nullptr;
  PARENT_NODE* Next = nullptr;
};

struct STRUCT_REC {
  int64_t Index = -1;
  Name* name = nullptr;
  int32_t StructSize = 0;  ///< bytes of the own members; bases come in front of them
  int32_t ParentSize = 0;  ///< bytes of all bases
  bool IsForwardDeclared = false;
  Tok DeclType = Tok::struct_;
  uint16_t StorageType = 0;
  SourceLine StartLine;
  SourceLine EndLine;
  MemberKind CurrentMemberAccess = MEMBER_TYPE_PUBLIC;
  List<PARENT_NODE> Parents;
  int32_t BaseCount = 0;  ///< of all base objects, those of the bases included
  List<FRIEND_NODE> FriendClasses;
  SYMBOLS_HEADER MembersHeader;
  SYM_REC* This = nullptr;
  FUNCPROTO_REC* Constructor = nullptr;
  FUNCPROTO_REC* Destructor = nullptr;
  STRUCT_REC* DerivedFrom = nullptr;  ///< the first struct that inherits from this one
  STRUCT_REC* OwnerStruct = nullptr;
  STRUCT_REC* Next = nullptr;
};

struct ENUM_ELEMENT {
  int64_t Index = -1;
  Name* name = nullptr;
  int64_t Value = 0;
  ENUM_ELEMENT* Next = nullptr;
};

struct ENUM_REC {
  int64_t Index = -1;
  Name* name = nullptr;
  List<ENUM_ELEMENT> Elements;
  ENUM_REC* Next = nullptr;
};

struct FUNCPROTO_REC {
  int64_t Index = -1;
  Name* name = nullptr;
  bool IsMain = false;
  bool PrototypeOnly = false;  ///< superseded: lookups pass it over
  bool IsConstructor = false;
  bool IsDestructor = false;
  bool IsVirtual = false;
  bool PureVirtual = false;
  bool IsInline = false;
  bool IsConst = false;
  bool IsOverload = false;  ///< not the first function of its name
  MemberKind MemberType = MEMBER_TYPE_NONE;
  bool HasVarArgs = false;       ///< the parameter list ends in "..."
  Tok DefinedBy = Tok::NOTOKEN;  ///< `function` or `subroutine`, when the dialect's word was used
  int64_t ParameterCount = 0;    ///< an empty list counts 0, `(void)` counts 1
  TypeSpec ReturnType;
  FuncRetKind ReturnKind = FUNC_RETTYPE_NULL;
  SYMBOLS_HEADER ParametersHeader;
  STRUCT_REC* OwnerClass = nullptr;
  List<FRIEND_NODE> FriendOf;
  FUNCPROTO_REC* FirstOverload = nullptr;
  FUNCPROTO_REC* NextOverload = nullptr;
  PROC_TABLE* ProcBody = nullptr;
  SourceLine Line;
  FUNCPROTO_REC* Next = nullptr;
};

using StatementList = List<STATEMENT_BLOCK>;

struct PROC_TABLE {
  int64_t Index = -1;
  Name* name = nullptr;
  SourceLine Line;  ///< line of the opening brace
  SourceLine EndLine;
  SYMBOLS_HEADER LocalsHeader;
  StatementList Statements;
  FUNCPROTO_REC* Owner = nullptr;
  List<CODE_BLOCK> Blocks;  ///< every block of the body, in source order
  int32_t FrameSize = 0;
  int32_t LocalSize = -1;  ///< bytes of all locals, -1 until laid out
  int32_t ArgSize = -1;    ///< bytes of all parameters, -1 until laid out
};

struct CODE_BLOCK {
  int64_t Index = -1;
  SYMBOLS_HEADER LocalsHeader;
  StatementList Statements;
  STATEMENT_BLOCK* ParentStatement = nullptr;
  SourceLine Line;
  bool IsForClause = false;  ///< holds what the first clause of a `for` declares
  FUNCPROTO_REC* OwnerFunction = nullptr;
  CODE_BLOCK* Next = nullptr;  ///< next block of the same function
};

struct STATEMENT_BLOCK {
  int64_t Index = -1;
  StatementKind StatementType = STATEMENT_TYPE_PLAIN;
  bool IsDelete = false;
  bool IsDeleteArray = false;
  const char* DerivedName = nullptr;
  SYM_REC* Symbol = nullptr;  ///< the label of a label statement
  Name* GotoLabel = nullptr;
  EXPR_NODE* Expression = nullptr;
  int64_t CaseValue = 0;  ///< folded value of a case label
  StatementList ChildStatements;
  CODE_BLOCK* Block = nullptr;
  CODE_BLOCK* ParentCodeBlock = nullptr;
  STATEMENT_BLOCK* ParentStatement = nullptr;  ///< of a derived statement
  FUNCPROTO_REC* OwnerFunction = nullptr;
  STATEMENT_BLOCK* ForScope = nullptr;      ///< first clause of a `for` that this is a part of
  STATEMENT_BLOCK* EnclosingFor = nullptr;  ///< nearest first clause whose names are visible here
  SourceLine Line;
  SourceLine EndLine;
  STATEMENT_BLOCK* Next = nullptr;
};

struct CAST {
  int64_t Index = -1;
  CastKind CastType = CAST_NONE;
  Tok TypeToken = Tok::NOTOKEN;
  int16_t PointerDepth = 0;
  TYPEDEF_REC* Typedef = nullptr;
  STRUCT_REC* Struct = nullptr;
  FUNCPROTO_REC* Function = nullptr;  ///< signature of a function pointer cast
};

/// A node of an expression. Expressions are chains in postfix order; indices, call arguments, the
/// arms of `?:` and parenthesised groups hang off a node as chains of their own.
struct EXPR_NODE {
  int32_t Index = -1;
  SourceLine Line;
  Tok Token = Tok::NOTOKEN;
  uint8_t NumberSize = 0;
  uint8_t ImmediateClass = 0;
  bool CallWithoutParens = false;
  bool IsLvalue = false;
  bool NewObject = false;
  bool NewArray = false;
  bool IsMember = false;  ///< a name behind `.` or `->`
  bool IsObject = false;  ///< stands in front of `.` or `->`
  bool HasCall = false;   ///< a call behind this name
  int32_t StarRefCount = 0;
  uint32_t LiteralLength = 0;  ///< a text may hold zeros
  const char* Literal = nullptr;
  Name* name = nullptr;
  int64_t NumberValue = 0;
  SYM_REC* Symbol = nullptr;
  CAST* Cast = nullptr;
  STRUCT_REC* NewClass = nullptr;        ///< of `new`
  SYM_REC* OwnerObject = nullptr;        ///< of a member: the variable on its left
  EXPR_NODE* Arguments = nullptr;        ///< of a call; the others hang off `NextArgument`
  EXPR_NODE* SubExpression = nullptr;    ///< of parentheses
  EXPR_NODE* ThenExpression = nullptr;   ///< of `?:`
  EXPR_NODE* ElseExpression = nullptr;   ///< of `?:`
  EXPR_NODE* IndexExpression = nullptr;  ///< the first index; the others hang off `NextDimension`
  EXPR_NODE* NextArgument = nullptr;
  EXPR_NODE* NextDimension = nullptr;
  FUNCPROTO_REC* Function = nullptr;
  STATEMENT_BLOCK* Statement = nullptr;
  FUNCPROTO_REC* OwnerFunction = nullptr;
  EXPR_NODE* Prev = nullptr;
  EXPR_NODE* Next = nullptr;

  /// The spelling of a number or name, or the whole of a text.
  std::string_view Text() const { return {Literal, LiteralLength}; }
};

/// One token of a macro's replacement or of an actual argument.
struct DEFINE_ITEM {
  int64_t Index = -1;
  Tok Token = Tok::NOTOKEN;
  std::string_view Text;
  Name* name = nullptr;
  DEFINE_ITEM* Next = nullptr;
};

enum DefineType : uint8_t { DEFINE_TYPE_NORMAL = 0, DEFINE_TYPE_MACRO = 1 };

struct DEFINE_REC {
  int64_t Index = -1;
  Name* name = nullptr;
  SourceLine Line;
  DefineType Type = DEFINE_TYPE_NORMAL;
  int32_t ItemCount = 0;
  List<DEFINE_ITEM> Items;
  int32_t ParameterCount = 0;
  List<DEFINE_ITEM> Parameters;
};

}  // namespace vorc
