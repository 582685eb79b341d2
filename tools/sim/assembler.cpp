#include "sim/assembler.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <unordered_map>

#include "base/format.h"

namespace vorc::sim {
namespace {

constexpr uint32_t kNoProcedure = UINT32_MAX;
constexpr uint8_t kZeroRegister = kConstantRegister + 1;

// A name in an instruction, looked up when all lines have been read.
struct CodeFixup {
  uint32_t index;
  Form form;
  std::string_view name;
  int64_t addend;
};

struct Operand {
  std::string_view text;
  bool bracketed = false;
  std::string_view second;  // behind the comma or sign in brackets
};

std::string Quoted(std::string_view text) {
  return "'" + std::string(text.substr(0, 80)) + "'";
}

struct LabelKey {
  uint32_t procedure;
  std::string_view name;
  bool operator==(const LabelKey&) const = default;
};

struct LabelHash {
  size_t operator()(const LabelKey& key) const {
    return std::hash<std::string_view>()(key.name) * 31 + key.procedure;
  }
};

class Assembler {
 public:
  Assembler(std::string_view text, const AssemblyOptions& options, AssemblyError* error);
  std::optional<Program> Run();

 private:
  bool Fail(std::string message) { return FailAt(line_, std::move(message)); }
  bool FailAt(uint32_t line, std::string message) {
    *error_ = {line, std::move(message)};
    return false;
  }

  bool ReadAll();
  bool ReadDirective(const Token& word);
  bool ReadWidth(const Token& word, int* bits);
  bool ReadSection();
  bool ReadCode();
  bool ReadCodeLine(Token word);
  bool BeginProcedure();
  bool EndOfBlock();
  bool AddLabel(std::string_view name);

  bool ReadInstruction(const Token& word);
  bool ReadOperands(std::vector<Operand>* operands);
  bool ReadBracketed(Operand* operand);
  bool Encode(const Mnemonic& mnemonic, std::string_view word, const std::vector<Operand>& operands);
  bool EncodeAlu(const std::vector<Operand>& operands, Instruction* instruction);
  bool EncodeUnary(const std::vector<Operand>& operands, Instruction* instruction);
  bool EncodeTwo(Form form, const std::vector<Operand>& operands, Instruction* instruction);
  bool EncodeMemory(const std::vector<Operand>& operands, Instruction* instruction);
  bool EncodeAddressOf(const std::vector<Operand>& operands, Instruction* instruction);
  bool Register(std::string_view text, uint8_t* number);
  bool RegisterOrConstant(std::string_view text, Instruction* instruction, uint8_t* number);
  void Reference(Form form, std::string_view text);
  bool Append(Instruction instruction);

  bool DefineNames();
  bool Resolve(const CodeFixup& fixup);
  bool ResolveJump(const CodeFixup& fixup, Instruction* instruction);
  bool ResolveCall(const CodeFixup& fixup, Instruction* instruction);
  std::optional<uint64_t> FindAddress(std::string_view name, uint32_t procedure) const;
  std::optional<uint32_t> FindLabel(std::string_view name, uint32_t procedure) const;
  void MakeUndefined(Instruction* instruction, std::string message);
  bool ResolveData();

  Program program_;
  AssemblyOptions options_;
  AssemblyError* error_;
  std::vector<uint32_t> source_lines_;
  std::vector<std::string_view> lines_;
  Scanner scanner_{{}};
  std::optional<DataSection> data_;
  uint32_t line_ = 0;
  uint32_t procedure_ = kNoProcedure;
  bool writes_pc_ = false;
  std::vector<CodeFixup> fixups_;
  std::unordered_map<LabelKey, uint32_t, LabelHash> labels_;
  std::unordered_map<std::string_view, uint32_t> procedure_numbers_;
};

Assembler::Assembler(std::string_view text, const AssemblyOptions& options, AssemblyError* error)
    : options_(options), error_(error) {
  program_.text.assign(text.begin(), text.end());
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find('\n', start), text.size());
    source_lines_.push_back(SourceLineOf(text.substr(start, end - start)));
    start = end + 1;
  }
  BlankComments(&program_.text);
  const std::string_view blanked(program_.text.data(), program_.text.size());
  for (size_t start = 0; start < blanked.size();) {
    const size_t end = std::min(blanked.find('\n', start), blanked.size());
    lines_.push_back(Trim(blanked.substr(start, end - start)));
    start = end + 1;
  }
  scanner_ = Scanner(blanked);
}

