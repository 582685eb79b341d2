#pragma once

#include <cstdint>

#include "tensor/tensor.h"

namespace vorc {

/// Attention of the rows of q over those of k and v, in `heads` slices of the columns, without
/// projections: softmax(q k' / sqrt(width of a slice)) v, the slices side by side. With `causal`,
/// row i sees rows 0 to i alone. Null unless q and k have the same columns D, v is shaped like k,
/// and D divides by `heads`.
TensorPtr MorvTensorMultiheadAttention(const MorvTensorRec& q, const MorvTensorRec& k, const MorvTensorRec& v,
                                       int32_t heads, bool causal);

/// The weights and biases around attention.
struct AttentionWeights {
  const MorvTensorRec& wq;
  const MorvTensorRec& bq;
  const MorvTensorRec& wk;
  const MorvTensorRec& bk;
  const MorvTensorRec& wv;
  const MorvTensorRec& bv;
  const MorvTensorRec& wo;
  const MorvTensorRec& bo;
};

/// Projects xq to queries and xkv to keys and values, lets the former attend to the latter, and
/// projects the result. Self attention where both are the same.
TensorPtr MorvTensorCrossAttention(const MorvTensorRec& xq, const MorvTensorRec& xkv,
                                   const AttentionWeights& weights, int32_t heads, bool causal);

}  // namespace vorc
