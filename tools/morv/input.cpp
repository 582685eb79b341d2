#include "morv/input.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace vorc {

namespace {

enum class Kind { kWord, kNumber, kText, kSign };

struct Token {
  Kind kind;
  std::string_view text;
  int depth;  ///< brackets that are open around it
  size_t at;
};

/// What a text holds, and what is left open at its end.
struct Scan {
  std::vector<Token> tokens;
  int depth = 0;
  int conditionals = 0;
  bool in_comment = false;
  bool has_directive = false;
  bool in_directive = false;  ///< a directive goes on in the next line
};

constexpr std::array<std::string_view, 19> kLongSigns = {
    "<<=", ">>=", "==", "!=", "<=", ">=", "&&", "||", "++", "--",
    "+=",  "-=",  "*=", "/=", "%=", "&=", "|=", "^=", "->"};

bool IsWordByte(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$';
}

/// Reads a text into tokens. It only has to be right where a person has typed what the language knows.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  Scan Read() {
    while (at_ < text_.size()) Step();
    return std::move(scan_);
  }

 private:
  bool At(std::string_view word) const { return text_.substr(at_).starts_with(word); }

  void Step() {
    const char c = text_[at_];
    if (c == '\n') {
      line_begins_ = true;
      ++at_;
    } else if (std::isspace(static_cast<unsigned char>(c)) != 0) {
      ++at_;
    } else if (At("//")) {
      at_ = std::min(text_.find('\n', at_), text_.size());
    } else if (At("/*")) {
      SkipComment();
    } else if (c == '#' && line_begins_) {
      SkipDirective();
    } else {
      line_begins_ = false;
      ReadToken(c);
    }
  }

  void SkipComment() {
    const size_t end = text_.find("*/", at_ + 2);
    scan_.in_comment = end == std::string_view::npos;
    at_ = scan_.in_comment ? text_.size() : end + 2;
  }

  void SkipDirective() {
    scan_.has_directive = true;
    ++at_;
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
    if (At("if")) ++scan_.conditionals;
    if (At("endif")) --scan_.conditionals;
    while (at_ < text_.size() && text_[at_] != '\n') {
      if (text_[at_] == '\\' && (at_ + 1 == text_.size() || text_[at_ + 1] == '\n')) {
        scan_.in_directive = at_ + 2 >= text_.size();
        ++at_;
      }
      ++at_;
    }
    at_ = std::min(at_, text_.size());
  }

  void ReadToken(char c) {
    if (c == '"' || c == '\'') return Add(Kind::kText, QuotedLength(c));
    if (IsWordByte(c)) {
      size_t length = 1;
      while (at_ + length < text_.size() && IsWordByte(text_[at_ + length])) ++length;
      return Add(std::isdigit(static_cast<unsigned char>(c)) != 0 ? Kind::kNumber : Kind::kWord, length);
    }
    if (c == ')' || c == ']' || c == '}') --scan_.depth;
    const auto* sign =
        std::find_if(kLongSigns.begin(), kLongSigns.end(), [&](auto word) { return At(word); });
    Add(Kind::kSign, sign == kLongSigns.end() ? 1 : sign->size());
    if (c == '(' || c == '[' || c == '{') ++scan_.depth;
  }

  // A text ends on its line, whether it is closed or not.
  size_t QuotedLength(char quote) const {
    size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != quote && text_[end] != '\n')
      end += text_[end] == '\\' && end + 1 < text_.size() ? 2 : 1;
    return std::min(end + 1, text_.size()) - at_;
  }

  void Add(Kind kind, size_t length) {
    scan_.tokens.push_back({kind, text_.substr(at_, length), scan_.depth, at_});
    at_ += length;
  }

  std::string_view text_;
  size_t at_ = 0;
  bool line_begins_ = true;
  Scan scan_;
};

