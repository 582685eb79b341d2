#include "frontend/parser.h"

#include "base/format.h"
#include "base/host_stack.h"

namespace vorc {

namespace {

constexpr int kDeepestNesting = 10'000;
constexpr size_t kLongestShownSymbol = 170;

constexpr TokenList kNoList = {};

}  // namespace

Parser::Nesting::Nesting(Parser& parser) : parser_(parser) {
  if ((++parser_.depth_ > kDeepestNesting || HostStackLow()) && !parser_.slot_.Stopped) {
    parser_.slot_.Fatal(Format("Nesting is deeper than %d levels.", kDeepestNesting));
  }
}

bool Parser::Accept(Tok token) {
  if (!At(token)) return false;
  Next();
  return true;
}

bool Parser::Expect(Tok token, long code, const char* text) {
  return Accept(token) || Fail(code, text);
}

bool Parser::Fail(long code, const std::string& text) {
  slot_.Error(code, text);
  return false;
}

bool Parser::ExpectBrace(SourceLine opened, long code, const char* text) {
  return Accept(Tok::RSECONDBRACKET) || FailBrace(opened, code, text);
}

bool Parser::FailBrace(SourceLine opened, long code, const char* text) {
  Fail(code, text);
  if (At(Tok::END_OF_FILE)) slot_.NoteOpening(opened, "The '{'");
  return false;
}

bool Parser::AtDeclaredName() const {
  return Token() == Tok::IDENTIFIER || (scan_.WordName() != nullptr && scan_.TokenIn(SizeNamedTypeList));
}

Parser::Scope Parser::MainScope() {
  Scope scope;
  scope.header = &slot_.Globals;
  return scope;
}

Parser::Scope Parser::ProcScope(FUNCPROTO_REC* proc) {
  Scope scope;
  scope.kind = Scope::Kind::kProc;
  scope.proc = proc;
  scope.header = &proc->ProcBody->LocalsHeader;
  scope.statements = &proc->ProcBody->Statements;
  return scope;
}

bool Parser::ParseCsyntax() {
  if (slot_.IsScript() && slot_.MorvFuncProto == nullptr) CreateMorvMain();
  PassDirectives();
  while (!At(Tok::END_OF_FILE)) {
    if (TooManyErrors()) {
      slot_.Error(0, "Too many errors..");
      break;
    }
    const ScanPosition position = scan_.Position();
    ParseTopLevelItem();
    if (scan_.Position() == position && !At(Tok::END_OF_FILE)) Next();
  }
  scan_.ExaminePreProcessorStack();
  slot_.Display.DisplayCompilerErrorWarningCount();
  return slot_.Display.ErrorCount == 0;
}

void Parser::ParseTopLevelItem() {
  switch (Token()) {
    case Tok::SEMICOLON: return Next();
    case Tok::typedef_: ParseTypeDef(MainScope()); return;
    case Tok::IDENTIFIER: return ParseTopLevelIdentifier();
    case Tok::dollar: return ParseTopLevelDollar();
    case Tok::function_:
    case Tok::subroutine_:
      if (slot_.IsScript()) {
        ParseFunctionSubroutineNamed(&slot_.Globals);
        return;
      }
      slot_.Error(0, "'function'/'subroutine' definitions are only available in MORV (-morv) mode.");
      return Next();
    case Tok::inline_: {
      Next();
      FunctionTraits traits;
      traits.is_inline = true;
      ParseDeclaration(MainScope(), traits);
      return;
    }
    case Tok::namespace_:
    case Tok::using_:
    case Tok::template_:
    case Tok::throw_: return SkipUnsupported();
    case Tok::try_: SkipTryBlock(); return;
    case Tok::IOBJECT: PROC_ParseIObjectDecl(MainScope()); return;
    case Tok::rtlbegin: SkipRtlBlock(); return;
    default: break;
  }
  if (AtTypeStart(MainScope()))
    ParseDeclaration(MainScope());
  else
    ParseTopLevelOther();
}

// An unknown word with a name behind it on its line: most likely a type that was misspelt.
bool Parser::AtMisspeltType(const Scope& scope) {
  if (!AtName()) return false;
  const Name* word = scan_.WordName();
  if (FindVisible(slot_, scope.proc, nullptr, scope.block, word) || slot_.Services->IsBuiltin(word))
    return false;
  return LookAhead([&] {
    const long line = scan_.LineNumber();
    Peek();
    return AtName() && scan_.LineNumber() == line;
  });
}

// One error for the whole declaration. What it declares counts as known from here on.
bool Parser::SkipMisspeltType(long code, const char* format) {
  slot_.Error(code, Format(format, scan_.ClipTok().c_str()));  // NOLINT(clang-diagnostic-format-nonliteral)
  Next();
  Name* name = scan_.WordName();
  if (!FindInScope(slot_, &slot_.Globals, name)) InsertUndeclared(name);
  while (!At(Tok::SEMICOLON) && !At(Tok::LSECONDBRACKET) && !At(Tok::RSECONDBRACKET) && !At(Tok::END_OF_FILE))
    Next();
  if (At(Tok::LSECONDBRACKET)) SkipToMatchingBrace();
  Accept(Tok::SEMICOLON);
  return true;
}

void Parser::ParseTopLevelIdentifier() {
  if (AtMisspeltType(MainScope())) {
    SkipMisspeltType(slot_.IsScript() ? 57 : 0,
                     slot_.IsScript() ? kUndeclaredVariable : "'%s' is not a data type");
    return;
  }
  const bool type = FindInScope(slot_, &slot_.Globals, scan_.WordName()).IsType();
  if (type || !slot_.IsScript()) {
    Scope scope = MainScope();
    scope.by_name = true;
    ParseDeclaration(scope);
    return;
  }
  if (!MorvPROC_ParseIdentifier()) Synchronize(Begin(), EofList);
}

void Parser::ParseTopLevelOther() {
  if (!slot_.IsScript()) {
    Synchronize(Begin(), EofList);
    return;
  }
  const ScanPosition position = scan_.Position();
  ParseMorvScript();
  if (scan_.Position() != position) return;
  slot_.Error(0, Format("'%s' is not valid outside a function.", scan_.ClipTok().c_str()));
  Next();
  Synchronize(Begin(), EofList);
}

void Parser::ParseTopLevelDollar() {
  if (!slot_.IsScript()) {
    slot_.Error(0, "'$var' is only available in MORV (-morv) mode.");
    return SkipToSemicolon();
  }
  if (slot_.Target.typed) {
    MorvPROC_ParseStatement(STATEMENT_TYPE_PLAIN);
    return;
  }
  const long line = scan_.LineNumber();
  Next();
  if (scan_.LineNumber() != line || scan_.WordName() == nullptr) {
    slot_.Error(0, "Missing variable name after '$'.");
  } else if (!scan_.Touching()) {
    slot_.Error(0, "No space allowed between '$' and the variable name.");
  } else {
    slot_.Error(0,
                "A '$var' statement must be inside a function - put it in main(). (The 'IOBJECT $name{...};' "
                "declaration itself is fine out here.)");
  }
  SkipToSemicolon();
}

// One error for a construct of the larger language, and on behind it.
void Parser::SkipUnsupported() {
  const Tok word = Token();
  slot_.Error(0, Format("%s not supported.", std::string(TokenName(word)).c_str()));
  while (!At(Tok::SEMICOLON) && !At(Tok::END_OF_FILE)) {
    if (At(Tok::RSECONDBRACKET)) return;
    if (At(Tok::LSECONDBRACKET)) {
      SkipToMatchingBrace();
      Accept(Tok::SEMICOLON);
      return;
    }
    Next();
  }
  Accept(Tok::SEMICOLON);
}

bool Parser::Synchronize(const TokenList& first, const TokenList& second) {
  return Synchronize(first, second, kNoList);
}

bool Parser::Synchronize(const TokenList& first, const TokenList& second, const TokenList& third) {
  const TokenList list = first.With(second).With(third);
  while (!list.Has(Token())) {
    if (At(Tok::END_OF_FILE)) return Fail(38, "Unexpected end-of-file..");
    const std::string word = scan_.WordText();
    const bool cut = word.size() > kLongestShownSymbol;
    slot_.Error(39, Format("Unexpected symbol: '%.*s%s'", static_cast<int>(kLongestShownSymbol), word.c_str(),
                           cut ? "..." : ""));
    Next();
  }
  return true;
}

// From a `{` to behind the `}` that closes it.
void Parser::SkipToMatchingBrace() {
  int depth = 0;
  do {
    if (At(Tok::LSECONDBRACKET)) ++depth;
    if (At(Tok::RSECONDBRACKET)) --depth;
    Next();
  } while (depth > 0 && !At(Tok::END_OF_FILE));
}

void Parser::SkipToSemicolon() {
  while (!At(Tok::SEMICOLON) && !At(Tok::END_OF_FILE)) Next();
  Accept(Tok::SEMICOLON);
}

}  // namespace vorc
