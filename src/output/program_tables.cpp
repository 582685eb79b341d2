#include "output/program_tables.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

namespace vorc {
namespace {

constexpr uint8_t kLive = 1;
constexpr uint8_t kRemoved = 3;
constexpr int kFunctionPointerBit = 4;
constexpr size_t kBasesKept = 32;

struct StorageName {
  StorageBit bit;
  const char* name;
};
constexpr StorageName kStorageNames[] = {{CONSTANT_VAR, "const"},    {VOLATILE_VAR, "volatile"},
                                         {STATIC_VAR, "static"},     {REGISTER_VAR, "register"},
                                         {UNSIGNED_VAR, "unsigned"}, {SHORT_VAR, "short"},
                                         {EXTERN_VAR, "extern"},     {AUTO_VAR, "auto"},
                                         {DOLLAR_VAR, "$"},          {SIGNED_VAR, "signed"}};

std::string StorageText(uint16_t storage) {
  std::string text;
  for (const StorageName& word : kStorageNames) {
    if ((storage & word.bit) != 0) text += (text.empty() ? "" : " ") + std::string(word.name);
  }
  return text.empty() ? "No Special Storage Type" : text;
}

template <typename T>
int64_t IndexOf(const T* record) {
  return record == nullptr ? -1 : record->Index;
}

/// Texts behind each other, each with a zero; equal ones stand once.
class Pool {
 public:
  int64_t Add(std::string_view text) {
    const auto [place, added] = places_.try_emplace(std::string(text), bytes_.size());
    if (added) bytes_.append(text).push_back('\0');
    return static_cast<int64_t>(place->second);
  }
  /// A name's own cell saves looking its spelling up again.
  int64_t Add(const Name* name) {
    if (name == nullptr) return -1;
    const auto [place, added] = names_.try_emplace(name, 0);
    if (added) place->second = Add(name->Text);
    return place->second;
  }
  std::span<const uint8_t> bytes() const {
    return {reinterpret_cast<const uint8_t*>(bytes_.data()), bytes_.size()};
  }

 private:
  std::string bytes_;
  std::unordered_map<std::string, size_t> places_;
  std::unordered_map<const Name*, int64_t> names_;
};

/// The bytes of one record while they are filled in.
class Image {
 public:
  explicit Image(size_t bytes) : bytes_(bytes) {}

  void Clear() { std::fill(bytes_.begin(), bytes_.end(), uint8_t{0}); }
  std::span<const uint8_t> bytes() const { return bytes_; }

  template <typename Number>
  requires std::is_integral_v<Number> || std::is_enum_v<Number>
  void Put(const DiskField& field, Number value) {
    PutNumber(bytes_, field.offset, field.width, static_cast<uint64_t>(value));
  }
  void Put(const DiskField& field, std::string_view text) {
    const size_t size = std::min<size_t>(text.size(), field.width - size_t{1});
    if (size > 0) std::memcpy(&bytes_[field.offset], text.data(), size);
  }
  template <typename T>
  void Refer(const DiskField& field, const T* record) {
    Put(field, IndexOf(record));
  }
  template <typename T>
  void Refer(const DiskField& first, const DiskField& last, const List<T>& list) {
    Refer(first, list.First);
    Refer(last, list.Last);
  }
  void PutAt(size_t offset, size_t width, int64_t value) {
    PutNumber(bytes_, offset, width, static_cast<uint64_t>(value));
  }
  void PutStorage(const DiskField& bits, const DiskField& name, uint16_t storage) {
    Put(bits, storage);
    Put(name, StorageText(storage));
  }
  /// The sizes of an array; what isn't used is -1.
  void PutDimensions(const DiskField& field, const ArrayShape& shape) {
    const auto used = static_cast<size_t>(std::max<int16_t>(shape.DimensionCount, 0));
    for (size_t i = 0; i < field.width / kDimensionBytes; ++i) {
      const int64_t size = i < used && shape.Dimensions != nullptr ? shape.Dimensions[i] : -1;
      PutAt(field.offset + i * kDimensionBytes, kDimensionBytes, size);
    }
  }
  void PutScope(const DiskField& field, const SYMBOLS_HEADER& scope, int64_t parent);