template <size_t size>
bool IsOneOf(const std::array<std::string_view, size>& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

using Tokens = std::vector<Token>;

// Where the last statement of the outermost level begins.
size_t LastStatement(const Tokens& tokens) {
  for (size_t i = tokens.size(); i-- > 0;) {
    const bool ends = tokens[i].text == ";" || tokens[i].text == "}";
    if (ends && tokens[i].depth == 0 && i + 1 < tokens.size()) return i + 1;
  }
  return 0;
}

// Behind the bracket that closes the first one from `from` on.
size_t BehindBrackets(const Tokens& tokens, size_t from) {
  const int depth = tokens[from].depth;
  for (size_t i = from + 1; i < tokens.size(); ++i) {
    if (tokens[i].text == ")" && tokens[i].depth == depth) return i + 1;
  }
  return tokens.size();
}

// True if the tokens from `at` on are nothing but heads of `if` and loops, whose body is still to come.
bool LacksBody(const Tokens& tokens, size_t at) {
  static constexpr std::array<std::string_view, 4> kHeads = {"if", "for", "while", "switch"};
  static constexpr std::array<std::string_view, 2> kBare = {"else", "do"};
  while (at < tokens.size()) {
    if (IsOneOf(kBare, tokens[at].text)) {
      ++at;
    } else if (IsOneOf(kHeads, tokens[at].text) && at + 1 < tokens.size() && tokens[at + 1].text == "(") {
      at = BehindBrackets(tokens, at + 1);
    } else {
      return false;
    }
  }
  return true;
}

bool DoWaitsForWhile(const Tokens& tokens) {
  size_t waiting = 0;
  for (const Token& token : tokens) {
    if (token.depth != 0) continue;
    if (token.text == "do") ++waiting;
    if (token.text == "while" && waiting > 0) --waiting;
  }
  return waiting > 0;
}

// A function's or class's head: its body stands on the next line.
bool IsHead(const Tokens& tokens, size_t first) {
  static constexpr std::array<std::string_view, 6> kBodies = {"class", "struct",   "union",
                                                              "enum",  "function", "subroutine"};
  if (tokens[first].kind != Kind::kWord || tokens.back().text == ";" || tokens.back().text == "}")
    return false;
  if (IsOneOf(kBodies, tokens[first].text)) return true;
  const bool two_words =
      first + 2 < tokens.size() && (tokens[first + 1].kind == Kind::kWord || tokens[first + 1].text == "*");
  return two_words && tokens[first + 1].text != "*" && tokens.back().text == ")";
}

}  // namespace

bool IsUnfinished(std::string_view text) {
  static constexpr std::string_view kWaiting = "+-*/%=<>&|^?:,.!~";
  const Scan scan = Reader(text).Read();
  if (scan.in_comment || scan.in_directive || scan.conditionals > 0 || scan.depth > 0) return true;
  if (scan.depth < 0 || scan.tokens.empty()) return false;
  const std::string_view last = scan.tokens.back().text;
  if (scan.tokens.back().kind == Kind::kSign && kWaiting.find(last.back()) != std::string_view::npos &&
      last != "++" && last != "--")
    return true;
  const size_t first = LastStatement(scan.tokens);
  return LacksBody(scan.tokens, first) || DoWaitsForWhile(scan.tokens) || IsHead(scan.tokens, first);
}

std::optional<Expression> AsExpression(std::string_view text) {
  static constexpr std::array<std::string_view, 14> kNever = {
      "=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>=", "++", "--", ";"};
  Scan scan = Reader(text).Read();
  Tokens& tokens = scan.tokens;
  while (!tokens.empty() && tokens.back().text == ";") tokens.pop_back();
  if (tokens.empty() || scan.has_directive) return std::nullopt;
  for (const Token& token : tokens) {
    const bool outer = token.depth == 0 && token.kind == Kind::kSign;
    if ((outer && IsOneOf(kNever, token.text)) || token.text == "{") return std::nullopt;
  }
  const Token& first = tokens.front();
  // Two words side by side declare something.
  if (first.kind == Kind::kWord && tokens.size() > 1 && tokens[1].kind != Kind::kSign) return std::nullopt;
  Expression expression;
  const size_t end = tokens.back().at + tokens.back().text.size();
  expression.text = text.substr(first.at, end - first.at);
  if (first.kind != Kind::kWord) return expression;
  expression.word = first.text;
  const bool call = tokens.size() > 2 && tokens[1].text == "(" && BehindBrackets(tokens, 1) == tokens.size();
  if (call) expression.called = first.text;
  return expression;
}

}  // namespace vorc