std::optional<Program> Assembler::Run() {
  if (!ReadAll()) return std::nullopt;
  program_.base = options_.base.value_or(program_.pic ? kPicBase : 0);
  if (!DefineNames()) return std::nullopt;
  for (const CodeFixup& fixup : fixups_) {
    if (!Resolve(fixup)) return std::nullopt;
  }
  if (!ResolveData()) return std::nullopt;
  return std::move(program_);
}

bool Assembler::ReadAll() {
  while (true) {
    const Token token = scanner_.Next();
    line_ = token.line;
    if (token.kind == Token::kEndOfFile) return true;
    if (token.kind == Token::kEndOfLine || token.Is(';')) continue;
    if (token.kind != Token::kWord) return Fail("unexpected " + Quoted(token.text));
    if (!ReadDirective(token)) return false;
  }
}

bool Assembler::ReadDirective(const Token& word) {
  if (word.IsWord("CPUSIZE")) return ReadWidth(word, &program_.cpu_bits);
  if (word.IsWord("ADDRSIZE")) return ReadWidth(word, &program_.address_bits);
  if (word.IsWord("EXEFORMAT")) return scanner_.RestOfLine(), true;
  if (word.IsWord("SECTION")) return ReadSection();
  if (word.IsWord("PIC")) return program_.pic = true;
  return Fail("unknown directive " + Quoted(word.text));
}

bool Assembler::ReadWidth(const Token& word, int* bits) {
  const Token value = scanner_.Next();
  if (!value.IsWord("32") && !value.IsWord("64")) return Fail(std::string(word.text) + " wants 32 or 64");
  *bits = value.IsWord("32") ? 32 : 64;
  return true;
}

bool Assembler::ReadSection() {
  const Token name = scanner_.Next();
  Token begin = scanner_.Next();
  while (begin.kind == Token::kEndOfLine) begin = scanner_.Next();
  if (!begin.IsWord("BEGIN")) return FailAt(begin.line, "a section wants BEGIN");
  if (!data_)
    data_.emplace(options_.gap, std::min(options_.data_bytes, kMaxDataBytes), program_.address_bits / 8);
  if (name.IsWord("CODE")) return ReadCode();
  if (name.IsWord("BSS") || name.IsWord("DATA")) return data_->Read(&scanner_, error_);
  return Fail("unknown section " + Quoted(name.text));
}

bool Assembler::ReadCode() {
  while (true) {
    const Token token = scanner_.Next();
    line_ = token.line;
    if (token.kind == Token::kEndOfFile) return Fail("the section has no END");
    if (token.kind == Token::kEndOfLine) continue;
    if (token.kind != Token::kWord) return Fail("unexpected " + Quoted(token.text));
    if (token.IsWord("END")) {
      if (procedure_ == kNoProcedure) return true;
      if (!EndOfBlock()) return false;
    } else if (!ReadCodeLine(token)) {
      return false;
    }
  }
}

bool Assembler::ReadCodeLine(Token word) {
  while (word.kind == Token::kWord && word.text.size() > 1 && word.text.ends_with(':')) {
    if (!AddLabel(word.text.substr(0, word.text.size() - 1))) return false;
    if (scanner_.Peek().kind != Token::kWord) return true;
    word = scanner_.Next();
  }
  // A line of arrows marks where a block begins.
  if (word.text.starts_with(">>>")) return scanner_.RestOfLine(), true;
  if (word.IsWord("PROCEDURE")) return BeginProcedure();
  if (word.IsWord("BEGIN")) return true;
  if (word.IsWord("EXTERN")) return data_->ReadExtern(&scanner_, error_);
  return ReadInstruction(word);
}

