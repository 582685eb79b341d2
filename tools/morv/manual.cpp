#include "morv/manual.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vorc {

namespace {

using Lines = std::vector<std::string_view>;

Lines SplitLines(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// The cells of a table's row; none for any other line.
Lines Cells(std::string_view line) {
  Lines cells;
  if (!line.starts_with('|')) return cells;
  size_t begin = 1;
  for (size_t i = 1; i < line.size(); ++i) {
    if (line[i] != '|' || line[i - 1] == '\\') continue;
    cells.push_back(Trim(line.substr(begin, i - begin)));
    begin = i + 1;
  }
  return cells;
}

// Text as it reads without marks: no backquotes, no stars, a link's words alone.
std::string Plain(std::string_view text) {
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool escaped_bar = text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '|';
    if (text[i] == '`' || text.substr(i).starts_with("**") || escaped_bar) {
      if (text[i] == '*') ++i;
    } else if (text.substr(i).starts_with("](")) {
      i = std::min(text.find(')', i), text.size());
    } else if (text[i] != '[' || text.find("](", i) == std::string_view::npos) {
      plain += text[i];
    }
  }
  return plain;
}

bool IsWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// True if the text calls the function: its name, whole, and a bracket.
bool Calls(std::string_view text, std::string_view name) {
  const std::string call = std::string(name) + "(";
  for (size_t at = text.find(call); at != std::string_view::npos; at = text.find(call, at + 1)) {
    if (at == 0 || !IsWordByte(text[at - 1])) return true;
  }
  return false;
}

/// A row of the index.
struct Row {
  std::string_view topic;
  std::string call;  ///< name(arguments)
  std::string answer;
  std::string page;  ///< name of the page that tells more

  std::string Name() const { return call.substr(0, call.find('(')); }
};

// The page's name out of "[strings](builtins/strings.md)".
std::string LinkedPage(std::string_view cell) {
  const size_t slash = cell.rfind('/');
  const size_t end = cell.rfind(".md");
  if (slash == std::string_view::npos || end == std::string_view::npos) return "";
  return std::string(cell.substr(slash + 1, end - slash - 1));
}

std::vector<Row> ReadIndex() {
  std::vector<Row> rows;
  std::string_view topic;
  for (const std::string_view line : SplitLines(kManualPages.front().text)) {
    if (line.starts_with("## ")) topic = line.substr(3);
    const Lines cells = Cells(line);
    if (cells.size() != 3 || !cells[0].starts_with('`')) continue;
    rows.push_back({topic, Plain(cells[0]), Plain(cells[1]), LinkedPage(cells[2])});
  }
  return rows;
}

std::string_view PageText(std::string_view name) {
  for (const ManualPage& page : kManualPages) {
    if (page.name == name) return page.text;
  }
  return {};
}

/// A script of a page and what it prints.
struct Example {
  std::string script;
  std::string output;
};

// The block behind line `at`, which opens it; `at` then stands on its end.
std::string ReadBlock(const Lines& lines, size_t* at) {
  std::string block;
  while (++*at < lines.size() && lines[*at] != "```") block.append("  ").append(lines[*at]).append("\n");
  return block;
}

std::optional<Example> FindExample(std::string_view page, std::string_view name) {
  const Lines lines = SplitLines(page);
  for (size_t i = 0; i < lines.size(); ++i) {
    if (lines[i] != "```c") continue;
    Example example;
    example.script = ReadBlock(lines, &i);
    if (!Calls(example.script, name)) continue;
    if (i + 1 < lines.size() && lines[i + 1] == "```output") example.output = ReadBlock(lines, &++i);
    return example;
  }
  return std::nullopt;
}

// What the page tells in running text: from the heading that names the function to the next heading or
// example.
std::string SectionOf(const Lines& lines, std::string_view name) {
  std::string section;
  bool within = false;
  for (const std::string_view line : lines) {
    if (line.starts_with("#")) {
      if (within) break;
      within = Calls(line, name);
    } else if (within && line.starts_with("```")) {
      break;
    } else if (within && !(section.empty() && line.empty())) {
      section += Plain(line) + "\n";
    }
  }
  while (section.ends_with("\n\n")) section.pop_back();
  return section;
}

// The cell beside the function in a table of the page.
std::string RowOf(const Lines& lines, std::string_view name) {
  for (const std::string_view line : lines) {
    const Lines cells = Cells(line);
    if (cells.size() >= 2 && Calls(Plain(cells[0]), name)) return Plain(cells[1]) + "\n";
  }
  return "";
}

std::string Wrap(std::string_view text, size_t width) {
  std::string wrapped;
  size_t column = 0;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find_first_of(" \n", at), text.size());
    const std::string_view word = text.substr(at, end - at);
    if (column > 0 && column + word.size() + 1 > width) {
      wrapped += '\n';
      column = 0;
    } else if (column > 0) {
      wrapped += ' ';
      ++column;
    }
    wrapped += word;
    column += word.size();
    at = end + 1;
  }
  return wrapped + "\n";
}

