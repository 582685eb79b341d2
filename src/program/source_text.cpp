#include "program/source_text.h"

#include <utility>

namespace vorc {

namespace {

std::vector<uint32_t> FindLines(std::string_view text) {
  std::vector<uint32_t> starts;
  size_t at = 0;
  while (at < text.size()) {
    starts.push_back(static_cast<uint32_t>(at));
    const size_t end = text.find('\n', at);
    if (end == std::string_view::npos) break;
    at = end + 1;
  }
  return starts;
}

}  // namespace

const SourceTexts::Source* SourceTexts::Add(std::string name, std::string text) {
  const auto number = static_cast<uint32_t>(sources_.size() + 1);
  line_starts_.emplace_back();
  return &sources_.emplace_back(Source{number, std::move(name), std::move(text)});
}

std::string_view SourceTexts::FileName(SourceLine line) const {
  const Source* source = Find(line.File);
  return source == nullptr ? std::string_view() : source->Name;
}

std::string_view SourceTexts::LineText(SourceLine line) const {
  const Source* source = Find(line.File);
  if (source == nullptr || line.Line < 1) return {};
  std::vector<uint32_t>& starts = line_starts_[line.File - 1];
  if (starts.empty()) starts = FindLines(source->Text);
  const auto index = static_cast<size_t>(line.Line) - 1;
  if (index >= starts.size()) return {};
  const std::string_view rest = std::string_view(source->Text).substr(starts[index]);
  return rest.substr(0, rest.find('\n'));
}

}  // namespace vorc