bool Assembler::BeginProcedure() {
  const std::string_view name = scanner_.RestOfLine();
  if (name.empty()) return Fail("PROCEDURE wants a name");
  if (procedure_ != kNoProcedure)
    return Fail("PROCEDURE " + std::string(name) + " stands inside another one");
  procedure_ = static_cast<uint32_t>(program_.procedures.size());
  if (!procedure_numbers_.emplace(name, procedure_).second) return Fail(Quoted(name) + " is defined twice");
  program_.procedures.push_back({std::string(name), static_cast<uint32_t>(program_.code.size())});
  return true;
}

bool Assembler::EndOfBlock() {
  Instruction end;
  end.operation = Operation::kEndOfProcedure;
  if (!Append(end)) return false;
  procedure_ = kNoProcedure;
  return true;
}

bool Assembler::AddLabel(std::string_view name) {
  const auto index = static_cast<uint32_t>(program_.code.size());
  return labels_.emplace(LabelKey{procedure_, name}, index).second ||
         Fail("label " + Quoted(name) + " stands twice");
}

bool Assembler::ReadInstruction(const Token& word) {
  const std::optional<Mnemonic> mnemonic = FindMnemonic(word.text);
  if (!mnemonic) return Fail("unknown instruction " + Quoted(word.text));
  std::vector<Operand> operands;
  if (mnemonic->row->form == Form::kCallForm || mnemonic->row->form == Form::kAnything) {
    const std::string_view rest = scanner_.RestOfLine();
    if (!rest.empty()) operands.push_back({rest, false, {}});
  } else if (!ReadOperands(&operands)) {
    return false;
  }
  return Encode(*mnemonic, word.text, operands);
}

bool Assembler::ReadOperands(std::vector<Operand>* operands) {
  const auto at_end = [this] {
    const Token& next = scanner_.Peek();
    return next.kind == Token::kEndOfLine || next.kind == Token::kEndOfFile || next.Is(';');
  };
  while (!at_end()) {
    Operand operand;
    const Token token = scanner_.Next();
    if (token.kind == Token::kWord) {
      operand.text = token.text;
    } else if (!token.Is('[')) {
      return Fail("unexpected " + Quoted(token.text));
    } else if (!ReadBracketed(&operand)) {
      return false;
    }
    operands->push_back(operand);
    if (at_end()) break;
    if (!scanner_.Next().Is(',')) return Fail("operands want a ',' between them");
  }
  scanner_.RestOfLine();
  return true;
}

bool Assembler::ReadBracketed(Operand* operand) {
  operand->bracketed = true;
  const Token base = scanner_.Next();
  if (base.kind != Token::kWord) return Fail("'[' wants a register or a name");
  operand->text = base.text;
  Token next = scanner_.Next();
  if (next.Is(',')) {
    operand->second = scanner_.Next().text;
    next = scanner_.Next();
  } else if (next.kind == Token::kWord && (next.text == "+" || next.text == "-")) {
    // The sign belongs to what follows: "[gpr1 + gpr2]".
    const Token second = scanner_.Next();
    operand->second = next.text == "+"
                          ? second.text
                          : std::string_view(next.text.data(), second.text.end() - next.text.data());
    next = scanner_.Next();
  } else if (const size_t sign = base.text.find_first_of("+-", 1); sign != std::string_view::npos) {
    operand->text = base.text.substr(0, sign);
    operand->second = base.text.substr(base.text[sign] == '+' ? sign + 1 : sign);
  }
  return next.Is(']') || Fail("'[' wants a ']'");
}

