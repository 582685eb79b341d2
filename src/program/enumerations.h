#pragma once

#include <cstdint>
#include <string_view>

// Enumerated values of the program records. Each list makes the enumeration and its names; the
// numbers are those that stand in symbol files.

namespace vorc {

#define VORC_STATEMENT_TYPES(V)                                                                     \
  V(STATEMENT_TYPE_PLAIN)                                                                           \
  V(STATEMENT_TYPE_RETURN)                                                                          \
  V(STATEMENT_TYPE_GOTO)                                                                            \
  V(STATEMENT_TYPE_IF)                                                                              \
  V(STATEMENT_TYPE_NEWBLOCK)                                                                        \
  V(STATEMENT_TYPE_LABEL)                                                                           \
  V(STATEMENT_TYPE_WHILE)                                                                           \
  V(STATEMENT_TYPE_DO)                                                                              \
  V(STATEMENT_TYPE_FOR)                                                                             \
  V(STATEMENT_TYPE_SWITCH) V(STATEMENT_TYPE_CASE) V(STATEMENT_TYPE_DEFAULT) V(STATEMENT_TYPE_BREAK) \
      V(STATEMENT_TYPE_CONTINUE) V(STATEMENT_TYPE_THEN) V(STATEMENT_TYPE_ELSE)

#define VORC_PARENT_DATA_STRUCTURES(V) \
  V(PARENT_DATA_STRUCTURE_NULL)        \
  V(PARENT_DATA_STRUCTURE_STRUCT)      \
  V(PARENT_DATA_STRUCTURE_FUNCPROTO)   \
  V(PARENT_DATA_STRUCTURE_SYMBOL) V(PARENT_DATA_STRUCTURE_PROCBODY) V(PARENT_DATA_STRUCTURE_CODE_BLOCK)

#define VORC_DECL_TYPES(V) \
  V(DECLTYPE_SYMBOL_NULL)  \
  V(DECLTYPE_SYMBOL_RECORD) V(DECLTYPE_TYPEDEF_RECORD) V(DECLTYPE_STRUCT_RECORD) V(DECLTYPE_ENUM_RECORD)

#define VORC_TYPEDEF_TYPES(V) \
  V(TYPEDEF_TYPE_NULL)        \
  V(TYPEDEF_BASIC_TYPE)       \
  V(TYPEDEF_STRUCT_TYPE)      \
  V(TYPEDEF_CLASS_TYPE)       \
  V(TYPEDEF_UNION_TYPE) V(TYPEDEF_ANOTHER_TYPEDEF) V(TYPEDEF_ENUM_TYPE) V(TYPEDEF_FUNCPROTO_TYPE)

#define VORC_FUNC_RETTYPES(V) \
  V(FUNC_RETTYPE_NULL)        \
  V(FUNC_RETTYPE_BASICTYPE) V(FUNC_RETTYPE_STRUCT_CLASS) V(FUNC_RETTYPE_TYPEDEF) V(FUNC_RETTYPE_ENUM)

#define VORC_INHERITANCE_TYPES(V)  \
  V(INHERITANCE_TYPE_PRIVATE_NULL) \
  V(INHERITANCE_TYPE_PRIVATE)      \
  V(INHERITANCE_TYPE_PUBLIC)       \
  V(INHERITANCE_TYPE_PROTECTED) V(INHERITANCE_TYPE_DEFAULT) V(INHERITANCE_TYPE_PARENTS_PRIVATE)

#define VORC_CAST_TYPES(V) \
  V(CAST_NONE) V(CAST_BASIC_TYPE) V(CAST_FUNC_PTR_TYPE) V(CAST_TYPEDEF_TYPE) V(CAST_TYPE_STRUCT)

#define VORC_INITIALIZER_TYPES(V)                                                                          \
  V(INITIALIZER_TYPE_NULL)                                                                                 \
  V(INITIALIZER_TYPE_NUMBER)                                                                               \
  V(INITIALIZER_TYPE_HEXNUMBER)                                                                            \
  V(INITIALIZER_TYPE_REALNUMBER)                                                                           \
  V(INITIALIZER_TYPE_STRING)                                                                               \
  V(INITIALIZER_TYPE_SYMBOL_ADDRESS)                                                                       \
  V(INITIALIZER_TYPE_ADDRESS)                                                                              \
  V(INITIALIZER_TYPE_BITAND)                                                                               \
  V(INITIALIZER_TYPE_SINGLEQUOTE)                                                                          \
  V(INITIALIZER_TYPE_SIZEOF) V(INITIALIZER_TYPE_LPAREN) V(INITIALIZER_TYPE_PLUS) V(INITIALIZER_TYPE_MINUS) \
      V(INITIALIZER_TYPE_ANOTHER_INTIALIZER_LIST)

#define VORC_ENUMERATOR(name) name,
#define VORC_NAME(name) #name,
#define VORC_ENUMERATION(type, list, names)      \
  enum type : uint8_t { list(VORC_ENUMERATOR) }; \
  inline constexpr std::string_view names[] = {list(VORC_NAME)};

VORC_ENUMERATION(StatementKind, VORC_STATEMENT_TYPES, StatementTypeNames)
VORC_ENUMERATION(ParentDataStructure, VORC_PARENT_DATA_STRUCTURES, ParentDataStructureTypeNames)
VORC_ENUMERATION(DeclKind, VORC_DECL_TYPES, DeclTypeNames)
VORC_ENUMERATION(TypedefKind, VORC_TYPEDEF_TYPES, TypeDefTypeNames)
VORC_ENUMERATION(FuncRetKind, VORC_FUNC_RETTYPES, ReturnTypeNames)
VORC_ENUMERATION(InheritanceKind, VORC_INHERITANCE_TYPES, InheritanceTypeNames)
VORC_ENUMERATION(CastKind, VORC_CAST_TYPES, CastTypeNames)
VORC_ENUMERATION(InitializerKind, VORC_INITIALIZER_TYPES, InitializerTypeNames)

#undef VORC_ENUMERATION
#undef VORC_NAME
#undef VORC_ENUMERATOR

/// Access of a struct member.
enum MemberKind : uint8_t {
  MEMBER_TYPE_NONE = 0,
  MEMBER_TYPE_PRIVATE = 6,
  MEMBER_TYPE_PUBLIC = 7,
  MEMBER_TYPE_PROTECTED = 8,
  MEMBER_TYPE_VIRTUAL = 9,
  MEMBER_TYPE_FRIEND = 10,
};

/// Storage bits of a declaration.
enum StorageBit : uint16_t {
  NO_SPECIAL_STORAGE_TYPE = 0,
  CONSTANT_VAR = 1,
  VOLATILE_VAR = 2,
  STATIC_VAR = 4,
  REGISTER_VAR = 8,
  UNSIGNED_VAR = 16,
  SHORT_VAR = 32,
  EXTERN_VAR = 64,
  AUTO_VAR = 128,
  DOLLAR_VAR = 256,
  SIGNED_VAR = 4096,
  LABEL_VAR = 16384,
};

}  // namespace vorc