std::optional<Row> FindRow(std::string_view name) {
  for (Row& row : ReadIndex()) {
    if (row.Name() == name) return std::move(row);
  }
  return std::nullopt;
}

// "the same as X" is told by what stands with X.
std::string AliasOf(const Row& row) {
  constexpr std::string_view kSame = "the same as ";
  if (!row.answer.starts_with(kSame)) return "";
  const std::string other = row.answer.substr(kSame.size());
  return FindRow(other) ? other : "";
}

size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i);
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t change = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, change});
    }
  }
  return row.back();
}

}  // namespace

std::string ListFunctions(std::string_view word) {
  std::string list;
  std::string_view topic;
  for (const Row& row : ReadIndex()) {
    const bool wanted = (row.call + " " + row.answer).find(word) != std::string::npos;
    if (!wanted && row.topic.find(word) == std::string_view::npos) continue;
    if (row.topic != topic) {
      list.append(list.empty() ? "" : "\n").append(row.topic).append("\n");
      topic = row.topic;
    }
    list += "  " + row.call + "\n      " + row.answer + "\n";
  }
  return list;
}

std::string DescribeFunction(std::string_view name) {
  const std::optional<Row> row = FindRow(name);
  if (!row) return "";
  std::string text = row->call + "\n    " + row->answer + "\n";
  const std::string alias = AliasOf(*row);
  if (!alias.empty()) return text + "\n" + DescribeFunction(alias);

  constexpr size_t kWidth = 78;
  const std::string_view page = PageText(row->page);
  const Lines lines = SplitLines(page);
  const std::string cell = RowOf(lines, name);
  const std::string section = SectionOf(lines, name);
  if (!cell.empty()) text += "\n" + Wrap(cell, kWidth);
  if (!section.empty()) text += "\n" + section;
  std::optional<Example> example = FindExample(page, name);
  for (size_t i = 0; i < kManualPages.size() && !example; ++i)
    example = FindExample(kManualPages[i].text, name);
  if (!example) return text;
  text += "\nExample:\n\n" + example->script;
  if (!example->output.empty()) text += "\nIt prints:\n\n" + example->output;
  return text;
}

std::vector<std::string> SimilarFunctions(std::string_view name) {
  constexpr size_t kMost = 5;
  std::vector<std::pair<size_t, std::string>> ranked;
  for (const std::string& known : FunctionNames()) {
    const bool within = known.find(name) != std::string::npos;
    const size_t distance = within ? 1 : EditDistance(name, known);
    if (distance <= std::max<size_t>(2, name.size() / 3)) ranked.emplace_back(distance, known);
  }
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> similar;
  for (size_t i = 0; i < std::min(kMost, ranked.size()); ++i) similar.push_back(ranked[i].second);
  return similar;
}

std::vector<std::string> FunctionNames() {
  std::vector<std::string> names;
  for (const Row& row : ReadIndex()) names.push_back(row.Name());
  return names;
}

}  // namespace vorc
