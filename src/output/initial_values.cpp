#include "output/initial_values.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "base/truncate.h"
#include "program/constants.h"
#include "program/initializer_walk.h"
#include "program/layout.h"
#include "program/value_type.h"

namespace vorc {

namespace {

void PutBytes(TextWriter& out, const InitialCell& cell) {
  for (int64_t i = 0; i < cell.bytes; ++i) out.Write("0x", Hex{ByteOf(cell, i), 2}, ',');
}

void PutName(TextWriter& out, const InitialCell& cell) {
  out.Write(cell.name);
  if (cell.distance != 0) out.Write('+', cell.distance);
}

// One element in the form of its width.
void PutElement(TextWriter& out, const InitialCell& cell) {
  if (!cell.name.empty()) return PutName(out, cell);
  if (cell.bytes == 8) return out.Write(Hex{cell.number, 16});
  out.Write("0x");
  for (int64_t i = cell.bytes; i-- > 0;) out.Write(Hex{ByteOf(cell, i), 2});
}

void SetInteger(InitialCell& cell, int64_t value) {
  cell.number = static_cast<uint64_t>(value);
  cell.high = value < 0 ? ~uint64_t{0} : 0;
}

// Ten bytes: 64 bits of fraction with their leading one, then sign and exponent.
void SetLongDouble(InitialCell& cell, double real) {
  constexpr int kBias = 16382;
  cell.high = std::signbit(real) ? 0x8000 : 0;
  if (real == 0) return;
  if (!std::isfinite(real)) {
    constexpr uint64_t kInfinity = uint64_t{1} << 63;
    constexpr uint64_t kNotANumber = kInfinity | uint64_t{1} << 62;
    cell.number = std::isnan(real) ? kNotANumber : kInfinity;
    cell.high |= 0x7fff;
    return;
  }
  int exponent = 0;
  cell.number = static_cast<uint64_t>(std::ldexp(std::frexp(std::fabs(real), &exponent), 64));
  cell.high |= static_cast<uint64_t>(exponent + kBias);
}

class CellCollector {
 public:
  CellCollector(CodegenContext& context, UnnamedStrings& strings) : context_(context), strings_(strings) {}

  InitialCells Run(const SYM_REC* symbol);

 private:
  void PutLeaf(const InitializerLeaf& leaf);
  void PutText(const InitializerLeaf& leaf, std::string_view text);
  InitialCell CellOf(const InitializerLeaf& leaf, const ValueType& type);

  CodegenContext& context_;
  UnnamedStrings& strings_;
  InitialCells cells_;
};

InitialCell CellCollector::CellOf(const InitializerLeaf& leaf, const ValueType& type) {
  InitialCell cell;
  cell.bytes = type.Size(context_.slot);
  ConstantValue value;
  if (!EvalConstantExpression(context_.slot, leaf.element->Expression, &value)) return cell;
  SetInteger(cell, value.integer);
  const bool real_target = type.IsReal();
  if (value.IsNumber() && (real_target || value.kind == ConstantValue::Kind::kReal)) {
    const double real =
        value.kind == ConstantValue::Kind::kReal ? value.real : static_cast<double>(value.integer);
    cell.number = cell.high = 0;
    if (!real_target)
      SetInteger(cell, TruncatedToInteger(real));
    else if (cell.bytes > static_cast<int64_t>(sizeof(double)))
      SetLongDouble(cell, real);
    else if (cell.bytes == sizeof(float))
      cell.number = std::bit_cast<uint32_t>(static_cast<float>(real));
    else
      cell.number = std::bit_cast<uint64_t>(real);
  }
  if (value.kind == ConstantValue::Kind::kText) {
    cell.name = strings_.AddUnnamedStringToDataSection(leaf.element->Expression->Text(), leaf.element->Line);
    cell.is_text = true;
  }
  if (value.kind == ConstantValue::Kind::kFunction) cell.name = AsmNameOf(context_, value.function);
  if (value.symbol != nullptr) {
    cell.name = value.symbol->name->Text;
    cell.distance = value.integer;
  }
  return cell;
}

void CellCollector::PutText(const InitializerLeaf& leaf, std::string_view text) {
  for (size_t i = 0; i < text.size() && static_cast<int64_t>(i) < leaf.text_room; ++i) {
    InitialCell& cell = cells_[leaf.offset + static_cast<int64_t>(i)];
    cell = {};
    cell.number = static_cast<unsigned char>(text[i]);
  }
}

void CellCollector::PutLeaf(const InitializerLeaf& leaf) {
  const EXPR_NODE* head = leaf.element->Expression;
  if (leaf.text_room > 0 && head != nullptr && head->Token == Tok::STRING) return PutText(leaf, head->Text());
  ValueType type = ValueType::OfSymbol(*leaf.symbol);
  while (type.IsArray()) type = type.Element();
  InitialCell cell = CellOf(leaf, type);
  if (leaf.symbol->BitFieldWidth > 0) {
    InitialCell& unit = cells_[leaf.offset];
    const uint64_t mask =
        leaf.symbol->BitFieldWidth >= 64 ? ~uint64_t{0} : (uint64_t{1} << leaf.symbol->BitFieldWidth) - 1;
    unit.bytes = cell.bytes;
    unit.number |= (cell.number & mask) << leaf.symbol->BitFieldOffset;
    return;
  }
  cells_[leaf.offset] = cell;
}

InitialCells CellCollector::Run(const SYM_REC* symbol) {
  const auto put = [&](const InitializerLeaf& leaf) { PutLeaf(leaf); };
  InitializerWalk(context_.slot, put).Run(symbol);
  return std::move(cells_);
}

class ValueWriter {
 public:
  ValueWriter(CodegenContext& context, const SYM_REC* symbol)
      : context_(context), symbol_(symbol), cells_(CollectInitialCells(context, context.strings, symbol)) {}

