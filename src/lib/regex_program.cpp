#include "lib/regex_program.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <tuple>

namespace vorc {

namespace {

// Where matching goes on: into a node, or back to a loop after a pass of its body.
struct Place {
  int32_t node;
  bool after_pass = false;
};

// A loop ends after a pass that consumed nothing. To decide that without comparing positions, a
// place is compiled once for each number of enclosing loops, counted from the outermost, whose
// running pass has consumed something. (An outer pass has whenever an inner one has, so a number
// tells all.) Consuming a byte makes this number the depth, so it only matters between two bytes.
struct State {
  Place place;
  int32_t progressed;

  auto Key() const { return std::tuple(place.node, place.after_pass, progressed); }
  bool operator<(const State& other) const { return Key() < other.Key(); }
};

bool Consumes(RegexNodeKind kind) {
  return kind <= RegexNodeKind::kSet;
}

class RegexCompiler {
 public:
  RegexCompiler(const RegexTree& tree, RegexProgram& program)
      : tree_(tree), program_(program), follow_(tree.nodes.size()), depth_(tree.nodes.size()) {}

  void Compile() {
    if (tree_.root >= 0) Link(tree_.root, {tree_.accept}, 0);
    Target({tree_.root >= 0 ? tree_.root : tree_.accept}, 0);
    for (size_t done = 0; done < states_.size(); ++done) program_.code[done] = Instruction(states_[done]);
  }

 private:
  void Link(int32_t index, Place follow, int32_t depth);
  uint32_t Target(Place place, int32_t progressed);
  bool PassThrough(State& state) const;
  RegexInstruction Instruction(State state);
  RegexInstruction Consuming(State state);

  const RegexNode& Node(int32_t index) const { return tree_.nodes[static_cast<size_t>(index)]; }
  Place Follow(int32_t index) const { return follow_[static_cast<size_t>(index)]; }
  int32_t Depth(int32_t index) const { return depth_[static_cast<size_t>(index)]; }
  bool Stored(const RegexNode& node) const { return static_cast<size_t>(node.group) < program_.group_slots; }

  const RegexTree& tree_;
  RegexProgram& program_;
  std::vector<Place> follow_;   ///< by node: where matching goes on behind it
  std::vector<int32_t> depth_;  ///< by node: number of loops around it
  std::map<State, uint32_t> targets_;
  std::vector<State> states_;  ///< by instruction
};

void RegexCompiler::Link(int32_t index, Place follow, int32_t depth) {
  if (index < 0) return;
  follow_[static_cast<size_t>(index)] = follow;
  depth_[static_cast<size_t>(index)] = depth;
  const RegexNode& node = Node(index);
  switch (node.kind) {
    case RegexNodeKind::kStar:
    case RegexNodeKind::kPlus: Link(node.sub, {index, true}, depth + 1); break;
    case RegexNodeKind::kConcat:
    case RegexNodeKind::kGroupOpen:
      Link(node.sub, {node.next}, depth);
      Link(node.next, follow, depth);
      break;
    case RegexNodeKind::kOptional:
    case RegexNodeKind::kAlternate:
      Link(node.sub, follow, depth);
      Link(node.alt, follow, depth);
      break;
    default: break;
  }
}

// Moves a state past a place that asks for no instruction. False if it does ask for one.
bool RegexCompiler::PassThrough(State& state) const {
  const int32_t index = state.place.node;
  const RegexNode& node = Node(index);
  const bool progressed = state.progressed > Depth(index);
  state.progressed = std::min(state.progressed, Depth(index));
  if (state.place.after_pass && !progressed) {
    state.place = Follow(index);
    return true;
  }
  switch (node.kind) {
    case RegexNodeKind::kConcat: state.place = {node.sub}; return true;
    case RegexNodeKind::kStar: state.place.after_pass = false; return false;
    case RegexNodeKind::kPlus:
      if (state.place.after_pass) return false;
      state.place = {node.sub};
      return true;
    case RegexNodeKind::kGroupOpen:
      if (Stored(node)) return false;
      state.place = {node.sub < 0 ? node.next : node.sub};
      return true;
    case RegexNodeKind::kGroupClose:
      if (Stored(node)) return false;
      state.place = Follow(index);
      return true;
    default: return false;
  }
}

// The number of the instruction for a place, which is made if it is new.
uint32_t RegexCompiler::Target(Place place, int32_t progressed) {
  State state{place, progressed};
  while (PassThrough(state)) {
  }
  const RegexNodeKind kind = Node(state.place.node).kind;
  if (Consumes(kind) || kind == RegexNodeKind::kAccept) state.progressed = 0;
  const auto [target, is_new] = targets_.try_emplace(state, static_cast<uint32_t>(states_.size()));
  if (is_new) {
    states_.push_back(state);
    program_.code.emplace_back();
  }
  return target->second;
}

RegexInstruction RegexCompiler::Consuming(State state) {
  const int32_t index = state.place.node;
  const RegexNode& node = Node(index);
  const uint32_t next = Target(Follow(index), Depth(index));
  if (node.kind == RegexNodeKind::kLiteral) return {RegexOp::kByte, node.literal, next};
  if (node.kind == RegexNodeKind::kAny) return {RegexOp::kAny, 0, next};
  program_.sets.push_back(node.set);
  return {RegexOp::kSet, static_cast<uint32_t>(program_.sets.size() - 1), next};
}

RegexInstruction RegexCompiler::Instruction(State state) {
  const int32_t index = state.place.node;
  const RegexNode& node = Node(index);
  const Place follow = Follow(index);
  const auto go = [&](Place place) { return Target(place, state.progressed); };
  const auto branch = [&](int32_t child) { return go(child < 0 ? follow : Place{child}); };
  switch (node.kind) {
    case RegexNodeKind::kStar:
    case RegexNodeKind::kPlus:
    case RegexNodeKind::kOptional:
    case RegexNodeKind::kAlternate: {
      const uint32_t first = branch(node.sub);
      return {RegexOp::kSplit, branch(node.alt), first};
    }
    case RegexNodeKind::kGroupOpen:
      return {RegexOp::kSave, RegexProgram::StartSlot(node.group), go({node.sub < 0 ? node.next : node.sub})};
    case RegexNodeKind::kGroupClose: return {RegexOp::kSave, RegexProgram::EndSlot(node.group), go(follow)};
    case RegexNodeKind::kTextStart: return {RegexOp::kTextStart, 0, go(follow)};
    case RegexNodeKind::kTextEnd: return {RegexOp::kTextEnd, 0, go(follow)};
    case RegexNodeKind::kAccept: return {RegexOp::kAccept};
    default: return Consuming(state);
  }
}

// What a match can begin with, found by walking all that consumes nothing.
class StartScan {
 public:
  StartScan(const RegexProgram& program, bool pass_text_start)
      : program_(program), pass_text_start_(pass_text_start), seen_(program.code.size()) {
    pending_.push_back(0);
    while (!pending_.empty()) {
      const uint32_t position = pending_.back();
      pending_.pop_back();
      if (seen_[position]) continue;
      seen_[position] = true;
      Visit(program_.code[position]);
    }
  }

