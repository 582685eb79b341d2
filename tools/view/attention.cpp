#include "view/attention.h"

#include <algorithm>
#include <charconv>

#include "base/format.h"
#include "view/svg.h"

namespace vorc {

namespace {

constexpr std::string_view kMark = "[llmtrace] ";

bool TakePrefix(std::string_view* text, std::string_view prefix) {
  if (!text->starts_with(prefix)) return false;
  text->remove_prefix(prefix.size());
  return true;
}

// "    [  0.4989   0.5011 ... ]" as numbers; none for any other line.
std::vector<double> Numbers(std::string_view line) {
  std::vector<double> numbers;
  if (!TakePrefix(&line, "    [")) return numbers;
  while (!line.empty()) {
    const size_t begin = line.find_first_not_of(' ');
    if (begin == std::string_view::npos) break;
    line.remove_prefix(begin);
    double number = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (error != std::errc()) break;
    numbers.push_back(number);
    line.remove_prefix(static_cast<size_t>(end - line.data()));
  }
  return numbers;
}

class Reader {
 public:
  std::vector<AttentionHead> Read(std::string_view trace) {
    while (!trace.empty()) {
      const size_t end = std::min(trace.find('\n'), trace.size());
      std::string_view line = trace.substr(0, end);
      trace.remove_prefix(std::min(end + 1, trace.size()));
      if (TakePrefix(&line, kMark)) ReadLine(line);
    }
    return std::move(heads_);
  }

 private:
  void ReadLine(std::string_view line) {
    if (TakePrefix(&line, "STEP: ")) return BeginStep(line);
    if (TakePrefix(&line, "  position ")) return ReadLabel(line);
    if (TakePrefix(&line, "  head ")) return BeginHead(line);
    if (!within_) return;
    std::vector<double> row = Numbers(line);
    within_ = !row.empty();
    if (within_) heads_.back().weights.push_back(std::move(row));
  }

  void BeginStep(std::string_view title) {
    within_ = false;
    if (title.starts_with("TOKENIZING")) labels_.clear();
    if (!title.starts_with("ATTENTION")) return;
    ++step_;
    title_ = title;
  }

  // "3: 'b' -> token ID 98"
  void ReadLabel(std::string_view line) {
    const size_t quote = line.find('\'');
    const bool letter = quote != std::string_view::npos && quote + 2 < line.size() && line[quote + 2] == '\'';
    labels_.push_back(letter ? std::string(1, line[quote + 1]) : "?");
  }

  void BeginHead(std::string_view line) {
    AttentionHead head{step_, 0, title_, {}, labels_};
    std::from_chars(line.data(), line.data() + line.size(), head.head);
    within_ = step_ > 0 && line.find("weights after softmax") != std::string_view::npos;
    if (within_) heads_.push_back(std::move(head));
  }

  std::vector<AttentionHead> heads_;
  std::vector<std::string> labels_;
  std::string title_;
  int step_ = 0;
  bool within_ = false;
};

std::string Label(const AttentionHead& head, size_t position) {
  const std::string number = std::to_string(position);
  return position < head.labels.size() ? number + " " + head.labels[position] : number;
}

}  // namespace

std::vector<AttentionHead> ReadAttention(std::string_view trace) {
  return Reader().Read(trace);
}

std::string AttentionSvg(const AttentionHead& head) {
  constexpr int kCell = 44;
  constexpr int kMargin = 72;
  size_t columns = 0;
  for (const auto& row : head.weights) columns = std::max(columns, row.size());
  const int width = 2 * kMargin + static_cast<int>(columns) * kCell;
  const int height = 2 * kMargin + static_cast<int>(head.weights.size()) * kCell;
  std::string svg = Format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 %d %d\" "
      "font-family=\"sans-serif\" font-size=\"12\">\n<rect width=\"100%%\" height=\"100%%\" "
      "fill=\"#fff\"/>\n",
      width, height, width, height);
  const std::string title = Escaped(head.title);
  const std::string place = Format("attention %d, head %d", head.step, head.head);
  svg += "<title>" + title + ", " + place + "</title>\n<text x=\"8\" y=\"16\">" + title +
         "</text>\n<text x=\"8\" y=\"32\">" + place + "</text>\n";
  svg += Format(
      "<text x=\"%d\" y=\"%d\" fill=\"#5c6670\">row: the position that asks; column: where it looks</text>\n",
      8, height - 12);
  for (size_t i = 0; i < columns; ++i)
    svg += Format("<text x=\"%d\" y=\"%d\" text-anchor=\"middle\">",
                  kMargin + static_cast<int>(i) * kCell + kCell / 2, kMargin - 8) +
           Escaped(Label(head, i)) + "</text>\n";
  for (size_t y = 0; y < head.weights.size(); ++y) {
    const int top = kMargin + static_cast<int>(y) * kCell;
    svg += Format("<text x=\"%d\" y=\"%d\" text-anchor=\"end\">", kMargin - 8, top + kCell / 2 + 4) +
           Escaped(Label(head, y)) + "</text>\n";
    for (size_t x = 0; x < head.weights[y].size(); ++x) {
      const double weight = std::clamp(head.weights[y][x], 0.0, 1.0);
      const int left = kMargin + static_cast<int>(x) * kCell;
      svg += Format(
          "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"hsl(210,70%%,%d%%)\" stroke=\"#fff\"/>",
          left, top, kCell, kCell, 97 - static_cast<int>(weight * 62));
      svg +=
          Format("<text x=\"%d\" y=\"%d\" text-anchor=\"middle\" fill=\"%s\">%.2f</text>\n", left + kCell / 2,
                 top + kCell / 2 + 4, weight > 0.5 ? "#fff" : "#1d2227", head.weights[y][x]);
    }
  }
  return svg + "</svg>\n";
}

}  // namespace vorc
