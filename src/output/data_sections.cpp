#include "output/data_sections.h"

#include <algorithm>

#include "base/format.h"
#include "output/initial_values.h"
#include "program/layout.h"
#include "program/value_type.h"

namespace vorc {

namespace {

constexpr const char* kStars = "/************************************/\n";

void BeginSection(TextWriter& out, const char* title, const char* name) {
  out.Write(kStars, title, kStars, "SECTION   ", name, "\nBEGIN\n");
}

void EndSection(TextWriter& out, const char* name) {
  out.Write("\nEND   //SECTION ", name, "\n/* * * */\n");
}

template <typename... Parts>
void Line(TextWriter& out, SourceLine line, const Parts&... parts) {
  out.Write("/*", Padded{line.Line, 6}, ":*/", parts...);
}

// The data directive of a type; empty for what holds no data.
std::string_view TranslateCtype2Asmtype(const C_SLOT& slot, const ValueType& type) {
  if (type.IsPointer()) return slot.Target.AddressBytes() == 4 ? "BYTE4" : "BYTE8";
  switch (GetBasicTypeSize(slot, type.basic)) {
    case 1: return "BYTE1";
    case 2: return "BYTE2";
    case 4: return "BYTE4";
    case 8: return "BYTE8";
    case 10:
    case 16: return "BYTE16";
    case 32: return "BYTE32";
    default: return {};
  }
}

ValueType ElementType(const SYM_REC* symbol) {
  ValueType type = ValueType::OfSymbol(*symbol);
  while (type.IsArray()) type = type.Element();
  return type;
}

bool IsStructData(const SYM_REC* symbol) {
  return symbol->Struct != nullptr;
}

bool IsOpen(const SYM_REC* symbol) {
  const ArrayShape& shape = symbol->Shape;
  return std::find(shape.Dimensions, shape.Dimensions + shape.DimensionCount, 0) !=
         shape.Dimensions + shape.DimensionCount;
}

// An array without initial value takes the sum of its dimensions.
int64_t SumOfDimensions(const SYM_REC* symbol) {
  int64_t sum = 0;
  for (int i = 0; i < symbol->Shape.DimensionCount; ++i) sum += symbol->Shape.Dimensions[i];
  return sum;
}

const char* StorageWord(const SYM_REC* symbol) {
  return (symbol->StorageType & STATIC_VAR) != 0 ? "" : "GLOBAL";
}

void QuoteLine(CodegenContext& context, SourceLine line) {
  Line(context.assembly, line, "//", QuotedLine(context.slot, line), '\n');
}

void QuoteStruct(CodegenContext& context, const SYM_REC* symbol) {
  const STRUCT_REC* record = symbol->Struct;
  for (SourceLine line = record->StartLine; line.Line <= record->EndLine.Line; ++line.Line)
    QuoteLine(context, line);
}

void DescribeStruct(CodegenContext& context, const SYM_REC* symbol) {
  Line(context.assembly, symbol->Line, " //", QuotedLine(context.slot, symbol->Line),
       " (name=", symbol->name->Text, " size=", GetObjectStructSize(symbol->Struct),
       " star_count=", symbol->TotalDepth, " array_dimension_count=", symbol->Shape.DimensionCount,
       " static=", (symbol->StorageType & STATIC_VAR) != 0 ? 1 : 0, ")\n");
}

std::string_view StructDirective(const CodegenContext& context, const ValueType& type) {
  return type.IsPointer() ? TranslateCtype2Asmtype(context.slot, type) : "BYTE1";
}

void EmitUnset(CodegenContext& context, const SYM_REC* symbol) {
  TextWriter& out = context.assembly;
  const std::string_view name = symbol->name->Text;
  const bool is_struct = IsStructData(symbol);
  const bool array = symbol->Shape.DimensionCount > 0;
  if (is_struct) QuoteStruct(context, symbol);
  if ((symbol->StorageType & EXTERN_VAR) != 0) return Line(out, symbol->Line, " EXTERN ", name, ";\n");
  const ValueType type = ElementType(symbol);
  if (!is_struct) {
    QuoteLine(context, symbol->Line);
    Line(out, symbol->Line, ' ', StorageWord(symbol), ' ', TranslateCtype2Asmtype(context.slot, type), ' ',
         name);
    if (!array) return out.Write(";\n");
    if (IsOpen(symbol)) return out.Write("[];\n");
    return out.Write('[', SumOfDimensions(symbol), "];\n");
  }
  DescribeStruct(context, symbol);
  const std::string_view directive = StructDirective(context, type);
  const int64_t size = GetObjectStructSize(symbol->Struct);
  if (array) {
    out.Write(directive, ' ', name, " \n");
    if (IsOpen(symbol)) return out.Write("[] \n");
    // Of pointers as well; those to a type that is only announced take their own room.
    return out.Write('[', SumOfDimensions(symbol) * (type.IsPointer() && size == 0 ? 1 : size), "] \n");
  }
  if (type.IsPointer()) return out.Write(directive, ' ', name, " ;\n");
  out.Write(directive, ' ', name, '[', size, "] ;\n");
}

void EmitInitialized(CodegenContext& context, const SYM_REC* symbol) {
  TextWriter& out = context.assembly;
  const std::string_view name = symbol->name->Text;
  const ValueType type = ElementType(symbol);
  const bool array = symbol->Shape.DimensionCount > 0;
  const int64_t count = ElementCount(context, symbol);
  if (IsStructData(symbol)) {
    DescribeStruct(context, symbol);
    out.Write(StructDirective(context, type), ' ', name, ' ');
    if (array) out.Write('[', type.IsPointer() ? count : count * GetObjectStructSize(symbol->Struct), "] ");
    if (array && type.IsPointer()) out.Write('\n');
    out.Write("= ");
  } else {
    QuoteLine(context, symbol->Line);
    Line(out, symbol->Line, ' ', StorageWord(symbol), ' ', TranslateCtype2Asmtype(context.slot, type), ' ',
         name);
    if (array) out.Write('[', count, ']');
    out.Write(" = ");
  }
  WriteInitialValue(context, symbol);
}

bool HasInitialValue(const SYM_REC* symbol) {
  return symbol->Initializer.First != nullptr;
}

// Globals in the order of their declaration, then function statics.
template <typename Emit>
void ForEachVariable(CodegenContext& context, bool initialized, Emit emit) {
  for (const SYM_REC* symbol : context.slot.Globals.Symbols) {
    if (!symbol->IsLabel && !symbol->OnlyCalled && HasInitialValue(symbol) == initialized)
      emit(context, symbol);
  }
  for (const SYM_REC* symbol : context.slot.ProcStatics) {
    if (HasInitialValue(symbol) == initialized) emit(context, symbol);
  }
}

std::string EscapeStringForAsmOutput(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '\t': escaped += "\\t"; break;
      case '\n': escaped += "\\n"; break;
      case '\r': escaped += "\\r"; break;
      case '"': escaped += "\\\""; break;
      case '\\': escaped += "\\\\"; break;
      default: escaped += c;
    }
  }
  return escaped;
}