  void Run();

 private:
  void WriteStruct(int64_t size);
  void WriteArray(int64_t element, int64_t count, bool is_text);

  CodegenContext& context_;
  const SYM_REC* symbol_;
  const InitialCells cells_;
};

void ValueWriter::WriteStruct(int64_t size) {
  TextWriter& out = context_.assembly;
  out.Write("{\n");
  int64_t at = 0;
  for (const auto& [offset, cell] : cells_) {
    for (; at < offset; ++at) out.Write("0x00,");
    if (cell.name.empty()) {
      PutBytes(out, cell);
    } else {
      PutName(out, cell);
      out.Write(',');
    }
    at = offset + cell.bytes;
  }
  for (; at < size; ++at) out.Write("0x00,");
  out.Write("};\n");
}

// Numbers and texts end with a comma each; eight bytes and addresses have one between them.
void ValueWriter::WriteArray(int64_t element, int64_t count, bool is_text) {
  TextWriter& out = context_.assembly;
  const ArrayShape& shape = symbol_->Shape;
  out.Write(!is_text && shape.DimensionCount == 1 && shape.CountedFirstDimension ? "{\n" : "{");
  for (int64_t i = 0; i < count; ++i) {
    const auto found = cells_.find(i * element);
    const InitialCell cell = found == cells_.end() ? InitialCell{element} : found->second;
    PutElement(out, cell);
    const bool last = i + 1 == count;
    if (!last || cell.is_text || !(is_text || cell.bytes == 8)) out.Write(',');
  }
  out.Write("};\n");
}

void ValueWriter::Run() {
  ValueType type = ValueType::OfSymbol(*symbol_);
  const int64_t count = ElementCount(context_, symbol_);
  const bool array = type.IsArray();
  while (type.IsArray()) type = type.Element();
  const int64_t element = type.Size(context_.slot);
  if (type.IsStruct()) return WriteStruct(element * count);
  if (array) return WriteArray(element, count, symbol_->Initializer.First->Expression != nullptr);
  if (!cells_.empty())
    PutElement(context_.assembly, cells_.begin()->second);
  else if (element <= 2)
    PutElement(context_.assembly, InitialCell{element});
  else
    context_.assembly.Write('0');
  context_.assembly.Write(";\n");
}

}  // namespace

uint8_t ByteOf(const InitialCell& cell, int64_t index) {
  constexpr int64_t kWord = 8;
  if (index < kWord) return static_cast<uint8_t>(cell.number >> 8 * index);
  const auto high = static_cast<int64_t>(cell.high);
  return static_cast<uint8_t>(high >> std::min<int64_t>(8 * (index - kWord), 63));
}

InitialCells CollectInitialCells(CodegenContext& context, UnnamedStrings& strings, const SYM_REC* symbol) {
  return CellCollector(context, strings).Run(symbol);
}

int64_t ElementCount(CodegenContext& context, const SYM_REC* symbol) {
  int64_t count = 1;
  for (int i = 0; i < symbol->Shape.DimensionCount; ++i) {
    int64_t dimension = symbol->Shape.Dimensions[i];
    if (dimension == 0 && i == 0 && symbol->Initializer.First != nullptr) {
      const auto ignore = [](const InitializerLeaf&) {};
      dimension = InitializerWalk(context.slot, ignore).Run(symbol);
    }
    count = SizeProduct(count, dimension);
  }
  return count;
}

void WriteInitialValue(CodegenContext& context, const SYM_REC* symbol) {
  ValueWriter(context, symbol).Run();
}

}  // namespace vorc
