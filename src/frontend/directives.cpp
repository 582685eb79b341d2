#include <cctype>
#include <cstdlib>

#include "base/format.h"
#include "frontend/scanner.h"

namespace vorc {

namespace {

// Entries for the open conditionals and branches of one file.
constexpr size_t kMostOpenIfs = 1000;

bool IsWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

constexpr TokenList kOpensConditional = {Tok::PREPROCESS_if, Tok::PREPROCESS_ifdef, Tok::PREPROCESS_ifndef};
constexpr TokenList kHasBranches = kOpensConditional.With({Tok::PREPROCESS_elif});

}  // namespace

void Scanner::SkipToEndOfLine() {
  now_.Cursor = now_.LineEnd;
  now_.Macros.Depth = 0;
}

void Scanner::ParsePound() {
  RawToken();
  const Tok directive = now_.WordName == nullptr ? Tok::NOTOKEN : PreProcessReserveWord(now_.Word);
  switch (directive) {
    case Tok::PREPROCESS_define: return ParseDefine();
    case Tok::PREPROCESS_undef: return ParseUndef();
    case Tok::PREPROCESS_include: return ParseInclude();
    case Tok::PREPROCESS_if:
    case Tok::PREPROCESS_ifdef:
    case Tok::PREPROCESS_ifndef: return ParsePreProcessIfs(directive);
    case Tok::PREPROCESS_elif: return ParsePreProcessElif();
    case Tok::PREPROCESS_else: return ParsePreProcessElse();
    case Tok::PREPROCESS_endif: return ParsePreProcessEndif();
    case Tok::PREPROCESS_line: break;
    default: slot_.Error(0, "Syntax error followed by '#'");
  }
  SkipToEndOfLine();
  GetComboTokenSkipEol();
}

void Scanner::ParsePreProcessIfs(Tok directive) {
  RawToken();
  const bool wants_name = directive != Tok::PREPROCESS_if;
  const bool has_operand = now_.Token != Tok::ENDOFSTRING && now_.Token != Tok::END_OF_FILE &&
                           (!wants_name || now_.WordName != nullptr);
  if (!has_operand) slot_.Error(0, "Syntax error followed by preprocessor statement.");
  const bool value = PushIf(directive, has_operand && EvaluateCondition(directive));
  SkipToEndOfLine();
  if (!value) SkipGroup(false);
  GetComboTokenSkipEol();
}

// Answers how the condition counts: one for which there is no room is true and has no entry.
bool Scanner::PushIf(Tok directive, bool value) {
  std::vector<IfEntry>& ifs = now_.Frame->Ifs;
  if (ifs.size() >= kMostOpenIfs) return true;
  ifs.push_back({directive, value, Place()});
  return value;
}

// The condition is one token; what stands behind it on the line is not looked at.
bool Scanner::EvaluateCondition(Tok directive) const {
  const Name* name = now_.WordName;
  switch (directive) {
    case Tok::PREPROCESS_ifdef: return name != nullptr && name->Define != nullptr;
    case Tok::PREPROCESS_ifndef: return name == nullptr || name->Define == nullptr;
    default: break;
  }
  if (now_.Token == Tok::NUMBER) return std::strtol(WordText().c_str(), nullptr, 10) != 0;
  if (now_.Token == Tok::IDENTIFIER) return FindDefineNumber(name) != 0;
  return false;
}

int64_t Scanner::FindDefineNumber(const Name* name) const {
  if (name->Define == nullptr || name->Define->Items.empty()) return 0;
  const DEFINE_ITEM* item = name->Define->Items.First;
  return item->Token == Tok::NUMBER ? std::strtol(std::string(item->Text).c_str(), nullptr, 10) : 0;
}

bool Scanner::BranchIsOpen() const {
  return !now_.Frame->Ifs.empty() && kHasBranches.Has(now_.Frame->Ifs.back().Token);
}

void Scanner::ParsePreProcessElif() {
  RawToken();
  const bool has_operand =
      now_.Token == Tok::IDENTIFIER || now_.Token == Tok::NUMBER || now_.Token == Tok::HEXNUMBER;
  if (!has_operand) slot_.Error(0, "Syntax error followed by preprocessor statement.");
  if (!BranchIsOpen()) {
    slot_.Error(0, "Misuse of '#elif'.");
    SkipToEndOfLine();
  } else if (now_.Frame->Ifs.back().Value) {
    SkipToEndOfLine();
    SkipGroup(true);
  } else {
    const bool value = PushIf(Tok::PREPROCESS_elif, has_operand && EvaluateCondition(Tok::PREPROCESS_elif));
    SkipToEndOfLine();
    if (!value) SkipGroup(false);
  }
  GetComboTokenSkipEol();
}

void Scanner::ParsePreProcessElse() {
  SkipToEndOfLine();
  if (!BranchIsOpen()) {
    slot_.Error(0, "Misuse of '#else'.");
  } else if (now_.Frame->Ifs.back().Value) {
    SkipGroup(true);
  } else {
    PushIf(Tok::PREPROCESS_else, false);
  }
  GetComboTokenSkipEol();
}

void Scanner::ParsePreProcessEndif() {
  SkipToEndOfLine();
  std::vector<IfEntry>& ifs = now_.Frame->Ifs;
  if (ifs.empty()) slot_.Error(0, "Misuse of '#endif'.");
  while (!ifs.empty()) {
    const bool opener = kOpensConditional.Has(ifs.back().Token);
    ifs.pop_back();
    if (opener) break;
  }
  GetComboTokenSkipEol();
}

// Passes over lines up to the directive that ends the group; its `#` is what comes next.
void Scanner::SkipGroup(bool to_endif_only) {
  int nested = 0;
  while (ReadLine()) {
    const char* start = now_.Cursor;
    const Tok directive = DirectiveOfLine();
    if (kOpensConditional.Has(directive)) ++nested;
    const bool ends_branch = directive == Tok::PREPROCESS_else || directive == Tok::PREPROCESS_elif;
    if (directive == Tok::PREPROCESS_endif || (ends_branch && nested == 0 && !to_endif_only)) {
      if (nested == 0) {
        now_.Cursor = start;
        return;
      }
      --nested;
    }
    now_.Cursor = now_.LineEnd;
  }
}

// The directive that the current line holds, or NOTOKEN.
Tok Scanner::DirectiveOfLine() {
  // Only comments can stand in front of a directive; other text is not even scanned.
  SkipBlanksAndComments();
  if (now_.Cursor >= now_.LineEnd || *now_.Cursor != '#') return Tok::NOTOKEN;
  ++now_.Cursor;
  SkipBlanksAndComments();
  const char* start = now_.Cursor;
  while (now_.Cursor < now_.LineEnd && IsWordCharacter(*now_.Cursor)) ++now_.Cursor;
  return PreProcessReserveWord({start, static_cast<size_t>(now_.Cursor - start)});
}

void Scanner::SkipBlanksAndComments() {
  while (true) {
    ScanBlanks();
    if (!std::string_view(now_.Cursor, static_cast<size_t>(now_.LineEnd - now_.Cursor)).starts_with("/*"))
      return;
    now_.Cursor += 2;
    ParseBlockCommentBegin();
  }
}

bool Scanner::ReadRtlBlock() {
  ++slot_.RtlBlocks;
  bool closed = false;
  while (!closed && ReadLine()) {
    const std::string_view line(now_.Cursor, static_cast<size_t>(now_.LineEnd - now_.Cursor));
    closed = line.find("rtlend") != std::string_view::npos;
    if (!closed) slot_.RtlLines.push_back(line);
  }
  if (closed) now_.Cursor = now_.LineEnd;
  slot_.RtlLines.emplace_back();
  return closed;
}

}  // namespace vorc
