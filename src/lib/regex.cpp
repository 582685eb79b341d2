#include "lib/regex.h"

#include <algorithm>
#include <utility>

namespace vorc {

// All attempts advance through the text side by side, byte by byte, in order of preference. When
// two reach the same instruction before the same byte, the preferred one alone goes on: the other
// could only repeat its failures. So no text or pattern makes this slow, and nothing recurses.

Regex::Regex(std::string_view pattern, size_t group_slots)
    : program_(CompileRegex(ParseRegex(pattern), std::min(group_slots, kRegexGroupSlots))),
      row_size_(program_.SlotCount()),
      reached_(program_.code.size()),
      row_(row_size_),
      matched_(row_size_) {
  // Only nodes that consume or accept are waited at, and each has one instruction.
  const size_t most = std::min(program_.code.size(), kRegexNodeLimit);
  for (Attempts* attempts : {&now_, &after_}) {
    attempts->waiting.reserve(most);
    attempts->rows.resize(most * row_size_);
  }
}

bool Regex::FindFirst(std::string_view text, RegexMatch& match) {
  text_ = text;
  if (foresight_ != nullptr) foreseen_ = foresight_->text().size() - text.size();
  const ptrdiff_t end = MorvReMatchFrom(0);
  if (end < 0) return false;
  match = {};
  match.whole = {matched_[0], end - matched_[0]};
  for (size_t group = 0; group < program_.group_slots; ++group) {
    const ptrdiff_t group_start = matched_[1 + 2 * group];
    const ptrdiff_t group_end = matched_[2 + 2 * group];
    if (group_end >= 0) match.groups[group] = {group_start, group_end - group_start};
  }
  return true;
}

void Regex::Foresee(std::string_view text) {
  foresight_ = std::make_unique<RegexForesight>(program_, text);
}

// Searches from an offset on. Answers the end of the match, or -1.
ptrdiff_t Regex::MorvReMatchFrom(size_t position) {
  ptrdiff_t end = -1;
  now_.waiting.clear();
  for (;; ++position) {
    if (now_.waiting.empty()) {
      if (end >= 0 || (program_.anchored && position > 0)) return end;
      position = program_.NextCandidate(text_, position);
      if (position == std::string_view::npos) return end;
      ++round_;
    }
    looked_ = position;
    if (end < 0 && CanStart(position)) {
      std::fill(row_.begin(), row_.end(), -1);
      row_[0] = static_cast<ptrdiff_t>(position);
      Follow(0, position, row_.data(), now_);
    }
    const ptrdiff_t accepted = Advance(position);
    if (accepted >= 0) end = accepted;
    if (position == text_.size()) return end;
  }
}

bool Regex::CanStart(size_t position) const {
  if (program_.anchored && position > 0) return false;
  if (position == text_.size()) return program_.empty_at_end;
  return program_.empty_anywhere || program_.first[static_cast<uint8_t>(text_[position])];
}

// Takes every attempt past the byte at `position`. An attempt that accepts ends those after it.
ptrdiff_t Regex::Advance(size_t position) {
  ptrdiff_t end = -1;
  ++round_;
  after_.waiting.clear();
  ptrdiff_t* row = now_.rows.data();
  for (size_t i = 0; i < now_.waiting.size(); ++i, row += row_size_) {
    const RegexInstruction& instruction = program_.code[now_.waiting[i]];
    if (instruction.op == RegexOp::kAccept) {
      std::copy_n(row, row_size_, matched_.begin());
      end = static_cast<ptrdiff_t>(position);
      break;
    }
    if (position < text_.size() && instruction.Takes(static_cast<uint8_t>(text_[position]), program_.sets))
      Follow(instruction.next, position + 1, row, after_);
  }
  std::swap(now_, after_);
  return end;
}

// Walks all that consumes nothing and notes, in order of preference, where it ends. Stored
// positions are undone on the way back, so `row` is left as it was.
void Regex::Follow(uint32_t target, size_t position, ptrdiff_t* row, Attempts& attempts) {
  FollowPath(target, position, row, attempts);
  while (!pending_.empty()) {
    const Pending pending = pending_.back();
    pending_.pop_back();
    if (pending.slot >= 0) {
      row[pending.slot] = pending.old;
    } else {
      FollowPath(pending.target, position, row, attempts);
    }
  }
}

void Regex::FollowPath(uint32_t target, size_t position, ptrdiff_t* row, Attempts& attempts) {
  while (reached_[target] != round_) {
    reached_[target] = round_;
    const RegexInstruction& instruction = program_.code[target];
    switch (instruction.op) {
      case RegexOp::kSplit: pending_.push_back({instruction.argument, -1, 0}); break;
      case RegexOp::kSave:
        pending_.push_back({0, static_cast<int32_t>(instruction.argument), row[instruction.argument]});
        row[instruction.argument] = static_cast<ptrdiff_t>(position);
        break;
      case RegexOp::kTextStart:
        if (position != 0) return;
        break;
      case RegexOp::kTextEnd:
        if (position != text_.size()) return;
        break;
      default:
        if (foresight_ != nullptr && !foresight_->WillAccept(target, foreseen_ + position)) return;
        std::copy_n(row, row_size_,
                    attempts.rows.begin() + static_cast<ptrdiff_t>(attempts.waiting.size() * row_size_));
        attempts.waiting.push_back(target);
        return;
    }
    target = instruction.next;
  }
}

bool MorvRegexFindFirst(std::string_view pattern, std::string_view text, RegexSpan& match,
                        std::span<RegexSpan> groups) {
  RegexMatch found;
  if (!Regex(pattern, groups.size()).FindFirst(text, found)) return false;
  match = found.whole;
  for (size_t i = 0; i < groups.size(); ++i)
    groups[i] = i < found.groups.size() ? found.groups[i] : RegexSpan{};
  return true;
}

}  // namespace vorc
