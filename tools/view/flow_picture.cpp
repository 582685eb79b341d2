#include "view/flow_picture.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "base/format.h"
#include "view/svg.h"

namespace vorc {

namespace {

constexpr size_t kMostBlocks = 600;
constexpr size_t kLongestLine = 48;
constexpr int kLetter = 7;
constexpr int kLine = 15;
constexpr int kPadding = 8;
constexpr int kGapAcross = 30;
constexpr int kGapDown = 46;

struct Box {
  int rank = 0;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

// Code without the remark behind it, cut to what a box takes.
std::string Shortened(std::string text) {
  text.resize(std::min(text.find(" //"), text.size()));
  return text.size() <= kLongestLine ? text : text.substr(0, kLongestLine - 3) + "...";
}

/// Lays the blocks of a function out in ranks.
class Layout {
 public:
  explicit Layout(const CompiledFunction& function)
      : blocks_(function.blocks), boxes(blocks_.size()), back_(blocks_.size()) {
    FindBackEdges();
    Rank();
    Place();
  }

  bool IsBack(size_t from, int to) const {
    return std::find(back_[from].begin(), back_[from].end(), to) != back_[from].end();
  }
  bool Exists(int block) const { return block >= 0 && static_cast<size_t>(block) < blocks_.size(); }

 private:
  const std::vector<FlowBlock>& blocks_;

 public:
  std::vector<Box> boxes;
  int width = 0;
  int height = 0;

 private:
  // An edge to a block that is still open on the way from the entry closes a loop. By hand, since graphs may
  // be deep.
  void FindBackEdges() {
    enum : char { kNew, kOpen, kDone };
    std::vector<char> states(blocks_.size(), kNew);
    for (size_t root = 0; root < blocks_.size(); ++root) {
      if (states[root] != kNew) continue;
      std::vector<std::pair<size_t, size_t>> open{{root, 0}};
      states[root] = kOpen;
      while (!open.empty()) {
        auto& [at, next] = open.back();
        if (next == blocks_[at].successors.size()) {
          states[at] = kDone;
          order_.push_back(at);
          open.pop_back();
          continue;
        }
        const int to = blocks_[at].successors[next++];
        if (!Exists(to)) continue;
        const auto target = static_cast<size_t>(to);
        if (states[target] == kOpen) back_[at].push_back(to);
        if (states[target] == kNew) {
          states[target] = kOpen;
          open.emplace_back(target, 0);
        }
      }
    }
    std::reverse(order_.begin(), order_.end());
  }

  // A block stands below all that lead to it.
  void Rank() {
    for (const size_t from : order_) {
      for (const int to : blocks_[from].successors) {
        if (!Exists(to) || IsBack(from, to)) continue;
        Box& target = boxes[static_cast<size_t>(to)];
        target.rank = std::max(target.rank, boxes[from].rank + 1);
      }
    }
  }

  void Place() {
    std::map<int, std::vector<size_t>> ranks;
    for (size_t i = 0; i < boxes.size(); ++i) {
      size_t letters = 12;
      for (const CodeLine& line : blocks_[i].code) letters = std::max(letters, Shortened(line.text).size());
      boxes[i].width = static_cast<int>(letters) * kLetter + 2 * kPadding;
      boxes[i].height = (static_cast<int>(blocks_[i].code.size()) + 1) * kLine + 2 * kPadding;
      ranks[boxes[i].rank].push_back(i);
    }
    int widest = 0;
    for (auto& [rank, members] : ranks) widest = std::max(widest, WidthOf(members));
    int y = kGapDown / 2;
    for (auto& [rank, members] : ranks) {
      OrderByPredecessors(&members);
      int x = kGapAcross + (widest - WidthOf(members)) / 2;
      int tallest = 0;
      for (const size_t i : members) {
        boxes[i].x = x;
        boxes[i].y = y;
        x += boxes[i].width + kGapAcross;
        tallest = std::max(tallest, boxes[i].height);
      }
      y += tallest + kGapDown;
    }
    width = widest + 5 * kGapAcross;
    height = y;
  }

  int WidthOf(const std::vector<size_t>& members) const {
    int total = -kGapAcross;
    for (const size_t i : members) total += boxes[i].width + kGapAcross;
    return total;
  }

  // Blocks of a rank stand in the order of those that lead to them, so that few edges cross.
  void OrderByPredecessors(std::vector<size_t>* members) const {
    std::map<size_t, int> places;
    for (const size_t i : *members) {
      int sum = 0;
      int count = 0;
      for (size_t from = 0; from < blocks_.size(); ++from) {
        const auto& to = blocks_[from].successors;
        if (IsBack(from, static_cast<int>(i)) ||
            std::find(to.begin(), to.end(), static_cast<int>(i)) == to.end())
          continue;
        sum += boxes[from].x + boxes[from].width / 2;
        ++count;
      }
      places[i] = count == 0 ? 0 : sum / count;
    }
    std::stable_sort(members->begin(), members->end(),
                     [&](size_t a, size_t b) { return places[a] < places[b]; });
  }

