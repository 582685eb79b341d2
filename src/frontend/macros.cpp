#include "base/format.h"
#include "frontend/scanner.h"

namespace vorc {

namespace {

// No sane macro comes near this; one that doubles itself at every level would never end.
constexpr size_t kMostExpandedTokens = 100'000;
constexpr size_t kMostTokensOfAllMacros = 10'000'000;

}  // namespace

// Delivers the next token of an open expansion. False when none is open.
bool Scanner::GetDefineToken() {
  while (!now_.Macros.empty()) {
    MacroFrame& frame = now_.Macros.Frames[now_.Macros.Depth - 1];
    const DEFINE_ITEM* item = frame.Item;
    if (item == nullptr) {
      --now_.Macros.Depth;
      continue;
    }
    frame.Item = item->Next;
    if (frame.Define != nullptr && item->name != nullptr) {
      int parameter = 0;
      for (const DEFINE_ITEM* formal : frame.Define->Parameters) {
        if (formal->name == item->name) break;
        ++parameter;
      }
      if (parameter < frame.Define->ParameterCount &&
          PushMacroFrame({frame.Arguments[parameter], nullptr, nullptr}))
        continue;
    }
    DeliverItem(item);
    return true;
  }
  return false;
}

void Scanner::DeliverItem(const DEFINE_ITEM* item) {
  ++now_.Position;
  now_.Token = item->Token;
  now_.Word = item->Text;
  now_.WordName = item->name;
  now_.FromMacro = true;
  now_.BehindDollar = false;
  now_.Blanks = {};
  if (++macro_tokens_ == kMostExpandedTokens) {
    slot_.Fatal(Format("A macro expands to more than %zu tokens.", kMostExpandedTokens));
  }
  if (++all_macro_tokens_ == kMostTokensOfAllMacros) {
    slot_.Fatal(Format("The macros of a source expand to more than %zu tokens.", kMostTokensOfAllMacros));
  }
  if (slot_.Stopped) now_.Macros.Depth = 0;
}

bool Scanner::PushMacroFrame(const MacroFrame& frame) {
  if (now_.Macros.full()) return false;
  now_.Macros.Frames[now_.Macros.Depth++] = frame;
  return true;
}

// Next token from an expansion or the file, unexpanded, comments skipped. The end of an included
// file goes unseen.
void Scanner::RawToken() {
  if (GetDefineToken()) return;
  GetTokenSkipComments();
  while (now_.Token == Tok::END_OF_FILE && PopFile()) GetTokenSkipComments();
}

void Scanner::RawTokenSkipEol() {
  while (true) {
    RawToken();
    if (now_.Token != Tok::ENDOFSTRING) return;
    if (now_.Macros.empty()) ReadLine();
  }
}

void Scanner::GetComboTokenDonotSkipEol() {
  do RawToken();
  while (now_.Token == Tok::IDENTIFIER && !now_.BehindDollar && now_.WordName->Define != nullptr &&
         ExpandMacro(now_.WordName->Define));
}

void Scanner::GetComboTokenSkipEol() {
  while (true) {
    GetComboTokenDonotSkipEol();
    if (now_.Token != Tok::ENDOFSTRING) return;
    ReadLine();
  }
}

// Opens the expansion of the macro whose name is current. False leaves the name as it is.
bool Scanner::ExpandMacro(const DEFINE_REC* define) {
  if (now_.Macros.full()) return false;
  const DEFINE_ITEM** arguments = nullptr;
  if (define->Type == DEFINE_TYPE_MACRO && !ParseMacroCall(define, &arguments)) return true;
  return PushMacroFrame({define->Items.First, define, arguments});
}

bool Scanner::ParseMacroCall(const DEFINE_REC* define, const DEFINE_ITEM*** arguments) {
  const SourceLine began = Place();
  RawTokenSkipEol();
  if (now_.Token != Tok::LPAREN) {
    slot_.Error(62, "Missing '(' in macro call.");
    return false;
  }
  const auto count = static_cast<size_t>(define->ParameterCount);
  *arguments = static_cast<const DEFINE_ITEM**>(slot_.Texts.Allocate((count + 1) * sizeof(DEFINE_ITEM*), 8));
  RawTokenSkipEol();
  for (size_t i = 0; i < count; ++i) {
    (*arguments)[i] = CollectArgument();
    if (i + 1 < count && now_.Token == Tok::COMMA) {
      RawTokenSkipEol();
    } else if (i + 1 < count) {
      slot_.Error(63, "Argument count mismatch in macro call.");
      if (now_.Token == Tok::END_OF_FILE) slot_.NoteOpening(began, "The macro call");
      return false;
    }
  }
  if (now_.Token == Tok::RPAREN) return true;
  slot_.Error(63, now_.Token == Tok::COMMA || count == 0 ? "Argument count mismatch in macro call."
                                                         : "Missing ')' in macro call.");
  if (now_.Token == Tok::END_OF_FILE) slot_.NoteOpening(began, "The macro call");
  return false;
}

// Tokens up to a comma outside parentheses or the closing parenthesis, which becomes current.
DEFINE_ITEM* Scanner::CollectArgument() {
  List<DEFINE_ITEM> items;
  int depth = 0;
  while (now_.Token != Tok::END_OF_FILE) {
    if (depth == 0 && (now_.Token == Tok::COMMA || now_.Token == Tok::RPAREN)) break;
    if (now_.Token == Tok::LPAREN) ++depth;
    if (now_.Token == Tok::RPAREN) --depth;
    items.Append(NewItem());
    RawTokenSkipEol();
  }
  return items.First;
}

// The current token as an item. A character constant becomes its value, so that nothing in it is
// taken for a macro's name later.
DEFINE_ITEM* Scanner::NewItem() {
  DEFINE_ITEM* item = slot_.New(slot_.DefineItems, "macro tokens");
  item->Token = now_.Token;
  if (now_.Token == Tok::SINGLEQUOTE) {
    item->Text = slot_.Texts.Copy(Format("%lld", static_cast<long long>(ParseSingleQuote())));
    return item;
  }
  item->Text = now_.Word;
  item->name = now_.WordName;
  return item;
}

void Scanner::ParseDefine() {
  RawToken();
  if (now_.Token != Tok::IDENTIFIER) {
    slot_.Error(0, now_.WordName != nullptr ? "Misuse of reserved words." : "identifier expected");
    SkipToEndOfLine();
    GetComboTokenSkipEol();
    return;
  }
  Name* name = now_.WordName;
  if (name->Define != nullptr) {
    slot_.Warning(Format("'%s' already defined in file '%s' line no=%d", name->c_str(),
                         std::string(slot_.Sources.FileName(name->Define->Line)).c_str(),
                         name->Define->Line.Line));
    name->Define = nullptr;
  }
  if (slot_.DefineRecords.full()) {
    slot_.Error(0, "Not enough memory. define entry failed");
    SkipToEndOfLine();
    GetComboTokenSkipEol();
    return;
  }
  DEFINE_REC* define = slot_.New(slot_.DefineRecords, "macros");
  define->name = name;
  define->Line = Place();
  if (now_.Cursor < now_.LineEnd && *now_.Cursor == '(') {
    RawToken();
    define->Type = DEFINE_TYPE_MACRO;
    if (!ParseFormalParameters(define)) SkipToEndOfLine();
  }
  ParseReplacement(define);
  name->Define = define;
  GetComboTokenSkipEol();
}

bool Scanner::ParseFormalParameters(DEFINE_REC* define) {
  RawToken();
  while (now_.Token == Tok::IDENTIFIER) {
    define->Parameters.Append(NewItem());
    ++define->ParameterCount;
    RawToken();
    if (now_.Token != Tok::COMMA) break;
    RawToken();
    if (now_.Token == Tok::IDENTIFIER) continue;
    slot_.Error(60, "Error in macro formal parameter declaration.");
    return false;
  }
  if (now_.Token == Tok::RPAREN) return true;
  if (now_.Token == Tok::ENDOFSTRING)
    slot_.Error(61, "Missing ')' in macro formal parameter declaration.");
  else
    slot_.Error(60, "Error in macro formal parameter declaration.");
  return false;
}

void Scanner::ParseReplacement(DEFINE_REC* define) {
  while (true) {
    RawToken();
    if (now_.Token == Tok::BACKSLASH) {
      ScanBlanks();
      if (now_.Cursor >= now_.LineEnd && ReadLine()) continue;
    }
    if (now_.Token == Tok::ENDOFSTRING) return;
    if (now_.Token == Tok::END_OF_FILE) {
      slot_.Error(0, "Unexpected end of file.");
      return;
    }
    if (now_.WordName == define->name) {
      slot_.Error(0, "Misuse of defined name.");
      return SkipToEndOfLine();
    }
    define->Items.Append(NewItem());
    ++define->ItemCount;
  }
}

void Scanner::ParseUndef() {
  RawToken();
  if (now_.WordName == nullptr)
    slot_.Error(0, "Syntax error followed by '#undef' statement.");
  else
    now_.WordName->Define = nullptr;
  SkipToEndOfLine();
  GetComboTokenSkipEol();
}

}  // namespace vorc
