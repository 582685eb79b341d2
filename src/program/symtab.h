#pragma once

#include <cstdint>

#include "program/name_table.h"
#include "program/slot.h"

// Creators and lookups of the program records.

namespace vorc {

/// What a lookup found: the kind of declaration and its record.
struct FoundName {
  BindingKind Kind = BindingKind::kNone;
  void* Record = nullptr;
  bool IsParameter = false;

  explicit operator bool() const { return Kind != BindingKind::kNone; }
  SYM_REC* Symbol() const { return Kind == BindingKind::kSymbol ? static_cast<SYM_REC*>(Record) : nullptr; }
  FUNCPROTO_REC* Function() const {
    return Kind == BindingKind::kFunction ? static_cast<FUNCPROTO_REC*>(Record) : nullptr;
  }
  TYPEDEF_REC* Typedef() const {
    return Kind == BindingKind::kTypedef ? static_cast<TYPEDEF_REC*>(Record) : nullptr;
  }
  STRUCT_REC* Struct() const {
    return Kind == BindingKind::kStruct ? static_cast<STRUCT_REC*>(Record) : nullptr;
  }
  /// The struct with this tag, even where a typedef has taken the tag for its name.
  STRUCT_REC* Tagged() const {
    const bool named = Typedef() != nullptr && Typedef()->Struct != nullptr;
    return named && Typedef()->Struct->name == Typedef()->name ? Typedef()->Struct : Struct();
  }
  ENUM_REC* Enum() const { return Kind == BindingKind::kEnum ? static_cast<ENUM_REC*>(Record) : nullptr; }
  bool IsType() const { return Typedef() != nullptr || Struct() != nullptr || Enum() != nullptr; }
};

// --- creators -------------------------------------------------------------------------------

/// Declares a variable in a scope. Its array shape and storage follow once the declarator is read. As
/// of every creator, the record's line is that of the current token; `DeclareAt` gives it another.
SYM_REC* InsertVarName(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, const TypeSpec& type,
                       bool is_parameter);
FUNCPROTO_REC* InsertFuncName(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, const TypeSpec& return_type);
STRUCT_REC* InsertNewStruct(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, Tok token, uint16_t storage);
TYPEDEF_REC* CreateTypeDef(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name, const TypeSpec& type);
ENUM_REC* CreateEnumRecord(C_SLOT& slot, SYMBOLS_HEADER* header, Name* name);
ENUM_ELEMENT* InsertEnumItem(C_SLOT& slot, SYMBOLS_HEADER* header, ENUM_REC* owner, Name* name,
                             int64_t value);
PROC_TABLE* AttachProcBody(C_SLOT& slot, FUNCPROTO_REC* proto);
/// A block under `statement`, or directly in a function's body where that is null.
CODE_BLOCK* NewCodeBlock(C_SLOT& slot, FUNCPROTO_REC* proto, STATEMENT_BLOCK* statement);
STATEMENT_BLOCK* NewStatementBlock(C_SLOT& slot, FUNCPROTO_REC* proto, StatementList* list,
                                   CODE_BLOCK* block);
STATEMENT_BLOCK* NewDerivedStatementBlock(C_SLOT& slot, STATEMENT_BLOCK* parent, const char* name);
/// Moves a declaration to the line of its name.
void DeclareAt(SYMBOLS_HEADER* header, SYM_REC* symbol, SourceLine line);
/// Fills in what follows from a type: the resolved basic type, pointer levels and typedef'd arrays.
void SettleType(C_SLOT& slot, SYM_REC* symbol);
/// Gives a symbol an array shape; the dimensions of its typedef come behind its own.
void SetShape(C_SLOT& slot, SYM_REC* symbol, const int64_t* dimensions, int count);
/// Marks a prototype as one that lookups pass over.
void SupersedePrototype(FUNCPROTO_REC* proto);

// --- lookups --------------------------------------------------------------------------------

/// The first declaration of a name in one scope: symbols, functions, typedefs, structs, enums.
FoundName FindInScope(const C_SLOT& slot, const SYMBOLS_HEADER* header, const Name* name);
/// A variable by its name, from a place in a function outward to the file level.
FoundName FindVisible(const C_SLOT& slot, const FUNCPROTO_REC* proto, const STATEMENT_BLOCK* statement,
                      const CODE_BLOCK* block, const Name* name);
/// The same walk, from blocks to parameters and locals only.
FoundName FindLocalIdentifier(const C_SLOT& slot, const FUNCPROTO_REC* proto,
                              const STATEMENT_BLOCK* statement, const CODE_BLOCK* block, const Name* name);
/// The function of a name, superseded prototypes passed over.
FUNCPROTO_REC* FindFunction(const C_SLOT& slot, const SYMBOLS_HEADER* header, const Name* name);
FUNCPROTO_REC* FindProgramEntryLabel(const C_SLOT& slot);
/// True if the record is a variable declared `extern`.
bool IsExternVariable(const FoundName& result);
bool IsNoFunction(const FoundName& result);

}  // namespace vorc
