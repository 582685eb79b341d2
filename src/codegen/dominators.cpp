#include <deque>

#include "codegen/passes.h"

namespace vorc {

namespace {

// Beyond this the sets, which only the log shows, would cost more than all the rest.
constexpr size_t kMostBlocks = 4096;

/// A set of blocks as bits.
class BlockSet {
 public:
  explicit BlockSet(size_t blocks, bool full = false) : words_((blocks + 63) / 64, full ? ~uint64_t{0} : 0) {
    if (full && blocks % 64 != 0) words_.back() = (uint64_t{1} << blocks % 64) - 1;
  }

  bool Has(size_t block) const { return (words_[block / 64] >> block % 64 & 1) != 0; }
  void Add(size_t block) { words_[block / 64] |= uint64_t{1} << block % 64; }
  void IntersectWith(const BlockSet& other) {
    for (size_t i = 0; i < words_.size(); ++i) words_[i] &= other.words_[i];
  }
  int Count() const {
    int count = 0;
    for (const uint64_t word : words_) count += __builtin_popcountll(word);
    return count;
  }
  bool operator==(const BlockSet&) const = default;

 private:
  std::vector<uint64_t> words_;
};

using Dominators = std::vector<BlockSet>;

// What dominates all predecessors of a block, and the block itself.
BlockSet NewSetOf(TextWriter& log, const Dominators& dominators, const BasicBlock& block) {
  const size_t count = dominators.size();
  BlockSet set(count, !block.predecessors.empty());
  if (block.predecessors.empty()) log.Write("Y has no predecessor !!!/\n");
  for (const BasicBlock* from : block.predecessors)
    set.IntersectWith(dominators[static_cast<size_t>(from->bb_no)]);
  set.Add(static_cast<size_t>(block.bb_no));
  return set;
}

Dominators FindDominators(Procedure& procedure) {
  TextWriter& log = procedure.log();
  const size_t count = procedure.blocks.size();
  Dominators dominators(count, BlockSet(count, true));
  std::deque<size_t> work_list = {0};
  std::vector<bool> waiting(count, false);
  waiting[0] = true;
  log.Write("+ + + Initialize WorkList\n{basic block no=0, address=0},\n + + + Initialize WorkList DONE\n");
  while (!work_list.empty()) {
    log.Write("->->-> WorkList is not NULL");
    const size_t y = work_list.front();
    work_list.pop_front();
    waiting[y] = false;
    const BasicBlock& block = procedure.blocks[y];
    BlockSet set = NewSetOf(log, dominators, block);
    if (set == dominators[y]) continue;
    dominators[y] = std::move(set);
    const auto add = [&](size_t successor) {
      if (!waiting[successor]) work_list.push_back(successor);
      waiting[successor] = true;
    };
    if (y + 1 < count) add(y + 1);
    for (const BasicBlock* to : block.jump_successors) add(static_cast<size_t>(to->bb_no));
  }
  return dominators;
}

// The dominator of a block, itself apart, that has most dominators of its own; -1 for none.
std::vector<int> CalculateIDOM(const Dominators& dominators) {
  std::vector<int> sizes;
  for (const BlockSet& set : dominators) sizes.push_back(set.Count());
  std::vector<int> idom(dominators.size(), -1);
  for (size_t block = 0; block < dominators.size(); ++block) {
    int largest = 0;
    for (size_t d = 0; d < dominators.size(); ++d) {
      if (d == block || !dominators[block].Has(d) || sizes[d] <= largest) continue;
      largest = sizes[d];
      idom[block] = static_cast<int>(d);
    }
  }
  return idom;
}

void CreateDominanceTree(TextWriter& log, const std::vector<int>& idom) {
  log.Write("/************* CreateDominanceTree BEGIN    *************/\n");
  std::vector<std::vector<size_t>> children(idom.size());
  for (size_t block = 0; block < idom.size(); ++block) {
    if (idom[block] < 0) {
      log.Write("block no=", block, " IDOM=<none, this is the entry/root node>\n");
      continue;
    }
    log.Write("block no=", block, " IDOM=block no=", idom[block], '\n');
    children[static_cast<size_t>(idom[block])].push_back(block);
  }
  for (size_t block = 0; block < idom.size(); ++block) {
    log.Write("block no=", block, " immediately dominates { ");
    for (const size_t child : children[block]) log.Write(child, ", ");
    log.Write("}\n");
  }
  log.Write("/************* CreateDominanceTree END    *************/\n");
}

}  // namespace

void CreateDominance(Procedure& procedure) {
  TextWriter& log = procedure.log();
  const size_t count = procedure.blocks.size();
  log.Write("/************* CreateDominance BEGIN    *************/\n", "total_basic_blocks=", count, '\n');
  if (count > kMostBlocks) {
    log.Write("more than ", kMostBlocks, " blocks: no dominators are listed\n",
              "/************* CreateDominance END    *************/\n");
    return;
  }
  const Dominators dominators = FindDominators(procedure);
  const std::vector<int> idom = CalculateIDOM(dominators);
  for (size_t block = 0; block < count; ++block) log.Write("block no=", block, ", IDOM=", idom[block], '\n');
  for (size_t block = 0; block < count; ++block) {
    log.Write("block no=", block, " dominators { ");
    for (size_t d = 0; d < count; ++d) {
      if (dominators[block].Has(d)) log.Write(d, ", ");
    }
    log.Write("}\n");
  }
  log.Write("/************* CreateDominance END    *************/\n");
  CreateDominanceTree(log, idom);
}

}  // namespace vorc