  std::vector<std::vector<int>> back_;
  std::vector<size_t> order_;
};

std::string EdgeSvg(const Layout& layout, size_t from, size_t to, bool back) {
  const Box& a = layout.boxes[from];
  const Box& b = layout.boxes[to];
  if (back) {
    const int side = layout.width - kPadding;
    return Format("<path class=\"back\" d=\"M%d %d C%d %d %d %d %d %d\"/>\n", a.x + a.width,
                  a.y + a.height - kPadding, side, a.y + a.height, side, b.y, b.x + b.width, b.y + kPadding);
  }
  const int x1 = a.x + a.width / 2;
  const int y1 = a.y + a.height;
  const int x2 = b.x + b.width / 2;
  const int bend = std::max(kGapDown / 2, (b.y - y1) / 2);
  return Format("<path d=\"M%d %d C%d %d %d %d %d %d\"/>\n", x1, y1, x1, y1 + bend, x2, b.y - bend, x2, b.y);
}

std::string BoxSvg(const FlowBlock& block, const Box& box, size_t number) {
  std::string svg = Format(
      "<g><title>live in: %s; live out: %s</title><rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"/>\n",
      Escaped(block.live_in).c_str(), Escaped(block.live_out).c_str(), box.x, box.y, box.width, box.height);
  int y = box.y + kPadding + kLine - 4;
  svg += Format("<text class=\"head\" x=\"%d\" y=\"%d\">block %zu</text>\n", box.x + kPadding, y, number);
  for (const CodeLine& line : block.code) {
    y += kLine;
    svg +=
        Format("<text x=\"%d\" y=\"%d\">", box.x + kPadding, y) + Escaped(Shortened(line.text)) + "</text>\n";
  }
  return svg + "</g>\n";
}

/// A column of the chart of ranges: one block's instructions.
struct Column {
  int first = 0;
  int x = 0;
  int count = 0;
};

std::string BarSvg(const LiveRange& range, const Column& column, int step, int y) {
  const int begin = std::clamp(range.begin - column.first, 0, column.count - 1);
  const int end = std::clamp(range.end - column.first, begin, column.count - 1);
  const std::string place = range.colour < 0 ? "memory" : "gpr" + std::to_string(range.colour);
  std::string svg =
      Format("<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"%s\">", column.x + begin * step, y,
             (end - begin + 1) * step - 2, kLine, RegisterColour(range.colour).c_str());
  svg += "<title>" + Escaped(range.variable) +
         Format(" in %s, instructions %d to %d</title></rect>\n", place.c_str(),
                std::max(range.begin, column.first), range.end);
  return svg +
         Format("<text class=\"small\" x=\"%d\" y=\"%d\">", column.x + begin * step + 2, y + kLine - 4) +
         (range.colour < 0 ? "m" : std::to_string(range.colour)) + "</text>\n";
}

}  // namespace

std::string FlowGraphSvg(const CompiledFunction& function) {
  if (function.blocks.size() > kMostBlocks) return "";
  const Layout layout(function);
  std::string svg = Format(
      "<svg class=\"flow\" xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 %d "
      "%d\" role=\"img\">\n",
      layout.width, layout.height, layout.width, layout.height);
  svg += "<title>flow graph of " + Escaped(function.name) + "</title>\n";
  for (size_t from = 0; from < function.blocks.size(); ++from) {
    for (const int to : function.blocks[from].successors)
      if (layout.Exists(to)) svg += EdgeSvg(layout, from, static_cast<size_t>(to), layout.IsBack(from, to));
  }
  for (size_t i = 0; i < function.blocks.size(); ++i) svg += BoxSvg(function.blocks[i], layout.boxes[i], i);
  return svg + "</svg>\n";
}

std::string LiveRangesSvg(const CompiledFunction& function) {
  constexpr int kStep = 16;
  constexpr int kRow = kLine + 5;
  std::vector<Column> columns(function.blocks.size());
  std::map<std::string, int> rows;
  size_t longest = 0;
  for (const FlowBlock& block : function.blocks) {
    for (const LiveRange& range : block.ranges) {
      rows.emplace(range.variable, static_cast<int>(rows.size()));
      longest = std::max(longest, std::min(kLongestLine, range.variable.size()));
    }
  }
  if (rows.empty()) return "";
  int x = static_cast<int>(longest) * kLetter + 2 * kPadding;
  for (size_t i = 0; i < columns.size(); ++i) {
    const auto& code = function.blocks[i].code;
    if (code.empty()) continue;
    columns[i] = {code.front().index, x, code.back().index - code.front().index + 1};
    x += columns[i].count * kStep + kPadding;
  }
  const int height = static_cast<int>(rows.size()) * kRow + 2 * kLine;
  std::string svg = Format(
      "<svg class=\"ranges\" xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 "
      "%d %d\" role=\"img\">\n",
      x, height, x, height);
  svg += "<title>live ranges of " + Escaped(function.name) + "</title>\n";
  for (const auto& [variable, row] : rows)
    svg += Format("<text x=\"%d\" y=\"%d\">", kPadding, 2 * kLine + row * kRow - 4 + kPadding) +
           Escaped(Shortened(variable)) + "</text>\n";
  for (size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].count == 0) continue;
    svg += Format(
        "<rect class=\"column\" x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"/><text class=\"small\" x=\"%d\" "
        "y=\"%d\">%zu</text>\n",
        columns[i].x, kLine, columns[i].count * kStep, height - kLine, columns[i].x + 2, kLine - 4, i);
    for (const LiveRange& range : function.blocks[i].ranges)
      svg += BarSvg(range, columns[i], kStep, kLine + kPadding + rows.at(range.variable) * kRow - 4);
  }
  return svg + "</svg>\n";
}

}  // namespace vorc