void WriteStringsForAnalysers(CodegenContext& context) {
  TextWriter& out = context.ai_input;
  out.Write("BEGIN string data\n");
  for (const UnnamedStrings::Record& record : context.strings.records()) {
    out.Write("STR:", record.label, " len=", record.text.size() + 1, " bytes=");
    for (const char c : record.text) out.Write(Hex{static_cast<unsigned char>(c), 2});
    out.Write("00\n");
  }
  out.Write("END string data\n");
}

}  // namespace

void RenameProcStatics(CodegenContext& context) {
  for (SYM_REC* symbol : context.slot.ProcStatics) {
    symbol->name = context.slot.Names.Intern(
        Format("%s_%lld_static", symbol->name->c_str(), static_cast<long long>(symbol->Index)));
  }
}

void EmitAssemblyBssSection(CodegenContext& context) {
  BeginSection(context.assembly, "/*********** SECTION BSS ************/\n", "BSS");
  ForEachVariable(context, false, EmitUnset);
  EndSection(context.assembly, "BSS");
}

void EmitAssemblyDataSection(CodegenContext& context) {
  BeginSection(context.assembly, "/*********** SECTION DATA ************/\n", "DATA");
  ForEachVariable(context, true, EmitInitialized);
  EndSection(context.assembly, "DATA");
}

void EmitAssemblyUnnamedStringDataSection(CodegenContext& context) {
  const auto& records = context.strings.records();
  if (records.empty()) return;
  WriteStringsForAnalysers(context);
  TextWriter& out = context.assembly;
  constexpr const char* kRule = "/***************************************/\n";
  out.Write(kRule, "/*********** SECTION DATA   ************/\n",
            "/*********** FOR UNNAMED STRINGS   *****/\n", "/*********** NOT ATTACHED TO ANY    ****/\n",
            "/*********** VARIABLE NAME SUCH AS   ***/\n", "/*********** STRING PASSED AS ARGUMENT */\n",
            kRule, "SECTION   DATA\nBEGIN\n");
  for (const UnnamedStrings::Record& record : records)
    Line(out, record.line, " \tBYTE1 ", record.label, "[]=\"", EscapeStringForAsmOutput(record.text),
         "\";\n");
  EndSection(out, "DATA");
}

}  // namespace vorc
