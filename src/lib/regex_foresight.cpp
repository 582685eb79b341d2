#include "lib/regex_foresight.h"

#include <algorithm>

namespace vorc {

namespace {

constexpr size_t kBlock = 4096;
constexpr size_t kNoBlock = static_cast<size_t>(-1);
constexpr size_t kBits = 64;

void Add(uint64_t* set, uint32_t instruction) {
  set[instruction / kBits] |= uint64_t{1} << instruction % kBits;
}

bool Holds(const uint64_t* set, uint32_t instruction) {
  return (set[instruction / kBits] >> instruction % kBits & 1) != 0;
}

bool Waits(const RegexInstruction& instruction) {
  return instruction.op <= RegexOp::kSet || instruction.op == RegexOp::kAccept;
}

}  // namespace

RegexForesight::RegexForesight(const RegexProgram& program, std::string_view text)
    : program_(program), text_(text), words_(program.code.size() / kBits + 1), loaded_(kNoBlock) {
  const auto count = static_cast<uint32_t>(program.code.size());
  followers_.resize(count * words_);
  last_followers_.resize(count * words_);
  for (uint32_t i = 0; i < count; ++i) {
    if (program.code[i].op > RegexOp::kSet) continue;
    FindFollowers(program, program.code[i].next, false, followers_.data() + i * words_);
    FindFollowers(program, program.code[i].next, true, last_followers_.data() + i * words_);
  }
  const size_t blocks = text.size() / kBlock + 1;
  block_ends_.resize(blocks * words_);
  block_.resize((std::min(kBlock, text.size()) + 1) * words_);
  Set last = block_ends_.data() + (blocks - 1) * words_;
  for (uint32_t i = 0; i < count; ++i) {
    if (program.code[i].op == RegexOp::kAccept) Add(last, i);
  }
  for (size_t block = blocks - 1; block > 0; --block) {
    LoadBlock(block);
    std::copy_n(block_.data(), words_, block_ends_.data() + (block - 1) * words_);
  }
}

// Behind the first byte of a search, its start can't be met again.
void RegexForesight::FindFollowers(const RegexProgram& program, uint32_t instruction, bool at_end,
                                   Set followers) const {
  std::vector<bool> seen(program.code.size());
  std::vector<uint32_t> pending{instruction};
  while (!pending.empty()) {
    const uint32_t target = pending.back();
    pending.pop_back();
    if (seen[target]) continue;
    seen[target] = true;
    const RegexInstruction& step = program.code[target];
    if (Waits(step)) {
      Add(followers, target);
      continue;
    }
    if (step.op == RegexOp::kTextStart || (step.op == RegexOp::kTextEnd && !at_end)) continue;
    if (step.op == RegexOp::kSplit) pending.push_back(step.argument);
    pending.push_back(step.next);
  }
}

size_t RegexForesight::BlockEnd(size_t block) const {
  return std::min((block + 1) * kBlock, text_.size());
}

// Who accepts from `position` on, if `after` tells who does behind its byte.
void RegexForesight::StepBack(size_t position, const uint64_t* after, Set before) const {
  const std::vector<uint64_t>& followers = position + 1 == text_.size() ? last_followers_ : followers_;
  const auto byte = static_cast<uint8_t>(text_[position]);
  std::fill_n(before, words_, 0);
  for (uint32_t i = 0; i < program_.code.size(); ++i) {
    const RegexInstruction& instruction = program_.code[i];
    if (instruction.op == RegexOp::kAccept) Add(before, i);
    if (!instruction.Takes(byte, program_.sets)) continue;
    const uint64_t* next = followers.data() + i * words_;
    bool accepts = false;
    for (size_t word = 0; word < words_; ++word) accepts |= (next[word] & after[word]) != 0;
    if (accepts) Add(before, i);
  }
}

void RegexForesight::LoadBlock(size_t block) {
  const size_t start = block * kBlock;
  size_t position = BlockEnd(block);
  std::copy_n(block_ends_.data() + block * words_, words_, block_.data() + (position - start) * words_);
  for (; position > start; --position) {
    Set before = block_.data() + (position - 1 - start) * words_;
    StepBack(position - 1, before + words_, before);
  }
  loaded_ = block;
}

bool RegexForesight::WillAccept(uint32_t instruction, size_t position) {
  const size_t block = position / kBlock;
  if (block != loaded_) LoadBlock(block);
  return Holds(block_.data() + (position - block * kBlock) * words_, instruction);
}

}  // namespace vorc
