#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorc {

/// Lines typed at a terminal, with editing, a history that outlives the session, and completion.
class Editor {
 public:
  /// `words` are completed by the tab key.
  explicit Editor(std::vector<std::string> words);
  ~Editor();
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  /// What became of a line.
  enum class End { kLine, kInterrupted, kOver };
  End Read(const char* prompt, std::string* line);
  /// Keeps an input, which may be several lines, in the history.
  void Remember(const std::string& input);

 private:
  std::string history_file_;
};

}  // namespace vorc
