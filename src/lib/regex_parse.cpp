#include "lib/regex_parse.h"

#include <utility>

namespace vorc {

namespace {

ByteSet BytesWhere(int (*test)(int)) {
  ByteSet set;
  for (int byte = 0; byte < 256; ++byte) set[static_cast<size_t>(byte)] = test(byte) != 0;
  return set;
}

// The tables stand for the C locale, whatever locale the process runs in: bytes above 127 belong
// to no class there.
int IsDigit(int byte) {
  return byte >= '0' && byte <= '9';
}
int IsSpace(int byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}
int IsLetter(int byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}
int IsWord(int byte) {
  return IsLetter(byte) || IsDigit(byte) || byte == '_';
}

ByteSet ClassSet(char letter) {
  switch (letter) {
    case 'd': return BytesWhere(IsDigit);
    case 'D': return ~BytesWhere(IsDigit);
    case 's': return BytesWhere(IsSpace);
    case 'S': return ~BytesWhere(IsSpace);
    case 'w': return BytesWhere(IsWord);
    default: return ~BytesWhere(IsWord);
  }
}

bool IsClass(std::string_view text) {
  return text.size() > 1 && text[0] == '\\' &&
         std::string_view("dDsSwW").find(text[1]) != std::string_view::npos;
}

class RegexParser {
 public:
  explicit RegexParser(std::string_view pattern) : rest_(pattern) {}

  RegexTree Parse() {
    tree_.root = MorvReParseAlt();
    if (!rest_.empty()) tree_.ok = false;
    tree_.accept = Add(RegexNodeKind::kAccept);
    return std::move(tree_);
  }

 private:
  int32_t MorvReParseAlt();
  int32_t MorvReParseConcat();
  int32_t ParseAtom();
  int32_t ParseGroup();
  int32_t ParseSet();
  int32_t ParseEscape();
  int32_t ParseQuantifier(int32_t atom);
  void AddRange(ByteSet& set);
  int32_t Add(RegexNodeKind kind, int32_t sub = -1);
  int32_t AddSet(const ByteSet& set);
  int32_t AddLiteral(char byte);

  RegexNode& Node(int32_t index) { return tree_.nodes[static_cast<size_t>(index)]; }
  ByteSet TakeClass();
  char TakeMember();
  char Take() {
    const char byte = rest_.front();
    rest_.remove_prefix(1);
    return byte;
  }
  bool TakeIf(char byte) {
    if (!rest_.starts_with(byte)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::string_view rest_;
  RegexTree tree_;
};

int32_t RegexParser::Add(RegexNodeKind kind, int32_t sub) {
  if (tree_.nodes.size() == kRegexNodeLimit) tree_.ok = false;
  if (!tree_.ok) return -1;
  RegexNode& node = tree_.nodes.emplace_back();
  node.kind = kind;
  node.sub = sub;
  return static_cast<int32_t>(tree_.nodes.size() - 1);
}

int32_t RegexParser::AddSet(const ByteSet& set) {
  const int32_t node = Add(RegexNodeKind::kSet);
  if (node >= 0) Node(node).set = set;
  return node;
}

int32_t RegexParser::AddLiteral(char byte) {
  const int32_t node = Add(RegexNodeKind::kLiteral);
  if (node >= 0) Node(node).literal = static_cast<uint8_t>(byte);
  return node;
}

int32_t RegexParser::MorvReParseAlt() {
  int32_t left = MorvReParseConcat();
  while (tree_.ok && TakeIf('|')) {
    const int32_t right = MorvReParseConcat();
    left = Add(RegexNodeKind::kAlternate, left);
    if (left >= 0) Node(left).alt = right;
  }
  return left;
}

int32_t RegexParser::MorvReParseConcat() {
  int32_t whole = -1;
  while (tree_.ok && !rest_.empty() && rest_.front() != '|' && rest_.front() != ')') {
    const int32_t atom = ParseQuantifier(ParseAtom());
    if (whole < 0) {
      whole = atom;
      continue;
    }
    whole = Add(RegexNodeKind::kConcat, whole);
    if (whole >= 0) Node(whole).next = atom;
  }
  return whole;
}

int32_t RegexParser::ParseQuantifier(int32_t atom) {
  if (TakeIf('*')) return Add(RegexNodeKind::kStar, atom);
  if (TakeIf('+')) return Add(RegexNodeKind::kPlus, atom);
  if (TakeIf('?')) return Add(RegexNodeKind::kOptional, atom);
  return atom;
}

int32_t RegexParser::ParseAtom() {
  switch (rest_.front()) {
    case '(': return ParseGroup();
    case '[': return ParseSet();
    case '\\': return ParseEscape();
    case '.': Take(); return Add(RegexNodeKind::kAny);
    case '^': Take(); return Add(RegexNodeKind::kTextStart);
    case '$': Take(); return Add(RegexNodeKind::kTextEnd);
    default: return AddLiteral(Take());
  }
}

int32_t RegexParser::ParseGroup() {
  Take();
  const int32_t group = tree_.groups++;
  const int32_t open = Add(RegexNodeKind::kGroupOpen);
  const int32_t body = tree_.ok ? MorvReParseAlt() : -1;
  if (!TakeIf(')')) tree_.ok = false;
  const int32_t close = Add(RegexNodeKind::kGroupClose);
  if (!tree_.ok) return -1;
  Node(open).sub = body;
  Node(open).next = close;
  Node(open).group = Node(close).group = group;
  return open;
}

int32_t RegexParser::ParseEscape() {
  return IsClass(rest_) ? AddSet(TakeClass()) : AddLiteral(TakeMember());
}

int32_t RegexParser::ParseSet() {
  Take();
  const bool complement = TakeIf('^');
  ByteSet set;
  while (!rest_.empty() && !TakeIf(']')) {
    if (IsClass(rest_)) {
      set |= TakeClass();
    } else {
      AddRange(set);
    }
  }
  return AddSet(complement ? ~set : set);
}

// A range that runs backwards is empty.
void RegexParser::AddRange(ByteSet& set) {
  const auto first = static_cast<uint8_t>(TakeMember());
  auto last = first;
  if (rest_.size() > 1 && rest_[0] == '-' && rest_[1] != ']' && !IsClass(rest_.substr(1))) {
    Take();
    last = static_cast<uint8_t>(TakeMember());
  }
  for (size_t byte = first; byte <= last; ++byte) set.set(byte);
}

ByteSet RegexParser::TakeClass() {
  Take();
  return ClassSet(Take());
}

// One byte, with or without a backslash in front; a backslash with nothing behind it is itself.
char RegexParser::TakeMember() {
  if (rest_.front() == '\\' && rest_.size() > 1) Take();
  return Take();
}

}  // namespace

RegexTree ParseRegex(std::string_view pattern) {
  return RegexParser(pattern.substr(0, pattern.find('\0'))).Parse();
}

}  // namespace vorc