bool Assembler::Register(std::string_view text, uint8_t* number) {
  const int found = FindRegister(text);
  if (found < 0) return Fail("no register " + Quoted(text));
  *number = static_cast<uint8_t>(found);
  return true;
}

bool Assembler::RegisterOrConstant(std::string_view text, Instruction* instruction, uint8_t* number) {
  if (FindRegister(text) >= 0) return Register(text, number);
  const int width = instruction->shift == 32 ? 4 : 8;
  if (!ParseNumber(text, width, &instruction->constant))
    return Fail("neither register nor number: " + Quoted(text));
  *number = kConstantRegister;
  return true;
}

bool Assembler::Encode(const Mnemonic& mnemonic, std::string_view word,
                       const std::vector<Operand>& operands) {
  const InstructionRow& row = *mnemonic.row;
  const int cpu_bytes = program_.cpu_bits / 8;
  const int default_size = row.size == DefaultSize::kAddress ? program_.address_bits / 8 : cpu_bytes;
  const int size = mnemonic.size != 0 ? mnemonic.size : default_size;
  Instruction instruction;
  instruction.operation = row.operation;
  instruction.width = static_cast<uint8_t>(size);
  // Registers have the data width: a wider operation works on what they hold.
  instruction.shift = static_cast<uint8_t>(64 - 8 * std::min(size, cpu_bytes));
  instruction.detail = row.detail;
  const size_t count = operands.size();
  writes_pc_ = false;
  bool understood = true;
  switch (row.form) {
    case Form::kAlu: understood = (count == 2 || count == 3) && EncodeAlu(operands, &instruction); break;
    case Form::kUnary: understood = (count == 1 || count == 2) && EncodeUnary(operands, &instruction); break;
    case Form::kOneRegister: understood = count == 1 && EncodeUnary(operands, &instruction); break;
    case Form::kCompare:
    case Form::kConstant:
    case Form::kMoveForm: understood = count == 2 && EncodeTwo(row.form, operands, &instruction); break;
    case Form::kMemory: understood = count == 2 && EncodeMemory(operands, &instruction); break;
    case Form::kAddressOf:
      understood = (count == 2 || count == 3) && EncodeAddressOf(operands, &instruction);
      break;
    case Form::kTarget:
    case Form::kCallForm:
      understood = count == 1 && !operands[0].bracketed;
      if (understood) Reference(row.form, operands[0].text);
      break;
    case Form::kToLink:
      understood = count == 0;
      instruction.operation = Operation::kJumpRegister;
      instruction.a = kLink;
      break;
    case Form::kNoOperand: understood = count == 0; break;
    case Form::kAnything: break;
  }
  if (!understood) {
    if (error_->message.empty()) Fail(Quoted(word) + " wants " + std::string(FormText(row.form)));
    return false;
  }
  return Append(instruction);
}

bool Assembler::EncodeAlu(const std::vector<Operand>& operands, Instruction* instruction) {
  if (operands.back().bracketed || !Register(operands[0].text, &instruction->d)) return false;
  instruction->a = instruction->d;
  if (operands.size() == 3 && !Register(operands[1].text, &instruction->a)) return false;
  return RegisterOrConstant(operands.back().text, instruction, &instruction->b);
}

bool Assembler::EncodeUnary(const std::vector<Operand>& operands, Instruction* instruction) {
  return Register(operands[0].text, &instruction->d) && Register(operands.back().text, &instruction->a);
}

bool Assembler::EncodeTwo(Form form, const std::vector<Operand>& operands, Instruction* instruction) {
  if (operands[0].bracketed || operands[1].bracketed) return false;
  uint8_t* const first = form == Form::kCompare ? &instruction->a : &instruction->d;
  uint8_t* const second = form == Form::kCompare ? &instruction->b : &instruction->a;
  if (!Register(operands[0].text, first) || !RegisterOrConstant(operands[1].text, instruction, second))
    return false;
  if (form == Form::kConstant && *second != kConstantRegister) return false;
  if (instruction->operation == Operation::kMove && instruction->d == kProgramCounter) {
    instruction->operation = Operation::kJumpRegister;
    instruction->detail = kAlways;
  }
  return true;
}

