#include "lib/json.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace vorc {

namespace {

constexpr size_t kKeyCapacity = 128;
constexpr size_t kEscapeRoom = 8;

bool IsSpace(char c) {
  return c == '\t' || c == '\n' || c == '\r' || c == ' ';
}
bool EndsLiteral(char c) {
  return c == ',' || c == '}' || c == ']' || IsSpace(c);
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

/// Takes the digits of \uXXXX from the front of `text`. One byte has to do for the character.
char TakeUnicode(std::string_view& text) {
  int code = 0;
  int digits = 0;
  for (; digits < 4 && !text.empty() && HexValue(text.front()) >= 0; ++digits) {
    code = code * 16 + HexValue(text.front());
    text.remove_prefix(1);
  }
  return digits == 4 && code >= 1 && code <= 127 ? static_cast<char>(code) : '?';
}

/// Takes what follows a backslash from the front of `text`, which isn't empty.
char TakeEscape(std::string_view& text) {
  const char c = text.front();
  text.remove_prefix(1);
  switch (c) {
    case 'b': return '\b';
    case 'f': return '\f';
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    case 'u': return TakeUnicode(text);
    default: return c;
  }
}

/// What the text between two quotes stands for, cut to `capacity` - 1 bytes.
std::string Unescape(std::string_view text, size_t capacity) {
  std::string plain;
  while (!text.empty() && plain.size() + 1 < capacity) {
    if (text.front() == '\\') {
      text.remove_prefix(1);
      if (!text.empty()) plain += TakeEscape(text);
      continue;
    }
    const size_t run = std::min({text.find('\\', 1), text.size(), capacity - 1 - plain.size()});
    plain += text.substr(0, run);
    text.remove_prefix(run);
  }
  return plain;
}

/// Walks over a JSON text. A step that finds something else than it looks for answers false or
/// nothing. Only strings and brackets are looked into; numbers and literals are taken as they are.
class JsonCursor {
 public:
  explicit JsonCursor(std::string_view text) : text_(text) {}

  /// Takes `c` and the blanks around it.
  bool Take(char c) {
    SkipBlanks();
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    SkipBlanks();
    return true;
  }

  /// What begins at the cursor, behind blanks.
  std::string_view Rest() {
    SkipBlanks();
    return text_.substr(at_);
  }

  bool AtEndOr(char c) const { return at_ >= text_.size() || text_[at_] == c; }

  /// Takes the value at the cursor and answers its text, quotes and brackets included. Nothing if
  /// a string or bracket in it doesn't end.
  std::optional<std::string_view> TakeValue() {
    SkipBlanks();
    const size_t start = at_;
    if (!SkipValue()) return std::nullopt;
    return text_.substr(start, at_ - start);
  }

 private:
  void SkipBlanks() {
    while (at_ < text_.size() && IsSpace(text_[at_])) ++at_;
  }

  bool SkipValue() {
    const char first = at_ < text_.size() ? text_[at_] : '\0';
    if (first == '"') return SkipString();
    if (first == '{') return SkipBrackets('{', '}');
    if (first == '[') return SkipBrackets('[', ']');
    while (at_ < text_.size() && !EndsLiteral(text_[at_])) ++at_;
    return true;
  }

  bool SkipString() {
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == '"') {
        ++at_;
        return true;
      }
      if (text_[at_] == '\\') ++at_;
    }
    return false;
  }

  /// The other kind of bracket isn't looked at, so depth is a number and needs no stack.
  bool SkipBrackets(char open, char close) {
    size_t depth = 0;
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '"') {
        if (!SkipString()) return false;
        continue;
      }
      ++at_;
      if (c == open) ++depth;
      if (c == close && --depth == 0) return true;
    }
    return false;
  }

  std::string_view text_;
  size_t at_ = 0;
};

