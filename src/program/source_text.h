#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// A line of one of a compilation's sources. Line 0 is a place in front of the text.
struct SourceLine {
  uint32_t File = 0;  ///< number of the source in `SourceTexts`; 0 for none
  int32_t Line = 0;   ///< counted from 1

  bool operator==(const SourceLine&) const = default;
};

/// The sources of a compilation, kept whole until its end, so that every record can name its file
/// and quote its line.
class SourceTexts {
 public:
  struct Source {
    uint32_t Number = 0;
    std::string Name;  ///< as messages show it
    std::string Text;  ///< with line feeds as line ends
  };

  /// Keeps a text; its address and contents never change again.
  const Source* Add(std::string name, std::string text);

  /// Name of a line's file, empty for none.
  std::string_view FileName(SourceLine line) const;
  /// A line without its end; empty in front of the text and behind it.
  std::string_view LineText(SourceLine line) const;

 private:
  const Source* Find(uint32_t number) const {
    return number == 0 || number > sources_.size() ? nullptr : &sources_[number - 1];
  }

  std::deque<Source> sources_;
  /// By source: where each line begins, found when a line is first asked for.
  mutable std::vector<std::vector<uint32_t>> line_starts_;
};

}  // namespace vorc
