#include "lib/command_line.h"

namespace vorc {

namespace {

/// Steps through a command line, one character at a time, with its quotes and escapes taken off.
class CommandReader {
 public:
  struct Character {
    char value;
    bool quoted;
    bool is_quote;  ///< a double quote that opens or closes, and is no part of the text
  };

  explicit CommandReader(std::string_view command) : rest_(command) {}

  bool AtEnd() const { return rest_.empty(); }

  Character Next() {
    if (quoted_ && (rest_.starts_with("\\\"") || rest_.starts_with("\\\\")))
      rest_.remove_prefix(1);
    else if (rest_[0] == '"')
      return Quote();
    const Character character{rest_[0], quoted_, false};
    rest_.remove_prefix(1);
    return character;
  }

 private:
  Character Quote() {
    quoted_ = !quoted_;
    rest_.remove_prefix(1);
    return {'"', quoted_, true};
  }

  std::string_view rest_;
  bool quoted_ = false;
};

bool IsOneOf(char character, std::string_view set) {
  return set.find(character) != std::string_view::npos;
}

}  // namespace

bool CommandNeedsShell(std::string_view command) {
  for (CommandReader reader(command); !reader.AtEnd();) {
    const auto character = reader.Next();
    if (!character.quoted && IsOneOf(character.value, "|&<>")) return true;
  }
  return false;
}

std::optional<std::vector<std::string>> SplitCommand(std::string_view command) {
  std::vector<std::string> words;
  bool in_word = false;
  for (CommandReader reader(command); !reader.AtEnd();) {
    const auto character = reader.Next();
    if (!character.is_quote && !character.quoted && IsOneOf(character.value, " \t")) {
      in_word = false;
      continue;
    }
    if (!in_word) {
      if (words.size() == kMaxCommandWords) return std::nullopt;
      words.emplace_back();
      in_word = true;
    }
    if (!character.is_quote) words.back() += character.value;
  }
  if (words.empty()) return std::nullopt;
  return words;
}

}  // namespace vorc