 private:
  std::vector<uint8_t> bytes_;
};

void Image::PutScope(const DiskField& field, const SYMBOLS_HEADER& scope, int64_t parent) {
  using R = disk::ScopeRec;
  const auto inside = [&field](DiskField part) {
    part.offset = static_cast<uint16_t>(part.offset + field.offset);
    return part;
  };
  Refer(inside(R::FirstSymbol), inside(R::LastSymbol), scope.Symbols);
  Refer(inside(R::FirstFunction), inside(R::LastFunction), scope.Functions);
  Refer(inside(R::FirstStruct), inside(R::LastStruct), scope.Structs);
  Refer(inside(R::FirstEnum), inside(R::LastEnum), scope.Enums);
  Refer(inside(R::FirstDeclaration), inside(R::LastDeclaration), scope.DeclSequence);
  Refer(inside(R::FirstTypedef), inside(R::LastTypedef), scope.Typedefs);
  Put(inside(R::ParentType), scope.ParentDataStructureType);
  Put(inside(R::ParentTypeName), ParentDataStructureTypeNames[scope.ParentDataStructureType]);
  Put(inside(R::Parent), parent);
}

/// Encodes table by table.
class Encoder {
 public:
  Encoder(const C_SLOT& slot, TableSink& sink) : slot_(slot), sink_(sink) {}

  TableDirectory Run();

 private:
  void Begin(DiskTable table, uint64_t count);
  bool Append(std::span<const uint8_t> bytes);
  bool AppendTrimmed(std::span<const uint8_t> symbol);
  template <typename Layout, typename T>
  void Table(DiskTable table, const RecordTable<T>& records);
  void Pieces(DiskTable table, std::span<const uint8_t> bytes, uint64_t count);

  void Encode(const SYM_REC& from, Image& to);
  void Encode(const TYPEDEF_REC& from, Image& to);
  void Encode(const FUNCPROTO_REC& from, Image& to);
  void Encode(const PROC_TABLE& from, Image& to);
  void Encode(const CODE_BLOCK& from, Image& to);
  void Encode(const STATEMENT_BLOCK& from, Image& to);
  void Encode(const EXPR_NODE& from, Image& to);
  void Encode(const STRUCT_REC& from, Image& to);
  void Encode(const ENUM_REC& from, Image& to);
  void Encode(const ENUM_ELEMENT& from, Image& to);
  void Encode(const DECL_SEQ& from, Image& to);
  void Encode(const INITIALIZER& from, Image& to);
  void Encode(const CAST& from, Image& to);
  void Encode(const DEFINE_REC& from, Image& to);
  void Encode(const DEFINE_ITEM& from, Image& to);

  void CollectLinks();
  void CollectTexts();
  void Statics();

