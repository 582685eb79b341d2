#include "output/pic_rewrite.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <unordered_set>
#include <vector>

#include "base/format.h"

namespace vorc {
namespace {

constexpr size_t kMaxOperand = 511;
constexpr size_t kMaxDestination = 255;
constexpr std::string_view kGlobal = "GLOBAL";
// How the types of variables begin: BYTE1 to BYTE32.
constexpr std::string_view kBytes = "BYTE";
constexpr size_t kPieceSize = 1 << 18;

// Those that r5, rr5 and gpr5 don't cover.
constexpr std::string_view pic_named_registers[] = {"KERNELREG0",
                                                    "KERNELREG1",
                                                    "KERNELREG2",
                                                    "CODEBASE",
                                                    "DATA_BREAK_POINT0",
                                                    "DATA_BREAK_POINT1",
                                                    "DATA_BREAK_POINT2",
                                                    "DATA_BREAK_POINT3",
                                                    "STATUS",
                                                    "SRCREG",
                                                    "DESTREG",
                                                    "SRCINDEXREG",
                                                    "DESTINDEXREG",
                                                    "SRCSIZEREG",
                                                    "DESTSIZEREG",
                                                    "STACKPTR",
                                                    "FRAMEPTR",
                                                    "STACKBEGIN",
                                                    "STACKEND",
                                                    "LR",
                                                    "EPC",
                                                    "PC",
                                                    "VBR",
                                                    "ADDRESS_BREAK_POINT0",
                                                    "ADDRESS_BREAK_POINT1",
                                                    "ADDRESS_BREAK_POINT2",
                                                    "ADDRESS_BREAK_POINT3",
                                                    "DEBUG_CONTROL",
                                                    "CORE_CONTROL",
                                                    "OSBLOCK",
                                                    "BADADDRESS",
                                                    "CYCLECOUNT",
                                                    "CPUID",
                                                    "CPUVERSION"};

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsWhite(char c) {
  return IsBlank(c) || c == '\r' || c == '\n';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool SameFolded(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string_view SkipBlanks(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  return text.substr(i);
}

std::string_view pic_trim(std::string_view text) {
  while (!text.empty() && IsWhite(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsWhite(text.back())) text.remove_suffix(1);
  return text;
}

bool BeginsComment(std::string_view text) {
  return text.starts_with("//") || text.starts_with("/*");
}

/// The length of an address comment, as in "/*000123:*/", at the start of the text, 0 if there is none.
size_t AddressCommentLength(std::string_view text) {
  if (!text.starts_with("/*")) return 0;
  size_t i = 2;
  while (i < text.size() && IsDigit(text[i])) ++i;
  if (i == 2 || i == text.size() || text[i] != ':') return 0;
  const size_t end = text.find("*/", i);
  return end == std::string_view::npos ? 0 : end + 2;
}

/// The instruction of a line, from its first character to the end of the line. Empty if there is none.
std::string_view pic_instruction_start(std::string_view line) {
  line = SkipBlanks(line);
  line = SkipBlanks(line.substr(AddressCommentLength(line)));
  if (line.empty() || IsWhite(line.front()) || BeginsComment(line)) return {};
  return line;
}

bool pic_starts_with(std::string_view text, std::string_view keyword) {
  return text.size() > keyword.size() && IsBlank(text[keyword.size()]) &&
         SameFolded(text.substr(0, keyword.size()), keyword);
}

/// What stands behind the keyword, if it is one operand with nothing but a comment behind it.
std::optional<std::string_view> pic_single_operand(std::string_view text, std::string_view keyword) {
  text = SkipBlanks(text.substr(keyword.size()));
  const size_t end = std::min(text.find_first_of(" \t\r\n,/;"), text.size());
  const std::string_view rest = pic_trim(text.substr(end));
  if (end == 0 || end > kMaxOperand) return {};
  if (!rest.empty() && rest.front() != ';' && !BeginsComment(rest)) return {};
  return text.substr(0, end);
}

bool IsNumberedRegister(std::string_view text, std::string_view prefix) {
  return text.size() > prefix.size() && SameFolded(text.substr(0, prefix.size()), prefix) &&
         std::ranges::all_of(text.substr(prefix.size()), IsDigit);
}

bool PicIsRegisterName(std::string_view text) {
  return IsNumberedRegister(text, "r") || IsNumberedRegister(text, "rr") || IsNumberedRegister(text, "gpr") ||
         std::ranges::any_of(pic_named_registers,
                             [&](std::string_view name) { return SameFolded(name, text); });
}

/// Calls `work` with each line, its end included.
template <typename Work>
void ForEachLine(std::string_view text, Work work) {
  while (!text.empty()) {
    const size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end == std::string_view::npos ? end : end + 1);
    text.remove_prefix(line.size());
    work(line);
  }
}

using Sink = FunctionRef<void(std::string_view)>;
using PicProcset = std::unordered_set<std::string_view>;

class Rewriter {
 public:
  Rewriter(std::string_view text, int pointer_bytes, PicCounts& counts, Sink sink)
      : text_(text), pointer_bytes_(pointer_bytes), counts_(counts), sink_(sink) {}

  void Run() {
    // Names may be declared behind their uses, so all are known before a line is changed.
    ForEachLine(text_, [&](std::string_view line) { Sort(line, pic_instruction_start(line)); });
    for (const std::string_view line : uses_) RewriteLine(line, pic_instruction_start(line));
    CopyUpTo(text_.data() + text_.size());
    if (!out_.empty()) sink_(out_);
  }

 private:
  void Sort(std::string_view line, std::string_view instruction) {
    if (instruction.empty()) return;
    switch (Lower(instruction.front())) {
      case 'c':
        if (pic_starts_with(instruction, "call")) uses_.push_back(line);
        break;
      case 'e':
        if (pic_starts_with(instruction, "EXTERN")) Add(externs_, pic_single_operand(instruction, "EXTERN"));
        break;
      case 'b': AddVariable(instruction); break;
      case 'g':
        if (pic_starts_with(instruction, kGlobal))
          AddVariable(SkipBlanks(instruction.substr(kGlobal.size())));
        break;
      case 'l':
        if (pic_starts_with(instruction, "loadaddr")) uses_.push_back(line);
        break;
      case 'p':
        if (pic_starts_with(instruction, "PROCEDURE")) {
          Add(procedures_, pic_single_operand(instruction, "PROCEDURE"));
        }
        break;
      default: break;
    }
  }

  static void Add(PicProcset& names, std::optional<std::string_view> name) {
    if (name) names.insert(*name);
  }

  // A variable may bear a register's name; the assembler takes it for the variable then.
  void AddVariable(std::string_view declaration) {
    if (!SameFolded(declaration.substr(0, kBytes.size()), kBytes)) return;
    const std::string_view rest =
        SkipBlanks(declaration.substr(std::min(declaration.find_first_of(" \t"), declaration.size())));
    const std::string_view name = rest.substr(0, rest.find_first_of(" \t\r\n;=[{,"));
    if (PicIsRegisterName(name)) variables_.insert(name);
  }

  bool IsRegister(std::string_view name) const {
    return PicIsRegisterName(name) && !variables_.contains(name);
  }

  void RewriteLine(std::string_view line, std::string_view instruction) {
    if (pic_starts_with(instruction, "call"))
      RewriteCall(line, instruction);
    else
      RewriteLoad(line, instruction);
  }

  void RewriteCall(std::string_view line, std::string_view instruction) {
    const std::optional<std::string_view> callee = pic_single_operand(instruction, "call");
    if (!callee) return;
    if (!procedures_.contains(*callee)) {
      ++counts_.abs_calls;
      return;
    }
    CopyUpTo(line.data());
    copied_ = line.data() + line.size();
    SetPrefix(line, instruction);
    const std::string size = std::to_string(pointer_bytes_);
    const std::string back = "vorc_picret_" + std::to_string(counts_.rel_calls++);
    PutLine({"loadaddr rr63, ", *callee});
    PutLine({"add", size, " rr63,rr63,CODEBASE"});
    PutLine({"loadaddr LR, ", back});
    PutLine({"add", size, " LR,LR,CODEBASE"});
    PutLine({"move", size, " PC,rr63"});
    PutLine({back, ":"});
  }

  void RewriteLoad(std::string_view line, std::string_view instruction) {
    const std::string_view operands = instruction.substr(std::strlen("loadaddr"));
    const size_t comma = operands.find(',');
    if (comma == std::string_view::npos || comma > kMaxDestination) return;
    const std::string_view destination = pic_trim(operands.substr(0, comma));
    const std::string_view source = SourceOf(operands.substr(comma + 1));
    if (destination.empty() || source.empty()) return;
    if (IsRegister(source) || !PicIsRegisterName(destination)) {
      ++counts_.abs_loads;
    } else if (externs_.contains(source)) {
      ++counts_.extern_loads;
    } else {
      ++counts_.rel_loads;
      CopyUpTo(line.data() + line.size());
      if (line.back() != '\n') out_ += '\n';
      SetPrefix(line, instruction);
      PutLine({"add", std::to_string(pointer_bytes_), " ", destination, ",", destination, ",CODEBASE"});
    }
  }

  static std::string_view SourceOf(std::string_view text) {
    text = text.substr(0, std::min(text.find("//"), text.find("/*")));
    return pic_trim(pic_trim(text).substr(0, kMaxOperand));
  }

  void CopyUpTo(const char* end) {
    const std::string_view between(copied_, static_cast<size_t>(end - copied_));
    copied_ = end;
    const bool large = between.size() >= kPieceSize;
    if (!large) out_ += between;
    if (!large && out_.size() < kPieceSize) return;
    sink_(out_);
    out_.clear();
    if (large) sink_(between);
  }

  /// What stands ahead of the instruction stands ahead of all that is written for it.
  void SetPrefix(std::string_view line, std::string_view instruction) {
    prefix_ = line.substr(0, static_cast<size_t>(instruction.data() - line.data()));
  }

  void PutLine(std::initializer_list<std::string_view> pieces) {
    out_ += prefix_;
    for (const std::string_view piece : pieces) out_ += piece;
    out_ += '\n';
  }

  std::string_view text_;
  int pointer_bytes_;
  PicCounts& counts_;
  Sink sink_;
  PicProcset externs_;
  PicProcset procedures_;
  PicProcset variables_;  ///< of a register's name
  // The lines that may have to change.
  std::vector<std::string_view> uses_;
  std::string out_;
  const char* copied_ = text_.data();
  std::string_view prefix_;
};

const char* Plural(int count) {
  return count == 1 ? "" : "s";
}

}  // namespace

void PicRewrite(std::string_view text, int pointer_bytes, PicCounts& counts, Sink sink) {
  Rewriter(text, pointer_bytes, counts, sink).Run();
}

std::string PicSummary(const PicCounts& counts) {
  return Format(
      "vorc: -pic: %d address load%s and %d intra-module call%s made CODEBASE-relative; %d call%s and %d "
      "address load%s left absolute (outside the module)%s\n",
      counts.rel_loads, Plural(counts.rel_loads), counts.rel_calls, Plural(counts.rel_calls),
      counts.abs_calls, Plural(counts.abs_calls), counts.extern_loads, Plural(counts.extern_loads),
      counts.abs_loads > 0 ? "; register-operand loadaddr left alone" : "");
}

}  // namespace vorc