bool Assembler::EncodeMemory(const std::vector<Operand>& operands, Instruction* instruction) {
  const Operand& memory = operands[1];
  if (!memory.bracketed || !Register(operands[0].text, &instruction->d)) return false;
  instruction->b = kConstantRegister;
  if (!memory.second.empty() && !RegisterOrConstant(memory.second, instruction, &instruction->b))
    return false;
  if (FindRegister(memory.text) >= 0) return Register(memory.text, &instruction->a);
  instruction->a = kZeroRegister;
  if (instruction->b != kConstantRegister) return Fail("a name and a register can't be one address");
  if (ParseNumber(memory.text, 8, &instruction->constant)) return true;
  fixups_.push_back(
      {static_cast<uint32_t>(program_.code.size()), Form::kMemory, memory.text, instruction->constant});
  return true;
}

bool Assembler::EncodeAddressOf(const std::vector<Operand>& operands, Instruction* instruction) {
  if (operands[1].bracketed || !Register(operands[0].text, &instruction->d)) return false;
  if (operands.size() == 3) {
    instruction->operation = Operation::kAdd;
    return Register(operands[1].text, &instruction->a) &&
           RegisterOrConstant(operands[2].text, instruction, &instruction->b);
  }
  instruction->a = kConstantRegister;
  Reference(Form::kAddressOf, operands[1].text);
  return true;
}

void Assembler::Reference(Form form, std::string_view text) {
  fixups_.push_back({static_cast<uint32_t>(program_.code.size()), form, text, 0});
}

bool Assembler::Append(Instruction instruction) {
  if (procedure_ == kNoProcedure) return Fail("an instruction outside of a procedure");
  if (program_.code.size() > kMaxCodeInstructions) return Fail("too many instructions");
  const bool reads_d =
      instruction.operation == Operation::kStore || instruction.operation == Operation::kPush;
  const bool jumps = instruction.operation >= Operation::kJump;
  const auto is_pc = [](uint8_t number) { return number == kProgramCounter; };
  if (is_pc(instruction.a) || is_pc(instruction.b) || (reads_d && is_pc(instruction.d))) {
    const bool own = instruction.operation == Operation::kPop || instruction.operation == Operation::kClr;
    if (!own) return Fail("PC can be written, not read");
  }
  const Origin origin{line_, line_ <= source_lines_.size() ? source_lines_[line_ - 1] : 0, procedure_,
                      line_ <= lines_.size() ? lines_[line_ - 1] : std::string_view()};
  program_.code.push_back(instruction);
  program_.origins.push_back(origin);
  if (is_pc(instruction.d) && !reads_d && !jumps && instruction.operation != Operation::kCmp) {
    Instruction jump;
    jump.operation = Operation::kJumpRegister;
    jump.a = kProgramCounter;
    jump.detail = kAlways;
    program_.code.push_back(jump);
    program_.origins.push_back(origin);
  }
  return true;
}

bool Assembler::DefineNames() {
  for (const Procedure& procedure : program_.procedures) {
    program_.addresses.emplace(procedure.name, program_.AddressOf(procedure.first));
  }
  if (!data_) return true;
  program_.data = std::move(data_->bytes);
  program_.symbols = std::move(data_->symbols);
  for (size_t i = 0; i < program_.symbols.size(); ++i) {
    DataSymbol& symbol = program_.symbols[i];
    symbol.address += program_.DataBegin();
    if (!program_.addresses.emplace(symbol.name, symbol.address).second) {
      return FailAt(data_->lines[i], Quoted(symbol.name) + " is defined twice");
    }
  }
  return true;
}

