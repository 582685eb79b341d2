#include "view/log_reader.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace vorc {

namespace {

// Blocks and instructions are numbered from 0 on; a number beyond is none of a log.
constexpr int kMostBlocks = 1'000'000;

bool TakePrefix(std::string_view* text, std::string_view prefix) {
  if (!text->starts_with(prefix)) return false;
  text->remove_prefix(prefix.size());
  return true;
}

std::optional<int> TakeNumber(std::string_view* text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
  if (error != std::errc()) return std::nullopt;
  text->remove_prefix(static_cast<size_t>(end - text->data()));
  return number;
}

std::string_view TakeUntil(std::string_view* text, std::string_view mark) {
  const size_t end = std::min(text->find(mark), text->size());
  const std::string_view taken = text->substr(0, end);
  text->remove_prefix(std::min(end + mark.size(), text->size()));
  return taken;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
    text.remove_suffix(1);
  return text;
}

// The number behind a mark that stands anywhere in the line.
std::optional<int> NumberBehind(std::string_view line, std::string_view mark) {
  const size_t at = line.find(mark);
  if (at == std::string_view::npos) return std::nullopt;
  line.remove_prefix(at + mark.size());
  return TakeNumber(&line);
}

/// Reads a log line by line. What a line means depends on the section that it stands in.
class Reader {
 public:
  std::vector<CompiledFunction> Read(std::string_view log) {
    while (!log.empty()) ReadLine(TakeUntil(&log, "\n"));
    return std::move(functions_);
  }

 private:
  enum class Section { kNone, kCode, kEdges, kSummary, kRanges, kColours };

  void ReadLine(std::string_view line) {
    if (BeginFunction(line) || functions_.empty()) return;
    if (BeginSection(line)) return;
    switch (section_) {
      case Section::kCode: return ReadCode(line);
      case Section::kEdges: return ReadEdges(line);
      case Section::kSummary: return ReadSummary(line);
      case Section::kRanges: return ReadRange(line);
      case Section::kColours: return ReadColour(line);
      case Section::kNone: return ReadPurpose(line);
    }
  }

  // A function's numbered code stands in front of everything else.
  bool BeginFunction(std::string_view line) {
    if (!TakePrefix(&line, "instruction_index:") || !TakeNumber(&line) || !TakePrefix(&line, "  PROCEDURE "))
      return false;
    functions_.push_back({std::string(Trim(line)), {}, {}});
    section_ = Section::kNone;
    return true;
  }

  bool BeginSection(std::string_view line) {
    struct Mark {
      std::string_view text;
      Section section;
    };
    static constexpr Mark kMarks[] = {
        {"== Dumping block no ", Section::kCode},
        {">>>>>  Block No ", Section::kEdges},
        {"== basic block no ", Section::kSummary},
        {"........... Dump live ranges  for  bb no=", Section::kRanges},
        {"==================GRAPH COLORING FOR REGISTER ALLOCATION BEGIN FOR BB=", Section::kColours}};
    for (const Mark& mark : kMarks) {
      std::string_view rest = line;
      if (!TakePrefix(&rest, mark.text)) continue;
      const std::optional<int> number = TakeNumber(&rest);
      if (!number || *number < 0 || *number >= kMostBlocks) return false;
      block_ = static_cast<size_t>(*number);
      section_ = mark.section;
      coloured_ = 0;
      return true;
    }
    const bool ends = line.starts_with("== END") || line.starts_with("............ Dump live ranges") ||
                      line.starts_with("------------------- Generate register");
    if (ends) section_ = Section::kNone;
    return ends;
  }

  FlowBlock& Block() {
    std::vector<FlowBlock>& blocks = functions_.back().blocks;
    if (block_ >= blocks.size()) blocks.resize(block_ + 1);
    return blocks[block_];
  }

  void ReadCode(std::string_view line) {
    if (!TakePrefix(&line, "instruction_index:")) return;
    const std::optional<int> index = TakeNumber(&line);
    if (index && TakePrefix(&line, ":")) Block().code.push_back({*index, std::string(Trim(line))});
  }

