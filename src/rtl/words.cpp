#include "rtl/words.h"

#include <algorithm>

namespace vorc {

namespace {

bool IsStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// A literal such as 32'sd5 is one run, and no word.
bool GoesOn(char c) {
  return IsStart(c) || IsDigit(c) || c == '\'';
}

std::string WithSuffix(std::string_view text, const WordSet& words, std::string_view suffix) {
  std::string out;
  while (!text.empty()) {
    const auto end = std::find_if_not(text.begin(), text.end(), GoesOn);
    const auto length = std::max<size_t>(1, static_cast<size_t>(end - text.begin()));
    const std::string_view run = text.substr(0, length);
    out += run;
    if (IsStart(run[0]) && words.contains(run)) out += suffix;
    text.remove_prefix(length);
  }
  return out;
}

}  // namespace

std::string morv_rtl_rename_word(std::string_view text, const WordSet& words) {
  return WithSuffix(text, words, "_v");
}

std::string morv_rtl_subst_next(std::string_view text, const WordSet& known) {
  return WithSuffix(text, known, "_next");
}

}  // namespace vorc