/// Takes the next segment from the front of the path, with the point behind it.
std::string_view TakeSegment(std::string_view& path) {
  const std::string_view segment = path.substr(0, path.find('.'));
  path.remove_prefix(std::min(path.size(), segment.size() + 1));
  return segment;
}

/// The index that a segment stands for; one that no text has elements for if it is too large.
size_t IndexOf(std::string_view digits) {
  size_t index = 0;
  for (const char c : digits) {
    if (index > SIZE_MAX / 10 - 1) return SIZE_MAX;
    index = index * 10 + static_cast<size_t>(c - '0');
  }
  return index;
}

bool EnterArray(JsonCursor& cursor, size_t index) {
  if (!cursor.Take('[') || cursor.AtEndOr(']')) return false;
  for (; index > 0; --index) {
    if (!cursor.TakeValue() || !cursor.Take(',') || cursor.AtEndOr(']')) return false;
  }
  return true;
}

std::string_view WithoutQuotes(std::string_view text) {
  return text.substr(1, text.size() - 2);
}

/// A longer key is known by its first 127 bytes only.
bool KeyIs(std::string_view key, std::string_view wanted) {
  if (key.find('\\') == std::string_view::npos) return key.substr(0, kKeyCapacity - 1) == wanted;
  return Unescape(key, kKeyCapacity) == wanted;
}

bool EnterObject(JsonCursor& cursor, std::string_view wanted) {
  if (!cursor.Take('{')) return false;
  do {
    const std::optional<std::string_view> key = cursor.TakeValue();
    if (!key || !key->starts_with('"') || !cursor.Take(':')) return false;
    if (KeyIs(WithoutQuotes(*key), wanted)) return true;
  } while (cursor.TakeValue() && cursor.Take(','));
  return false;
}

bool Enter(JsonCursor& cursor, std::string_view segment) {
  if (segment.empty() || segment.size() >= kKeyCapacity) return false;
  return std::all_of(segment.begin(), segment.end(), IsDigit) ? EnterArray(cursor, IndexOf(segment))
                                                              : EnterObject(cursor, segment);
}

bool IsPlain(char c) {
  return static_cast<unsigned char>(c) >= 32 && c != '"' && c != '\\';
}

void AppendEscape(std::string& escaped, char c) {
  constexpr std::string_view kHex = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  escaped += '\\';
  switch (c) {
    case '\t': escaped += 't'; break;
    case '\n': escaped += 'n'; break;
    case '\r': escaped += 'r'; break;
    case '"':
    case '\\': escaped += c; break;
    default: escaped.append("u00").append({kHex[byte >> 4], kHex[byte & 15]});
  }
}

}  // namespace

std::string MorvJsonGet(std::string_view json, std::string_view path, size_t capacity) {
  JsonCursor cursor(json);
  while (!path.empty()) {
    if (!Enter(cursor, TakeSegment(path))) return {};
  }
  const std::string_view rest = cursor.Rest();
  const std::optional<std::string_view> value = cursor.TakeValue();
  if (capacity == 0) return {};
  // A string that is cut short, as the end of a long answer is, gives what there is of it.
  if (rest.starts_with('"')) return Unescape(value ? WithoutQuotes(*value) : rest.substr(1), capacity);
  return value ? std::string(value->substr(0, capacity - 1)) : std::string();
}

std::string MorvJsonEscape(std::string_view text, size_t capacity) {
  std::string escaped;
  while (!text.empty() && capacity >= kEscapeRoom && escaped.size() <= capacity - kEscapeRoom) {
    const size_t room = capacity - kEscapeRoom - escaped.size() + 1;
    const auto end = std::find_if_not(text.begin(), text.end(), IsPlain);
    const size_t run = std::min(static_cast<size_t>(end - text.begin()), room);
    escaped += text.substr(0, run);
    if (run == 0) AppendEscape(escaped, text.front());
    text.remove_prefix(std::max<size_t>(run, 1));
  }
  return escaped;
}

}  // namespace vorc
