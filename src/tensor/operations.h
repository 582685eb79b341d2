#pragma once

#include <cstdint>

#include "tensor/tensor.h"

// Operations on tensors. Each leaves its arguments alone and makes a new tensor; null if the shapes
// don't fit or memory runs out. With the trace on, each of the main steps of a model explains itself.

namespace vorc {

/// Rows of a by columns of b. a's columns must equal b's rows.
TensorPtr MorvTensorMatmul(const MorvTensorRec& a, const MorvTensorRec& b);
/// Element by element, for equal shapes.
TensorPtr MorvTensorAdd(const MorvTensorRec& a, const MorvTensorRec& b);
TensorPtr MorvTensorSub(const MorvTensorRec& a, const MorvTensorRec& b);
TensorPtr MorvTensorScale(const MorvTensorRec& t, double factor);
TensorPtr MorvTensorTranspose(const MorvTensorRec& t);
/// Negative values become 0.
TensorPtr MorvTensorRelu(const MorvTensorRec& t);
/// Softmax of each row.
TensorPtr MorvTensorSoftmax(const MorvTensorRec& t);
/// x w, with b's first row added to every row. x's columns must equal w's rows, b's columns w's.
TensorPtr MorvTensorLinear(const MorvTensorRec& x, const MorvTensorRec& w, const MorvTensorRec& b);
/// Each row brought to mean 0 and variance 1, times gamma, plus beta, of which the first rows count.
TensorPtr MorvTensorLayernorm(const MorvTensorRec& x, const MorvTensorRec& gamma, const MorvTensorRec& beta,
                              double eps);
/// One row of the table for each of the ids, which stand in one row. Null for an id outside.
TensorPtr MorvTensorEmbeddingLookup(const MorvTensorRec& table, const MorvTensorRec& ids);
/// Cells to the right of the diagonal become -1e9. For square tensors.
TensorPtr MorvTensorCausalMask(const MorvTensorRec& scores);
/// `length` positions by `width` columns: sines in even columns, cosines in odd ones.
TensorPtr MorvTensorPositionalEncoding(int32_t length, int32_t width);

/// The column of a row's largest value, the first on a tie; -1 for a row outside.
int32_t MorvTensorArgmax(const MorvTensorRec& t, int32_t row);
/// Cosine of the angle between two tensors as long vectors; 0.0 for other shapes or a zero tensor.
double MorvTensorCosine(const MorvTensorRec& a, const MorvTensorRec& b);

/// What stands where attention may not look: so far below all scores that its weight is zero, but a
/// number still, so that no NaN can arise.
inline constexpr double kMaskedScore = -1e9;

}  // namespace vorc
