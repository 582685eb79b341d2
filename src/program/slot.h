#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/arena.h"
#include "base/file.h"
#include "base/record_table.h"
#include "program/diagnostics.h"
#include "program/name_table.h"
#include "program/records.h"
#include "program/source_text.h"
#include "program/target_options.h"

namespace vorc {

/// How many records of each kind one compilation can hold. Address space is all they cost.
namespace capacity {
inline constexpr size_t kCasts = 16'000;
inline constexpr size_t kSymbols = 320'000;
inline constexpr size_t kStructs = 16'000;
inline constexpr size_t kTypedefs = 10'000;
inline constexpr size_t kFuncPrototypes = 100'000;
inline constexpr size_t kProcTables = 100'000;
inline constexpr size_t kStatementBlocks = 400'000;
inline constexpr size_t kInitializerElements = 500'000;
inline constexpr size_t kCodeBlocks = 200'000;
inline constexpr size_t kDefineRecords = 9'999;
inline constexpr size_t kDefineItems = 1'000'000;
inline constexpr size_t kEnumRecords = 5'000;
inline constexpr size_t kEnumElements = 50'000;
inline constexpr size_t kExpressions = 800'000;
inline constexpr size_t kDeclSequence = 400'000;

/// Address space of all tables together.
inline constexpr size_t kRecordBytes = ReservedPieces::RoomFor(kCasts * sizeof(CAST)) +
                                       ReservedPieces::RoomFor(kSymbols * sizeof(SYM_REC)) +
                                       ReservedPieces::RoomFor(kStructs * sizeof(STRUCT_REC)) +
                                       ReservedPieces::RoomFor(kTypedefs * sizeof(TYPEDEF_REC)) +
                                       ReservedPieces::RoomFor(kFuncPrototypes * sizeof(FUNCPROTO_REC)) +
                                       ReservedPieces::RoomFor(kProcTables * sizeof(PROC_TABLE)) +
                                       ReservedPieces::RoomFor(kStatementBlocks * sizeof(STATEMENT_BLOCK)) +
                                       ReservedPieces::RoomFor(kInitializerElements * sizeof(INITIALIZER)) +
                                       ReservedPieces::RoomFor(kCodeBlocks * sizeof(CODE_BLOCK)) +
                                       ReservedPieces::RoomFor(kDefineRecords * sizeof(DEFINE_REC)) +
                                       ReservedPieces::RoomFor(kDefineItems * sizeof(DEFINE_ITEM)) +
                                       ReservedPieces::RoomFor(kEnumRecords * sizeof(ENUM_REC)) +
                                       ReservedPieces::RoomFor(kEnumElements * sizeof(ENUM_ELEMENT)) +
                                       ReservedPieces::RoomFor(kExpressions * sizeof(EXPR_NODE)) +
                                       ReservedPieces::RoomFor(kDeclSequence * sizeof(DECL_SEQ));
}  // namespace capacity

/// Room for an `extern` array that is used before its definition tells its size.
inline constexpr int32_t kOpenArrayRoom = 64 * 1024;

/// What the parser asks of the stage behind it: storage for what a script declares, and the
/// execution of a file-level statement while the file is still being read.
class ParseServices {
 public:
  virtual ~ParseServices() = default;

  /// Gives a global or static its zeroed storage, once; an array whose size isn't known yet gets
  /// `kOpenArrayRoom` bytes.
  virtual void AllocateData(SYM_REC* symbol) = 0;
  /// Fills a global's or static's storage from its initializer.
  virtual void InitializeData(SYM_REC* symbol) = 0;
  /// Bytes that a global or static has been given by its uses, which must go on to see the same place; the
  /// largest there may be if it has no storage yet.
  virtual int64_t RoomOf(const SYM_REC* symbol) = 0;
  /// Runs a statement of `MorvMain`.
  virtual void RunStatement(STATEMENT_BLOCK* statement) = 0;
  /// True for the name of a built-in function.
  virtual bool IsBuiltin(const Name* name) = 0;
};

/// Everything about one compilation.
struct C_SLOT {
  TargetOptions Target;
  Diagnostics Display;
  SourceTexts Sources;
  SourceLine Place;  ///< where the scanner stands

  NameTable Names;
  NameIndex Index;
  Arena Texts;

  ReservedPieces RecordMemory{capacity::kRecordBytes};
  RecordTable<CAST> Casts{capacity::kCasts, RecordMemory};
  RecordTable<SYM_REC> SymbolRecords{capacity::kSymbols, RecordMemory};
  RecordTable<STRUCT_REC> Structs{capacity::kStructs, RecordMemory};
  RecordTable<TYPEDEF_REC> Typedefs{capacity::kTypedefs, RecordMemory};
  RecordTable<FUNCPROTO_REC> FuncPrototypes{capacity::kFuncPrototypes, RecordMemory};
  RecordTable<PROC_TABLE> ProcTables{capacity::kProcTables, RecordMemory};
  RecordTable<STATEMENT_BLOCK> StatementBlocks{capacity::kStatementBlocks, RecordMemory};
  RecordTable<INITIALIZER> InitializerElements{capacity::kInitializerElements, RecordMemory};
  RecordTable<CODE_BLOCK> CodeBlocks{capacity::kCodeBlocks, RecordMemory};
  RecordTable<DEFINE_REC> DefineRecords{capacity::kDefineRecords, RecordMemory};
  RecordTable<DEFINE_ITEM> DefineItems{capacity::kDefineItems, RecordMemory};
  RecordTable<ENUM_REC> EnumRecords{capacity::kEnumRecords, RecordMemory};
  RecordTable<ENUM_ELEMENT> EnumElements{capacity::kEnumElements, RecordMemory};
  RecordTable<EXPR_NODE> Expressions{capacity::kExpressions, RecordMemory};
  RecordTable<DECL_SEQ> DeclSequence{capacity::kDeclSequence, RecordMemory};

  SYMBOLS_HEADER Globals;
  FUNCPROTO_REC* MorvFuncProto = nullptr;
  ParseServices* Services = nullptr;
  /// Opens a source or an included file for reading; null if it may not be read.
  std::function<File(const std::string& path)> OpenSource = [](const std::string& path) {
    return File(std::fopen(path.c_str(), "rbe"));
  };
  /// Statics of functions, in the order of their declarations.
  std::vector<SYM_REC*> ProcStatics;
  /// Lines of embedded hardware blocks, without their ends; an empty one closes each block.
  std::vector<std::string_view> RtlLines;
  int RtlBlocks = 0;
  int Muted = 0;         ///< above 0 while the scanner looks ahead: what it finds is told later
  bool Stopped = false;  ///< an error ended the compilation: nothing more is read

  /// A new record. A full table stops the compilation with one error; the record is then a spare.
  template <typename T>
  T* New(RecordTable<T>& table, const char* what) {
    if (T* record = table.Create()) return record;
    ReportFull(what, table.capacity());
    return new (Texts.Allocate(sizeof(T), alignof(T))) T();
  }

  bool IsScript() const { return Target.script; }

  void Error(long code, std::string_view text) { ErrorAt(Place, code, text); }
  void ErrorAt(SourceLine line, long code, std::string_view text);
  void Warning(std::string_view text);
  void WarningAt(SourceLine line, std::string_view text);
  /// Says where something begins that is never closed; counts as nothing.
  void NoteOpening(SourceLine line, std::string_view what);
  /// One last error; the scanner then delivers nothing but the end of the file.
  void Fatal(std::string_view text);

 private:
  void ReportFull(const char* what, size_t capacity);
};

}  // namespace vorc
