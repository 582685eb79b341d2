#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// The weights of one attention head, as a trace tells them.
struct AttentionHead {
  int step = 0;  ///< which attention of the trace, from 1 on
  int head = 0;
  std::string title;
  std::vector<std::vector<double>> weights;  ///< a row for each position that asks
  std::vector<std::string> labels;           ///< what stands at each position, where the trace tells it
};

/// Every head in a trace of the tensor functions; the trace shows the first eight rows and columns of two.
std::vector<AttentionHead> ReadAttention(std::string_view trace);

/// One head as a picture: a cell for each pair of positions, the darker the more is looked at.
std::string AttentionSvg(const AttentionHead& head);

}  // namespace vorc