std::optional<uint32_t> Assembler::FindLabel(std::string_view name, uint32_t procedure) const {
  auto found = labels_.find({procedure, name});
  if (found == labels_.end()) found = labels_.find({kNoProcedure, name});
  if (found != labels_.end()) return found->second;
  const auto number = procedure_numbers_.find(name);
  if (number != procedure_numbers_.end()) return program_.procedures[number->second].first;
  return std::nullopt;
}

std::optional<uint64_t> Assembler::FindAddress(std::string_view name, uint32_t procedure) const {
  if (const auto label = FindLabel(name, procedure)) return program_.AddressOf(*label);
  const auto found = program_.addresses.find(std::string(name));
  if (found != program_.addresses.end()) return found->second;
  return std::nullopt;
}

bool Assembler::Resolve(const CodeFixup& fixup) {
  Instruction* const instruction = &program_.code[fixup.index];
  const Origin& origin = program_.origins[fixup.index];
  line_ = origin.line;
  if (fixup.form == Form::kTarget) return ResolveJump(fixup, instruction);
  if (fixup.form == Form::kCallForm) return ResolveCall(fixup, instruction);
  std::string_view name = fixup.name;
  int64_t addend = fixup.addend;
  std::optional<uint64_t> address = FindAddress(name, origin.procedure);
  if (!address) {
    if (const int number = FindRegister(name); number >= 0) {
      instruction->a = static_cast<uint8_t>(number);
      return true;
    }
    int64_t split_addend = 0;
    SplitAddend(fixup.name, &name, &split_addend);
    addend += split_addend;
    address = FindAddress(name, origin.procedure);
  }
  if (!address) {
    MakeUndefined(instruction, Quoted(name) + " is defined nowhere");
    return true;
  }
  const uint64_t base = program_.pic ? program_.base : 0;
  instruction->constant = static_cast<int64_t>(*address - base) + addend;
  return true;
}

bool Assembler::ResolveJump(const CodeFixup& fixup, Instruction* instruction) {
  if (const auto label = FindLabel(fixup.name, program_.origins[fixup.index].procedure)) {
    instruction->constant = *label;
    return true;
  }
  const int number = FindRegister(fixup.name);
  if (number < 0) return Fail("undefined label " + Quoted(fixup.name));
  instruction->operation = Operation::kJumpRegister;
  instruction->a = static_cast<uint8_t>(number);
  return true;
}

bool Assembler::ResolveCall(const CodeFixup& fixup, Instruction* instruction) {
  if (const auto label = FindLabel(fixup.name, program_.origins[fixup.index].procedure)) {
    instruction->constant = *label;
    if (program_.pic && program_.base != 0) {
      MakeUndefined(instruction,
                    Quoted(fixup.name) + " is called at its link address, not relative to CODEBASE");
    }
  } else if (const int number = FindRegister(fixup.name); number >= 0) {
    instruction->operation = Operation::kCallRegister;
    instruction->a = static_cast<uint8_t>(number);
  } else {
    MakeUndefined(instruction, Quoted(fixup.name) + " is defined nowhere");
  }
  return true;
}

void Assembler::MakeUndefined(Instruction* instruction, std::string message) {
  instruction->operation = Operation::kUndefined;
  instruction->constant = static_cast<int64_t>(program_.undefined.size());
  program_.undefined.push_back(std::move(message));
}

bool Assembler::ResolveData() {
  if (!data_) return true;
  for (const DataFixup& fixup : data_->fixups) {
    const auto address = FindAddress(fixup.name, kNoProcedure);
    if (!address) return FailAt(fixup.line, "undefined symbol " + Quoted(fixup.name));
    const uint64_t value = *address + static_cast<uint64_t>(fixup.addend);
    std::memcpy(program_.data.data() + fixup.offset, &value,
                std::min<size_t>(8, static_cast<size_t>(fixup.width)));
  }
  return true;
}

}  // namespace

std::optional<Program> Assemble(std::string_view text, const AssemblyOptions& options, AssemblyError* error) {
  *error = {};
  return Assembler(text, options, error).Run();
}

}  // namespace vorc::sim
