#include "frontend/scanner.h"

#include <array>
#include <cstdlib>
#include <cstring>

#include "base/format.h"
#include "base/trace.h"

namespace vorc {

namespace {

constexpr size_t kLongestName = 255;
constexpr size_t kLongestShownToken = 200;
constexpr char kEndOfFileMark = 127;

enum CharClass : uint8_t { kOther, kLetter, kDigit, kEndMark, kUnderscore };

constexpr std::array<CharClass, 256> MakeCharClasses() {
  std::array<CharClass, 256> classes{};
  for (int c = 'a'; c <= 'z'; ++c) classes[static_cast<size_t>(c)] = kLetter;
  for (int c = 'A'; c <= 'Z'; ++c) classes[static_cast<size_t>(c)] = kLetter;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<size_t>(c)] = kDigit;
  classes[kEndOfFileMark] = kEndMark;
  classes['_'] = kUnderscore;
  return classes;
}

constexpr std::array<CharClass, 256> kCharClasses = MakeCharClasses();

CharClass ClassOf(char c) {
  return kCharClasses[static_cast<unsigned char>(c)];
}
bool IsDigit(char c) {
  return ClassOf(c) == kDigit;
}
bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsHexDigit(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool IsAbove127(char c) {
  return static_cast<unsigned char>(c) > kEndOfFileMark;
}
bool EndsLine(char c) {
  return c == '\n' || c == '\0' || c == '\r';
}

bool IsWordCharacter(char c) {
  const CharClass kind = ClassOf(c);
  return kind == kLetter || kind == kDigit || kind == kUnderscore;
}

struct Operator {
  std::string_view text;
  Tok token;
};

// Longer spellings stand before their own beginnings.
constexpr Operator kOperators[] = {
    {"<<=", Tok::LEFTSHIFT_EQ},
    {">>=", Tok::RIGHTSHIFT_EQ},
    {"!=", Tok::NE},
    {"%=", Tok::DIV_EQ},
    {"&&", Tok::AND},
    {"&=", Tok::BITAND_EQ},
    {"*/", Tok::BLOCKCOMMENTEND},
    {"*=", Tok::STAR_EQ},
    {"++", Tok::PLUS_PLUS},
    {"+=", Tok::PLUS_EQ},
    {"->", Tok::POINTER},
    {"--", Tok::MINUS_MINUS},
    {"-=", Tok::MINUS_EQ},
    {"//", Tok::SINGLELINECOMMENT},
    {"/*", Tok::BLOCKCOMMENTBEGIN},
    {"/=", Tok::SLASH_EQ},
    {"<=", Tok::LE},
    {"<<", Tok::LEFTSHIFT},
    {"==", Tok::EQ},
    {">=", Tok::GE},
    {">>", Tok::RIGHTSHIFT},
    {"^=", Tok::HAT_EQ},
    {"||", Tok::OR},
    {"|=", Tok::BITOR_EQ},
    {"!", Tok::NOT},
    {"#", Tok::POUND},
    {"$", Tok::dollar},
    {"%", Tok::MOD},
    {"&", Tok::BITAND},
    {"'", Tok::SINGLEQUOTE},
    {"(", Tok::LPAREN},
    {")", Tok::RPAREN},
    {"*", Tok::STAR},
    {"+", Tok::PLUS},
    {",", Tok::COMMA},
    {"-", Tok::MINUS},
    {".", Tok::DOT},
    {"/", Tok::SLASH},
    {":", Tok::COLON},
    {";", Tok::SEMICOLON},
    {"<", Tok::LT},
    {"=", Tok::ASSIGN},
    {">", Tok::GT},
    {"?", Tok::QUESTION_MARK},
    {"[", Tok::LBRACKET},
    {"\\", Tok::BACKSLASH},
    {"]", Tok::RBRACKET},
    {"^", Tok::XOR},
    {"{", Tok::LSECONDBRACKET},
    {"|", Tok::BITOR},
    {"}", Tok::RSECONDBRACKET},
    {"~", Tok::TILDA},
};

const Operator* FindOperator(const char* at) {
  // No spelling reaches beyond the zero that ends every text.
  for (const Operator& op : kOperators) {
    if (std::strncmp(at, op.text.data(), op.text.size()) == 0) return &op;
  }
  return nullptr;
}

struct NamedEscape {
  char letter;
  char value;
};
constexpr NamedEscape kStringEscapes[] = {{'0', '\0'}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'}};
constexpr NamedEscape kCharacterEscapes[] = {{'a', 7},   {'b', 8},  {'f', 12}, {'n', 10},
                                             {'r', 13},  {'t', 9},  {'v', 11}, {'\\', 92},
                                             {'\'', 39}, {'"', 34}, {'?', 63}};

constexpr int64_t kNoCharacter = -1;

}  // namespace

std::string Scanner::ClipTok() const {
  return Clip(now_.Token == Tok::END_OF_FILE ? "" : WordText(), kLongestShownToken, " ...[truncated]");
}

void Scanner::SetToken(Tok token, const char* start, const char* end) {
  now_.Token = token;
  now_.Word = {start, static_cast<size_t>(end - start)};
  now_.Cursor = end;
}

void Scanner::ScanBlanks() {
  const char* start = now_.Cursor;
  while (now_.Cursor < now_.LineEnd && IsBlank(*now_.Cursor)) ++now_.Cursor;
  now_.Blanks = {start, static_cast<size_t>(now_.Cursor - start)};
}

void Scanner::GetToken() {
  ++now_.Position;
  now_.WordName = nullptr;
  now_.FromMacro = false;
  macro_tokens_ = 0;
  if (slot_.Stopped) now_.EndOfFile = true;
  ScanBlanks();
  if (now_.EndOfFile || now_.Cursor >= now_.LineEnd) return SetEndOfString();
  switch (ClassOf(*now_.Cursor)) {
    case kDigit: return ScanNumber();
    case kLetter:
    case kUnderscore: return ScanWord();
    default: return ScanOthers();
  }
}

void Scanner::SetEndOfString() {
  now_.Word = {};
  now_.Token = now_.EndOfFile ? Tok::END_OF_FILE : Tok::ENDOFSTRING;
}

void Scanner::ScanWord() {
  const char* start = now_.Cursor;
  const char* end = start;
  while (IsWordCharacter(*end)) ++end;
  now_.BehindDollar = slot_.IsScript() && start > now_.Frame->Source->Text.data() && start[-1] == '$';
  SetToken(Tok::IDENTIFIER, start, end);
  if (now_.Word.size() > kLongestName) {
    slot_.Error(
        0, Format("Name is longer than %d characters: '%.40s...'", static_cast<int>(kLongestName), start));
    now_.Token = Tok::NOTOKEN;
    return;
  }
  now_.WordName = slot_.Names.Intern(now_.Word);
  if (now_.BehindDollar) return;
  now_.Token = ReserveWord(now_.WordName);
  if (now_.Token == Tok::NUMBER) now_.Word = now_.WordName->Reserved == Tok::true_ ? "1" : "0";
  if (now_.Token == Tok::cin_ || now_.Token == Tok::cout_) {
    slot_.Error(0, "cin/cout not supported: use printf/scanf.");
  }
}

Tok Scanner::ReserveWord(Name* name) const {
  const Tok token = name->Reserved;
  switch (token) {
    case Tok::NOTOKEN: return Tok::IDENTIFIER;
    case Tok::true_:
    case Tok::false_: return Tok::NUMBER;
    case Tok::IOBJECT:
    case Tok::rtlbegin:
    case Tok::rtlend: return slot_.IsScript() ? token : Tok::IDENTIFIER;
    default: return SizeNamedTypeList.Has(token) && name->IsTypedef ? Tok::IDENTIFIER : token;
  }
}

void Scanner::ScanNumber() {
  const char* start = now_.Cursor;
  if (start[1] == 'x') return ScanHexNumber(start);
  const char* end = start;
  while (IsDigit(*end)) ++end;
  if (*end == '.' && IsDigit(end[1])) return ScanFraction(start);
  SetToken(Tok::NUMBER, start, end);
  if (*end == 'L' || *end == 'l' || *end == 'U' || *end == 'u') ++now_.Cursor;
}

void Scanner::ScanHexNumber(const char* start) {
  const char* end = start + 2;
  while (IsHexDigit(*end)) ++end;
  SetToken(end - start < 3 ? Tok::NOTOKEN : Tok::HEXNUMBER, start, end);
  if (*end == 'L' || *end == 'l' || *end == 'U' || *end == 'u') ++now_.Cursor;
}

void Scanner::ScanFraction(const char* start) {
  const char* end = start;
  while (IsDigit(*end)) ++end;
  ++end;
  while (IsDigit(*end)) ++end;
  SetToken(Tok::REAL_NUMBER, start, end);
  if (*end == 'F' || *end == 'f') ++now_.Cursor;
}

void Scanner::ScanOthers() {
  const char* start = now_.Cursor;
  if (*start == '"') return ScanString();
  if (*start == '.' && IsDigit(start[1])) return ScanFraction(start);
  if (EndsLine(*start)) return SetEndOfString();
  if (*start == kEndOfFileMark) {
    now_.EndOfFile = true;
    return SetEndOfString();
  }
  if (const Operator* op = FindOperator(start)) return SetToken(op->token, start, start + op->text.size());
  // Bytes above 127 are pieces of characters that mean nothing by themselves.
  const char* end = start + 1;
  while (IsAbove127(*start) && end < now_.LineEnd && IsAbove127(*end)) ++end;
  SetToken(Tok::NOTOKEN, start, end);
}

void Scanner::ScanString() {
  std::string text;
  const char* at = now_.Cursor + 1;
  while (at < now_.LineEnd && *at != '"') {
    char c = *at++;
    if (c == '\\' && at < now_.LineEnd) {
      c = *at++;
      for (const NamedEscape& escape : kStringEscapes) {
        if (escape.letter == c) {
          c = escape.value;
          break;
        }
      }
    }
    text += c;
  }
  const bool closed = at < now_.LineEnd;
  if (!closed) slot_.NoteOpening(Place(), "The text");
  now_.Token = closed ? Tok::STRING : Tok::NOTOKEN;
  now_.Word = {slot_.Texts.Copy(text), text.size()};
  now_.Cursor = closed ? at + 1 : at;
  if (TraceOn()) {
    std::fprintf(stderr, "DIAG: LEXED STRING len=%d bytes:", static_cast<int>(text.size()));
    for (size_t i = 0; i < text.size() && i < 12; ++i) {
      std::fprintf(stderr, " %02X", static_cast<unsigned>(static_cast<unsigned char>(text[i])));
    }
    std::fprintf(stderr, " [%s]\n", text.c_str());
  }
}

void Scanner::ParseBlockCommentBegin() {
  const SourceLine opened = Place();
  while (true) {
    const std::string_view rest(now_.Cursor, static_cast<size_t>(now_.LineEnd - now_.Cursor));
    const size_t end = rest.find("*/");
    if (end != std::string_view::npos) {
      now_.Cursor += end + 2;
      return;
    }
    now_.Cursor = now_.LineEnd;
    if (!ReadLine()) {
      slot_.Error(0, "Unexpected end of file.");
      slot_.NoteOpening(opened, "The comment");
      return;
    }
  }
}

// True if the current token opened a comment, which is then passed over.
bool Scanner::SkipComment() {
  if (now_.Token == Tok::BLOCKCOMMENTBEGIN) {
    ParseBlockCommentBegin();
    return true;
  }
  if (now_.Token == Tok::SINGLELINECOMMENT) {
    now_.Cursor = now_.LineEnd;
    return true;
  }
  return false;
}

void Scanner::GetTokenSkipComments() {
  do GetToken();
  while (SkipComment());
}

int64_t Scanner::ParseSingleQuote() {
  if (now_.FromMacro) {
    now_.FromMacro = false;
    return std::strtoll(WordText().c_str(), nullptr, 10);
  }
  ScanBlanks();
  int64_t value = kNoCharacter;
  if (now_.Blanks.size() == 1) {
    value = now_.Blanks[0];
  } else if (now_.Cursor < now_.LineEnd && *now_.Cursor == '\\') {
    ++now_.Cursor;
    value = ScanEscape();
  } else if (now_.Cursor < now_.LineEnd) {
    const std::string_view word = ScanQuotedWord();
    value = static_cast<unsigned char>(word[0]);
    if (word.size() > 1) {
      slot_.Error(64, Format("Invalid identifier '%s' followed by ''",
                             Clip(std::string(word), kLongestShownToken, "").c_str()));
      value = kNoCharacter;
    }
  }
  ScanBlanks();
  if (now_.Cursor < now_.LineEnd && *now_.Cursor == '\'') {
    SetToken(Tok::SINGLEQUOTE, now_.Cursor, now_.Cursor + 1);
    return value;
  }
  slot_.Error(65, "Missing '''");
  return kNoCharacter;
}

// A run of word characters, one operator or one other byte.
std::string_view Scanner::ScanQuotedWord() {
  const char* start = now_.Cursor;
  const char* end = start;
  while (IsWordCharacter(*end)) ++end;
  if (end == start) {
    const Operator* op = *start == '\'' ? nullptr : FindOperator(start);
    end = op == nullptr ? start + 1 : start + op->text.size();
  }
  now_.Cursor = end;
  return {start, static_cast<size_t>(end - start)};
}

int64_t Scanner::ScanEscape() {
  ScanBlanks();
  if (now_.Cursor >= now_.LineEnd) return kNoCharacter;
  const std::string word(ScanQuotedWord());
  if (IsDigit(word[0])) return std::strtol(word.c_str(), nullptr, 8);
  if (word[0] == 'x' && word.size() > 1) return std::strtol(word.c_str() + 1, nullptr, 16);
  if (word.size() == 1) {
    for (const NamedEscape& escape : kCharacterEscapes) {
      if (escape.letter == word[0]) return escape.value;
    }
    if (word[0] != 'x') return kNoCharacter;
    ScanBlanks();
    return now_.Cursor < now_.LineEnd ? std::strtol(std::string(ScanQuotedWord()).c_str(), nullptr, 16)
                                      : kNoCharacter;
  }
  slot_.Error(64,
              Format("Invalid identifier '%s' followed by ''", Clip(word, kLongestShownToken, "").c_str()));
  return kNoCharacter;
}

void Scanner::RestoreToken(const SaveTokenRecord& saved) {
  now_ = saved;
  UpdatePlace();
}

}  // namespace vorc