  const C_SLOT& slot_;
  TableSink& sink_;
  TableDirectory directory_;
  bool open_ = true;  ///< the sink takes more
  Pool tokens_;
  Pool texts_;
  std::unordered_map<const FUNCPROTO_REC*, const FUNCPROTO_REC*> previous_overload_;
  std::unordered_map<const STATEMENT_BLOCK*, std::pair<const CODE_BLOCK*, const CODE_BLOCK*>> child_blocks_;
};

void Encoder::Encode(const SYM_REC& from, Image& to) {
  using R = disk::SymbolRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Put(R::TokenNameOffset, tokens_.Add(TokenName(from.BasicType)));
  to.Put(R::BasicType, from.BasicType);
  to.Put(R::ImplicitExtern, from.ImplicitExtern);
  to.PutStorage(R::StorageType, R::StorageTypeName, from.StorageType);
  to.Put(R::MemberType, from.MemberType);
  to.Put(R::FunctionPointerFlag, from.IsFunctionPointer ? kFunctionPointerBit : 0);
  to.Put(R::PointerDepth, from.PointerDepth);
  to.Put(R::IsParameter, from.IsParameter);
  to.Put(R::MemberOffset, from.MemberOffset);
  to.Put(R::BitFieldWidth, from.BitFieldWidth);
  to.Put(R::BitFieldOffset, from.BitFieldOffset);
  to.Put(R::Line, from.Line.Line);
  to.Put(R::UnsizedFirstDimension, from.Shape.UnsizedFirstDimension);
  to.Refer(R::Typedef, from.Typedef);
  to.Refer(R::Struct, from.Struct);
  to.Refer(R::OwnerStruct, from.OwnerStruct);
  to.Refer(R::Enum, from.Enum);
  to.Refer(R::FunctionPointer, from.FunctionPointer);
  to.Put(R::InitializerCount, from.Initializer.Count);
  to.Refer(R::FirstInitializer, R::LastInitializer, from.Initializer);
  to.Put(R::DimensionCount, from.Shape.DimensionCount);
  to.PutDimensions(R::Dimensions, from.Shape);
  SYMBOLS_HEADER members;
  members.ParentDataStructureType = PARENT_DATA_STRUCTURE_SYMBOL;
  to.PutScope(R::MembersHeader, members, from.Index);
  to.Refer(R::Next, from.Next);
}

void Encoder::Encode(const TYPEDEF_REC& from, Image& to) {
  using R = disk::TypedefRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Put(R::TypeDefType, from.TypeDefType);
  to.Put(R::TypeDefTypeName, TypeDefTypeNames[from.TypeDefType]);
  to.Refer(R::Typedef, from.Typedef);
  to.Refer(R::Struct, from.Struct);
  to.Refer(R::Function, from.Function);
  to.Refer(R::Enum, from.Enum);
  to.Put(R::BasicType, from.BasicType);
  to.Put(R::DimensionCount, from.Shape.DimensionCount);
  to.PutStorage(R::StorageType, R::StorageTypeName, from.StorageType);
  to.Put(R::PointerDepth, from.PointerDepth);
  to.PutDimensions(R::Dimensions, from.Shape);
  to.PutScope(R::MembersHeader, SYMBOLS_HEADER(), -1);
  to.Refer(R::Next, from.Next);
}

void Encoder::Encode(const FUNCPROTO_REC& from, Image& to) {
  using R = disk::FunctionRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Put(R::IsMain, from.IsMain);
  to.Put(R::PrototypeOnly, from.PrototypeOnly);
  to.Put(R::HasBody, from.ProcBody != nullptr);
  to.Put(R::HasNoBody, from.ProcBody == nullptr);
  to.Put(R::IsOverload, from.IsOverload);
  to.Put(R::IsConstructor, from.IsConstructor);
  to.Put(R::IsDestructor, from.IsDestructor);
  to.Put(R::IsVirtual, from.IsVirtual);
  to.Put(R::PureVirtual, from.PureVirtual);
  to.Put(R::HasVarArgs, from.HasVarArgs);
  to.Put(R::MemberType, from.MemberType);
  to.Put(R::ParameterCount, from.ParameterCount);
  to.Put(R::ReturnKind, from.ReturnKind);
  to.Put(R::ReturnKindName, ReturnTypeNames[from.ReturnKind]);
  to.Put(R::ReturnType, from.ReturnType.BasicType);
  to.Put(R::ReturnPointerDepth, from.ReturnType.PointerDepth);
  to.PutStorage(R::ReturnStorageType, R::ReturnStorageTypeName, from.ReturnType.StorageType);
  to.Refer(R::ReturnTypedef, from.ReturnType.Typedef);
  to.Refer(R::ReturnStruct, from.ReturnType.Struct);
  to.Refer(R::ReturnEnum, from.ReturnType.Enum);
  to.PutScope(R::ParametersHeader, from.ParametersHeader, from.Index);
  to.Refer(R::OwnerClass, from.OwnerClass);
  to.Refer(R::FirstOverload, from.FirstOverload);
  to.Refer(R::NextOverload, from.NextOverload);
  const auto previous = previous_overload_.find(&from);
  to.Refer(R::PreviousOverload, previous == previous_overload_.end() ? nullptr : previous->second);
  to.Refer(R::ProcBody, from.ProcBody);
  to.Refer(R::Next, from.Next);
  to.Refer(R::NextInClass, from.OwnerClass == nullptr ? nullptr : from.Next);
  to.Put(R::Line, from.Line.Line);
}

void Encoder::Encode(const PROC_TABLE& from, Image& to) {
  using R = disk::ProcedureRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Put(R::Line, from.Line.Line);
  to.Put(R::EndLine, from.EndLine.Line);
  to.PutScope(R::LocalsHeader, from.LocalsHeader, from.Index);
  to.Refer(R::FirstStatement, R::LastStatement, from.Statements);
  to.Put(R::DefineItem, -1);
  to.Refer(R::Owner, from.Owner);
  to.Put(R::FrameSize, from.FrameSize);
  to.Put(R::LocalSize, std::max(from.LocalSize, 0));
  to.Put(R::ArgSize, std::max(from.ArgSize, 0));
}

void Encoder::Encode(const CODE_BLOCK& from, Image& to) {
  using R = disk::CodeBlockRec;
  to.PutScope(R::LocalsHeader, from.LocalsHeader, from.Index);
  to.Refer(R::FirstStatement, R::LastStatement, from.Statements);
  to.Refer(R::ParentStatement, from.ParentStatement);
  to.Put(R::Line, from.Line.Line);
  to.Refer(R::OwnerFunction, from.OwnerFunction);
  to.Refer(R::Next, from.Next);
}

void Encoder::Encode(const STATEMENT_BLOCK& from, Image& to) {
  using R = disk::StatementRec;
  to.Put(R::StatementType, from.StatementType);
  to.Put(R::StatementTypeName, StatementTypeNames[from.StatementType]);
  if (from.DerivedName != nullptr) to.Put(R::DerivedName, std::string_view(from.DerivedName));
  to.Put(R::IsDelete, from.IsDelete);
  to.Put(R::IsDeleteArray, from.IsDeleteArray);
  to.Refer(R::Symbol, from.Symbol);
  to.Put(R::GotoLabel, texts_.Add(from.GotoLabel));
  to.Refer(R::Expression, from.Expression);
  to.Put(R::CaseValue, from.CaseValue);
  to.Refer(R::FirstChild, R::LastChild, from.ChildStatements);
  to.Refer(R::Block, from.Block);
  to.Refer(R::ParentCodeBlock, from.ParentCodeBlock);
  to.Refer(R::ParentStatement, from.ParentStatement);
  to.Refer(R::OwnerFunction, from.OwnerFunction);
  to.Refer(R::ForScope, from.ForScope);
  to.Put(R::Line, from.Line.Line);
  to.Put(R::EndLine, from.EndLine.Line);
  to.Refer(R::Next, from.Next);
  const auto blocks = child_blocks_.find(&from);
  const bool has_blocks = blocks != child_blocks_.end();
  to.Refer(R::FirstChildBlock, has_blocks ? blocks->second.first : nullptr);
  to.Refer(R::LastChildBlock, has_blocks ? blocks->second.second : nullptr);
}

void Encoder::Encode(const EXPR_NODE& from, Image& to) {
  using R = disk::ExpressionRec;
  to.Put(R::Token, from.Token);
  to.Put(R::TokenName, TokenName(from.Token));
  to.Refer(R::Statement, from.Statement);
  to.Put(R::Literal, from.Literal != nullptr ? texts_.Add(from.Text()) : texts_.Add(from.name));
  to.Put(R::LiteralLength, from.LiteralLength);
  to.Put(R::StarRefCount, from.StarRefCount);
  to.Put(R::NumberValue, from.NumberValue);
  to.Put(R::NumberSize, from.NumberSize);
  to.Put(R::ImmediateClass, from.ImmediateClass);
  to.Put(R::CallWithoutParens, from.CallWithoutParens);
  to.Put(R::IsLvalue, from.IsLvalue);
  to.Put(R::NewObject, from.NewObject);
  to.Put(R::NewArray, from.NewArray);
  to.Put(R::CastTypeName, CastTypeNames[from.Cast == nullptr ? CAST_NONE : from.Cast->CastType]);
  to.Refer(R::Cast, from.Cast);
  to.Refer(R::Symbol, from.Symbol);
  to.Refer(R::OwnerObject, from.OwnerObject);
  to.Refer(R::Function, from.Function);
  to.Refer(R::Arguments, from.Arguments);
  to.Refer(R::NextArgument, from.NextArgument);
  to.Refer(R::Next, from.Next);
  to.Refer(R::Prev, from.Prev);
  to.Refer(R::SubExpression, from.SubExpression);
  to.Refer(R::IndexExpression, from.IndexExpression);
  to.Refer(R::NextDimension, from.NextDimension);
  to.Refer(R::ThenExpression, from.ThenExpression);
  to.Refer(R::ElseExpression, from.ElseExpression);
  to.Refer(R::NewClass, from.NewClass);
  to.Put(R::Line, from.Line.Line);
}

void Encoder::Encode(const STRUCT_REC& from, Image& to) {
  using R = disk::StructRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Put(R::StructSize, from.StructSize);
  to.Put(R::DeclType, from.DeclType);
  to.PutStorage(R::StorageType, R::StorageTypeName, from.StorageType);
  to.Put(R::IsForwardDeclared, from.IsForwardDeclared);
  for (size_t i = 0; i < kBasesKept; ++i) {
    to.PutAt(R::Parents.offset + i * sizeof(int64_t), sizeof(int64_t), -1);
    to.PutAt(R::Friends.offset + i * sizeof(int64_t), sizeof(int64_t), -1);
  }
  size_t count = 0;
  for (const PARENT_NODE* node : from.Parents) {
    if (count < kBasesKept) {
      to.PutAt(R::Parents.offset + count * sizeof(int64_t), sizeof(int64_t), IndexOf(node->Struct));
      to.PutAt(R::ParentAccess.offset + count, 1, node->Access);
    }
    ++count;
  }
  to.Put(R::ParentCount, count);
  count = 0;
  for (const FRIEND_NODE* node : from.FriendClasses) {
    if (count < kBasesKept)
      to.PutAt(R::Friends.offset + count * sizeof(int64_t), sizeof(int64_t), IndexOf(node->Struct));
    ++count;
  }
  to.Put(R::FriendCount, count);
  to.PutScope(R::MembersHeader, from.MembersHeader, from.Index);
  to.Put(R::Body, -1);
  to.Refer(R::Constructor, from.Constructor);
  to.Refer(R::OwnerStruct, from.OwnerStruct);
  to.Refer(R::Destructor, from.Destructor);
  to.Refer(R::DerivedFrom, from.DerivedFrom);
  to.Refer(R::Next, from.Next);
}

void Encoder::Encode(const ENUM_REC& from, Image& to) {
  using R = disk::EnumRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Refer(R::FirstElement, R::LastElement, from.Elements);
  to.Refer(R::Next, from.Next);
}

void Encoder::Encode(const ENUM_ELEMENT& from, Image& to) {
  using R = disk::EnumElementRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Put(R::Value, from.Value);
  to.Refer(R::Next, from.Next);
}

int64_t DeclaredIndex(const DECL_SEQ& node) {
  switch (node.DeclType) {
    case DECLTYPE_SYMBOL_RECORD: return IndexOf(static_cast<const SYM_REC*>(node.Record));
    case DECLTYPE_TYPEDEF_RECORD: return IndexOf(static_cast<const TYPEDEF_REC*>(node.Record));
    case DECLTYPE_STRUCT_RECORD: return IndexOf(static_cast<const STRUCT_REC*>(node.Record));
    case DECLTYPE_ENUM_RECORD: return IndexOf(static_cast<const ENUM_REC*>(node.Record));
    default: return -1;
  }
}

void Encoder::Encode(const DECL_SEQ& from, Image& to) {
  using R = disk::DeclarationRec;
  to.Put(R::DeclType, from.DeclType);
  to.Put(R::DeclTypeName, DeclTypeNames[from.DeclType]);
  to.Put(R::Record, DeclaredIndex(from));
  to.Put(R::Line, from.Line.Line);
  to.Refer(R::Next, from.Next);
}

void Encoder::Encode(const INITIALIZER& from, Image& to) {
  using R = disk::InitializerRec;
  to.Put(R::InitializerType, from.InitializerType);
  to.Put(R::InitializerTypeName, InitializerTypeNames[from.InitializerType]);
  to.Put(R::Line, from.Line.Line);
  to.Refer(R::Expression, from.Expression);
  to.Put(R::Count, from.List.Count);
  to.Refer(R::First, R::Last, from.List);
  to.Refer(R::Next, from.Next);
}

void Encoder::Encode(const CAST& from, Image& to) {
  using R = disk::CastRec;
  to.Put(R::CastType, from.CastType);
  to.Put(R::CastTypeName, CastTypeNames[from.CastType]);
  to.Put(R::TypeToken, from.TypeToken);
  to.Put(R::PointerDepth, from.PointerDepth);
  to.Refer(R::Typedef, from.Typedef);
  to.Refer(R::Struct, from.Struct);
  to.Refer(R::Function, from.Function);
}

void Encoder::Encode(const DEFINE_REC& from, Image& to) {
  using R = disk::DefineRec;
  to.Put(R::Name, texts_.Add(from.name));
  to.Put(R::FileName, slot_.Sources.FileName(from.Line));
  to.Put(R::LineNumber, from.Line.Line);
  to.Put(R::State, from.name != nullptr && from.name->Define == &from ? kLive : kRemoved);
  to.Put(R::Type, from.Type);
  to.Put(R::ItemCount, from.ItemCount);
  to.Refer(R::FirstItem, R::LastItem, from.Items);
  to.Put(R::ParameterCount, from.ParameterCount);
  to.Refer(R::FirstParameter, R::LastParameter, from.Parameters);
}

void Encoder::Encode(const DEFINE_ITEM& from, Image& to) {
  using R = disk::DefineItemRec;
  to.Put(R::Token, from.Token);
  to.Put(R::Text, texts_.Add(from.Text));
  to.Refer(R::Next, from.Next);
}

void Encoder::Begin(DiskTable table, uint64_t count) {
  directory_.entries[static_cast<size_t>(table)] = {count, directory_.bytes};
}

bool Encoder::Append(std::span<const uint8_t> bytes) {
  open_ = open_ && (bytes.empty() || sink_.Append(bytes));
  directory_.bytes += bytes.size();
  return open_;
}

// Without the dimensions that the symbol hasn't.
bool Encoder::AppendTrimmed(std::span<const uint8_t> symbol) {
  const auto count = static_cast<int16_t>(GetNumber(symbol, disk::SymbolRec::DimensionCount));
  return Append(symbol.first(kSymbolHead + StoredDimensions(count) * kDimensionBytes)) &&
         Append(symbol.subspan(kSymbolTail));
}

void Encoder::Pieces(DiskTable table, std::span<const uint8_t> bytes, uint64_t count) {
  Begin(table, count);
  Append(bytes);
}

template <typename Layout, typename T>
void Encoder::Table(DiskTable table, const RecordTable<T>& records) {
  Begin(table, records.count());
  Image image(Layout::kBytes);
  for (size_t i = 0; i < records.count() && open_; ++i) {
    image.Clear();
    image.Put(Layout::Index, i);
    Encode(*records.At(i), image);
    if constexpr (std::is_same_v<T, SYM_REC>)
      AppendTrimmed(image.bytes());
    else
      Append(image.bytes());
  }
}

// Links that the records in memory have in one direction only.
void Encoder::CollectLinks() {
  for (size_t i = 0; i < slot_.FuncPrototypes.count(); ++i) {
    const FUNCPROTO_REC* function = slot_.FuncPrototypes.At(i);
    if (function->NextOverload != nullptr) previous_overload_[function->NextOverload] = function;
  }
  for (size_t i = 0; i < slot_.CodeBlocks.count(); ++i) {
    const CODE_BLOCK* block = slot_.CodeBlocks.At(i);
    if (block->ParentStatement != nullptr)
      child_blocks_.try_emplace(block->ParentStatement, block, block).first->second.second = block;
  }
}

// The pools stand in front of much that names them, and so they are filled first.
void Encoder::CollectTexts() {
  const auto names = [this](const auto& table) {
    for (size_t i = 0; i < table.count(); ++i) texts_.Add(table.At(i)->name);
  };
  for (size_t i = 0; i < slot_.SymbolRecords.count(); ++i)
    tokens_.Add(TokenName(slot_.SymbolRecords.At(i)->BasicType));
  names(slot_.SymbolRecords);
  names(slot_.Typedefs);
  names(slot_.FuncPrototypes);
  names(slot_.ProcTables);
  names(slot_.Structs);
  names(slot_.EnumRecords);
  names(slot_.EnumElements);
  names(slot_.DefineRecords);
  for (size_t i = 0; i < slot_.StatementBlocks.count(); ++i)
    texts_.Add(slot_.StatementBlocks.At(i)->GotoLabel);
  for (size_t i = 0; i < slot_.Expressions.count(); ++i) {
    const EXPR_NODE& node = *slot_.Expressions.At(i);
    if (node.Literal != nullptr)
      texts_.Add(node.Text());
    else
      texts_.Add(node.name);
  }
  for (size_t i = 0; i < slot_.DefineItems.count(); ++i) texts_.Add(slot_.DefineItems.At(i)->Text);
}

void Encoder::Statics() {
  using R = disk::ProcStaticRec;
  Begin(DiskTable::kProcStatic, slot_.ProcStatics.size());
  Image image(R::kBytes);
  for (size_t i = 0; i < slot_.ProcStatics.size(); ++i) {
    image.Clear();
    image.Put(R::Index, i);
    image.Refer(R::Symbol, slot_.ProcStatics[i]);
    image.Put(R::Name, texts_.Add(slot_.ProcStatics[i]->name));
    Append(image.bytes());
  }
}

// The compiler makes no unresolved records, relocations and line numbers: those are the assembler's.
TableDirectory Encoder::Run() {
  CollectLinks();
  CollectTexts();
  Pieces(DiskTable::kTokens, tokens_.bytes(), tokens_.bytes().size());
  Table<disk::SymbolRec>(DiskTable::kSymbol, slot_.SymbolRecords);
  Table<disk::TypedefRec>(DiskTable::kTypedef, slot_.Typedefs);
  Table<disk::FunctionRec>(DiskTable::kFunction, slot_.FuncPrototypes);
  Table<disk::ProcedureRec>(DiskTable::kProcedure, slot_.ProcTables);
  Table<disk::CodeBlockRec>(DiskTable::kCodeBlock, slot_.CodeBlocks);
  Table<disk::StatementRec>(DiskTable::kStatement, slot_.StatementBlocks);
  Table<disk::ExpressionRec>(DiskTable::kExpression, slot_.Expressions);
  Table<disk::StructRec>(DiskTable::kStruct, slot_.Structs);
  Pieces(DiskTable::kStrings, texts_.bytes(), texts_.bytes().size());
  Pieces(DiskTable::kUnresolved, {}, 0);
  Pieces(DiskTable::kRelocation, {}, 0);
  Table<disk::EnumRec>(DiskTable::kEnum, slot_.EnumRecords);
  Table<disk::EnumElementRec>(DiskTable::kEnumElement, slot_.EnumElements);
  Pieces(DiskTable::kLineNumber, {}, 0);
  Table<disk::DeclarationRec>(DiskTable::kDeclaration, slot_.DeclSequence);
  Table<disk::InitializerRec>(DiskTable::kInitializer, slot_.InitializerElements);
  Table<disk::CastRec>(DiskTable::kCast, slot_.Casts);
  Table<disk::DefineRec>(DiskTable::kDefine, slot_.DefineRecords);
  Table<disk::DefineItemRec>(DiskTable::kDefineItem, slot_.DefineItems);
  Statics();
  return directory_;
}

}  // namespace

TableDirectory EncodeProgram(const C_SLOT& slot, TableSink& sink) {
  return Encoder(slot, sink).Run();
}

}  // namespace vorc