  ByteSet first;
  bool empty_anywhere = false;
  bool empty_at_end = false;

 private:
  void Visit(const RegexInstruction& instruction) {
    switch (instruction.op) {
      case RegexOp::kByte: first.set(instruction.argument); break;
      case RegexOp::kAny: first.set(); break;
      case RegexOp::kSet: first |= program_.sets[instruction.argument]; break;
      case RegexOp::kTextEnd: empty_at_end = true; break;
      case RegexOp::kAccept: empty_anywhere = true; break;
      case RegexOp::kTextStart:
        if (pass_text_start_) pending_.push_back(instruction.next);
        break;
      case RegexOp::kSplit: pending_.push_back(instruction.argument); [[fallthrough]];
      case RegexOp::kSave: pending_.push_back(instruction.next); break;
    }
  }

  const RegexProgram& program_;
  const bool pass_text_start_;
  std::vector<bool> seen_;
  std::vector<uint32_t> pending_;
};

std::string LiteralPrefix(const RegexProgram& program) {
  std::string prefix;
  for (const RegexInstruction* at = program.code.data();; at = &program.code[at->next]) {
    if (at->op == RegexOp::kByte) {
      prefix.push_back(static_cast<char>(at->argument));
    } else if (at->op != RegexOp::kSave && at->op != RegexOp::kTextStart) {
      return prefix;
    }
  }
}

}  // namespace

size_t RegexProgram::NextCandidate(std::string_view text, size_t from) const {
  if (code.empty() || from > text.size()) return std::string_view::npos;
  if (empty_anywhere) return from;
  const std::string_view rest = text.substr(from);
  const size_t found = prefix.empty() ? FindFirstByte(rest) : FindPrefix(rest);
  if (found < rest.size()) return from + found;
  return empty_at_end ? text.size() : std::string_view::npos;
}

// Both answer the size of `rest` if there is nothing.
size_t RegexProgram::FindPrefix(std::string_view rest) const {
  if (rest.size() < prefix.size()) return rest.size();
  const void* found = memmem(rest.data(), rest.size(), prefix.data(), prefix.size());
  return found == nullptr ? rest.size() : static_cast<size_t>(static_cast<const char*>(found) - rest.data());
}

size_t RegexProgram::FindFirstByte(std::string_view rest) const {
  if (first.none()) return rest.size();
  const auto possible = [this](char byte) { return first[static_cast<uint8_t>(byte)]; };
  return static_cast<size_t>(std::find_if(rest.begin(), rest.end(), possible) - rest.begin());
}

RegexProgram CompileRegex(const RegexTree& tree, size_t group_slots) {
  RegexProgram program;
  if (!tree.ok) return program;
  program.group_slots = std::min(group_slots, static_cast<size_t>(tree.groups));
  RegexCompiler(tree, program).Compile();
  const StartScan anywhere(program, true);
  const StartScan behind_start(program, false);
  program.first = anywhere.first;
  program.empty_anywhere = anywhere.empty_anywhere;
  program.empty_at_end = anywhere.empty_anywhere || anywhere.empty_at_end;
  program.anchored = behind_start.first.none() && !behind_start.empty_anywhere && !behind_start.empty_at_end;
  program.prefix = LiteralPrefix(program);
  return program;
}

}  // namespace vorc