  void ReadEdges(std::string_view line) {
    if (!TakePrefix(&line, "Successors {")) return;
    while (const std::optional<int> number = TakeNumber(&line)) {
      Block().successors.push_back(*number);
      TakePrefix(&line, ", ");
    }
    section_ = Section::kNone;
  }

  void ReadSummary(std::string_view line) {
    for (auto [mark, text] :
         {std::pair("IN VARS={", &FlowBlock::live_in), {"OUT VARS={", &FlowBlock::live_out}}) {
      std::string_view rest = line;
      if (!TakePrefix(&rest, mark)) continue;
      std::string_view names = TakeUntil(&rest, "}");
      if (names.ends_with(',')) names.remove_suffix(1);
      Block().*text = names;
    }
  }

  void ReadRange(std::string_view line) {
    if (!TakePrefix(&line, "variable name=")) return;
    LiveRange range;
    const size_t end = line.rfind(" live_range_begin=");
    if (end == std::string_view::npos) return;
    range.variable = line.substr(0, end);
    range.begin = NumberBehind(line, " live_range_begin=").value_or(0);
    range.end = NumberBehind(line, " live_range_end=").value_or(range.begin);
    Block().ranges.push_back(std::move(range));
  }

  // Colours are told in the order of the ranges.
  void ReadColour(std::string_view line) {
    if (!TakePrefix(&line, "Variable name ='")) return;
    const std::string_view name = line.substr(0, std::min(line.rfind("' , color="), line.size()));
    const std::optional<int> colour = NumberBehind(line, "' , color=");
    std::vector<LiveRange>& ranges = Block().ranges;
    while (coloured_ < ranges.size() && ranges[coloured_].variable != name) ++coloured_;
    if (coloured_ < ranges.size()) ranges[coloured_++].colour = colour.value_or(-1);
  }

  // ... Block Number_2: body of the while loop
  void ReadPurpose(std::string_view line) {
    const size_t at = line.find("Block Number_");
    if (at == std::string_view::npos || line.find("live range not calculated") == std::string_view::npos)
      return;
    line.remove_prefix(at + std::string_view("Block Number_").size());
    const std::optional<int> number = TakeNumber(&line);
    if (!number || *number < 0 || static_cast<size_t>(*number) >= functions_.back().blocks.size()) return;
    if (!TakePrefix(&line, ":")) return;
    functions_.back().blocks[static_cast<size_t>(*number)].purpose = Trim(TakeUntil(&line, " -> live range"));
  }

  std::vector<CompiledFunction> functions_;
  Section section_ = Section::kNone;
  size_t block_ = 0;
  size_t coloured_ = 0;
};

// "/*000012:*/text"
std::optional<AssemblyLine> ReadAssemblyLine(std::string_view line) {
  AssemblyLine read;
  if (!TakePrefix(&line, "/*")) return std::nullopt;
  const std::optional<int> number = TakeNumber(&line);
  if (!number || !TakePrefix(&line, ":*/")) return std::nullopt;
  read.source_line = *number;
  if (TakePrefix(&line, "///"))
    read.source = line;
  else
    read.assembly = Trim(line);
  return read;
}

}  // namespace

std::vector<CompiledFunction> ReadAnalysisLog(std::string_view log) {
  return Reader().Read(log);
}

void AddAssembly(std::string_view assembly, std::vector<CompiledFunction>* functions) {
  auto function = functions->end();
  while (!assembly.empty()) {
    std::optional<AssemblyLine> line = ReadAssemblyLine(TakeUntil(&assembly, "\n"));
    if (!line) continue;
    std::string_view text = line->assembly;
    if (TakePrefix(&text, "PROCEDURE "))
      function = std::find_if(functions->begin(), functions->end(),
                              [name = Trim(text)](const CompiledFunction& one) { return one.name == name; });
    if (function == functions->end()) continue;
    const bool last = text.starts_with("END ");
    function->assembly.push_back(std::move(*line));
    if (last) function = functions->end();
  }
}

}  // namespace vorc
