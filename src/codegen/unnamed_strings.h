#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "program/source_text.h"

namespace vorc {

/// Texts without a variable, which stand in a data section of their own behind the code.
class UnnamedStrings {
 public:
  struct Record {
    std::string label;
    std::string_view text;
    SourceLine line;
  };

  /// Takes a text, which must live as long as the compilation, and answers its new label. Equal texts
  /// get labels of their own.
  std::string_view AddUnnamedStringToDataSection(std::string_view text, SourceLine line);
  const std::deque<Record>& records() const { return records_; }

 private:
  std::deque<Record> records_;
};

}  // namespace vorc
