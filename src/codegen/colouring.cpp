#include <array>
#include <functional>
#include <queue>

#include "codegen/passes.h"

// Gregory Chaitin's simplify-and-select of 1982, without costs and without a second round: a range
// that finds no colour stays in memory.

namespace vorc {

namespace {

constexpr int kColours = 27;  // GPR0 to GPR26

class Colouring {
 public:
  Colouring(Procedure& procedure, BasicBlock& block) : procedure_(procedure), ranges_(block.ranges) {}

  void Run();

 private:
  using ReadyQueue = std::priority_queue<size_t, std::vector<size_t>, std::greater<>>;

  void Simplify();
  void Remove(size_t node, ReadyQueue* ready);
  void Select();
  void ColourSpilled();
  bool ColourNode(size_t node);
  bool G_not_empty();
  void WriteNode(const char* before, size_t node, const char* behind);
  void print_G();
  void print_color_allocation_summary();

  Procedure& procedure_;
  TextWriter& log_ = procedure_.log();
  std::vector<LiveRange>& ranges_;
  std::vector<size_t> stack_S_;
  std::vector<size_t> spill_stack_;
  std::vector<size_t> not_colorable_stack_;
  int color_used_ = 0;
};

void Colouring::WriteNode(const char* before, size_t node, const char* behind) {
  log_.Write(before);
  WriteVariable(log_, procedure_, ranges_[node].variable);
  log_.Write(behind);
}

void Colouring::print_G() {
  for (size_t i = 0; i < ranges_.size(); ++i) {
    log_.Write("Node ", i, " in G , ");
    WriteNode("var name =", i, "");
    log_.Write(" degree=", ranges_[i].degree, '\n');
  }
}

bool Colouring::G_not_empty() {
  int empty = 1;
  for (size_t i = 0; i < ranges_.size() && empty == 1; ++i) {
    if (!ranges_[i].removed_from_G) {
      empty = 0;
    } else {
      log_.Write("Node ", i, " in G , ");
      WriteNode("var name =", i, " is removed\n");
    }
  }
  log_.Write("G_empty=", empty, ", G_not_empty() returns ", 1 - empty, '\n');
  return empty == 0;
}

void Colouring::Remove(size_t node, ReadyQueue* ready) {
  LiveRange& range = ranges_[node];
  log_.Write("Found degree_count ", range.degree, " < available_colour_count ", kColours, ", for var=");
  WriteNode("", node, "\n");
  range.removed_from_G = true;
  stack_S_.push_back(node);
  for (const int32_t neighbour : range.neighbours) {
    LiveRange& other = ranges_[static_cast<size_t>(neighbour)];
    if (!other.removed_from_G && --other.degree == kColours - 1) ready->push(static_cast<size_t>(neighbour));
  }
}

// Takes out, again and again, the first node in list order that has fewer neighbours than there are
// colours. If some stay, all of them are spilled.
void Colouring::Simplify() {
  ReadyQueue ready;
  for (size_t i = 0; i < ranges_.size(); ++i) {
    if (ranges_[i].degree < kColours) ready.push(i);
  }
  while (G_not_empty()) {
    while (!ready.empty()) {
      const size_t node = ready.top();
      ready.pop();
      Remove(node, &ready);
    }
    bool any_left = false;
    for (size_t i = 0; i < ranges_.size(); ++i) any_left |= !ranges_[i].removed_from_G;
    if (!any_left) {
      log_.Write("Entire graph has been removed\n", "then the graph is R - colorable\n");
      Select();
      continue;
    }
    log_.Write("graph G cannot be colored with R=", kColours - color_used_, " colors\n",
               "TBD: spill nodes are chosen based on object\u2019s number of definitions and references\n");
    for (size_t i = 0; i < ranges_.size(); ++i) {
      if (ranges_[i].removed_from_G) continue;
      ranges_[i].removed_from_G = true;
      spill_stack_.push_back(i);
    }
  }
}

// The lowest colour that no neighbour has. False if all are taken.
bool Colouring::ColourNode(size_t node) {
  std::array<bool, kColours> used{};
  for (const int32_t neighbour : ranges_[node].neighbours) {
    const LiveRange& other = ranges_[static_cast<size_t>(neighbour)];
    if (other.register_assigned) used[static_cast<size_t>(other.register_position)] = true;
  }
  int colour = 0;
  while (colour < kColours && used[static_cast<size_t>(colour)]) ++colour;
  LiveRange& range = ranges_[node];
  range.register_assigned = colour < kColours;
  range.register_position = range.register_assigned ? colour : -1;
  log_.Write("Color for node N is ", range.register_position, '\n');
  if (!range.register_assigned) return false;
  log_.Write("Add_N_to_graph_G_and_assign_it Colour_N=", colour, '\n');
  ++color_used_;
  return true;
}

void Colouring::Select() {
  while (!stack_S_.empty()) {
    ColourNode(stack_S_.back());
    stack_S_.pop_back();
  }
}

void Colouring::ColourSpilled() {
  log_.Write(
      "now add spilled nodes one by one as long as colors available and add color to it and add to G\n");
  while (!spill_stack_.empty()) {
    const size_t node = spill_stack_.back();
    spill_stack_.pop_back();
    log_.Write("popped from spill stack node N\n");
    if (ColourNode(node)) continue;
    log_.Write("No Color for Node N\n", "put_spill_to_not_colorable_stack_and_remove_N_from_G\n");
    not_colorable_stack_.push_back(node);
  }
  for (const size_t node : not_colorable_stack_) WriteNode("not colorable: ", node, "\n");
}

void Colouring::print_color_allocation_summary() {
  log_.Write("==================================================\n");
  for (size_t i = 0; i < ranges_.size(); ++i) {
    WriteNode("Variable name ='", i, "' , ");
    if (ranges_[i].register_assigned)
      log_.Write("color=", ranges_[i].register_position, '\n');
    else
      log_.Write("No Color\n");
  }
  log_.Write("==================================================\n");
}

void Colouring::Run() {
  print_G();
  Simplify();
  if (!stack_S_.empty()) {
    log_.Write("The graph is NOT R - colorable\n");
    while (!stack_S_.empty()) {
      log_.Write("stack_S_contains_a_node_N\n");
      ColourNode(stack_S_.back());
      stack_S_.pop_back();
      log_.Write("color_used counter=", color_used_, '\n');
    }
  }
  if (!spill_stack_.empty()) ColourSpilled();
  log_.Write("\n==================GRAPH COLORING FOR REGISTER ALLOCATION   END \n",
             "\n================== ****** ==================================== \n");
  print_color_allocation_summary();
}

}  // namespace

void GregChaitin_1982_color(Procedure& procedure, BasicBlock& block) {
  procedure.log().Write(
      "\n==================GRAPH COLORING FOR REGISTER ALLOCATION BEGIN FOR BB=", block.bb_no, '\n');
  Colouring(procedure, block).Run();
}

}  // namespace vorc
