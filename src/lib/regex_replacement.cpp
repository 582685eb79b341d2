#include "lib/regex_replacement.h"

#include <algorithm>

namespace vorc {

size_t RegexReplacement::GroupSlots() const {
  size_t slots = 0;
  for (const Piece& piece : pieces_) slots = std::max(slots, piece.reference);
  return slots;
}

void RegexReplacement::AppendTo(std::string& out, std::string_view text, const RegexMatch& match,
                                size_t limit) const {
  for (size_t i = 0; i + 1 < pieces_.size() && out.size() < limit; ++i) {
    const size_t reference = pieces_[i].reference;
    const RegexSpan& span = reference == kWholeMatch ? match.whole : match.groups[reference - 1];
    out.append(pieces_[i].text).append(span.In(text).substr(0, limit));
  }
  out.append(pieces_.back().text);
}

}  // namespace vorc
