#include "codegen/passes.h"

namespace vorc {

namespace {

// What a graph may hold, some 200 MB.
constexpr size_t kMostEdges = size_t{25} * 1000 * 1000;

}  // namespace

// Two ranges interfere if and only if their closed intervals overlap. The ranges stand in the order of
// their begins, but for those that are live on entry: these begin at 0 wherever they stand.
bool FindInterference(Procedure& procedure, BasicBlock& block) {
  std::vector<LiveRange>& ranges = block.ranges;
  std::vector<size_t> on_entry;
  for (size_t i = 0; i < ranges.size(); ++i) {
    if (ranges[i].live_on_entry) on_entry.push_back(i);
  }
  size_t edges = 0;
  size_t first_entry = 0;
  for (size_t i = 0; i < ranges.size(); ++i) {
    while (first_entry < on_entry.size() && on_entry[first_entry] <= i) ++first_entry;
    size_t entry = first_entry;
    const auto connect = [&](size_t j) {
      ranges[i].neighbours.push_back(static_cast<int32_t>(j));
      ranges[j].neighbours.push_back(static_cast<int32_t>(i));
      ++edges;
    };
    const auto connect_entries_before = [&](size_t end) {
      for (; entry < on_entry.size() && on_entry[entry] < end; ++entry) {
        if (ranges[on_entry[entry]].live_range_end >= ranges[i].live_range_begin) connect(on_entry[entry]);
      }
    };
    for (size_t j = i + 1; j < ranges.size(); ++j) {
      if (ranges[j].live_on_entry) continue;
      if (ranges[j].live_range_begin > ranges[i].live_range_end) break;
      connect_entries_before(j);
      if (ranges[j].live_range_end >= ranges[i].live_range_begin) connect(j);
    }
    connect_entries_before(ranges.size());
    if (edges > kMostEdges) return false;
  }
  TextWriter& log = procedure.log();
  for (LiveRange& range : ranges) {
    range.degree = static_cast<int32_t>(range.neighbours.size());
    log.Write("CreateLivenessRange[L23123]: Determining interfrence for '");
    WriteVariable(log, procedure, range.variable);
    log.Write("' \n");
    for (const int32_t neighbour : range.neighbours) {
      WriteVariable(log, procedure, ranges[static_cast<size_t>(neighbour)].variable);
      log.Write(", ");
    }
    log.Write('\n');
  }
  return true;
}

}  // namespace vorc
