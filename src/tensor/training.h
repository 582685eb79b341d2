#pragma once

#include "tensor/tensor.h"

// Losses, the backward operation of each layer, and the step that learns. Null for shapes that don't
// fit; a gradient has the shape of what it is the gradient of.

namespace vorc {

/// Mean over the rows of -log(softmax(row)[target]). `targets` has one row, with a column for each
/// row of `logits`. -1.0 for other shapes and for a target outside the columns.
double MorvTensorCrossEntropyLoss(const MorvTensorRec& logits, const MorvTensorRec& targets);
/// Its gradient: softmax(row) minus the one-hot target, over the number of rows.
TensorPtr MorvTensorCrossEntropyLossBackward(const MorvTensorRec& logits, const MorvTensorRec& targets);

/// dy where x is above 0, else 0.
TensorPtr MorvTensorReluBackward(const MorvTensorRec& x, const MorvTensorRec& dy);
/// From the softmax's output y and the gradient of that.
TensorPtr MorvTensorSoftmaxBackward(const MorvTensorRec& y, const MorvTensorRec& dy);
TensorPtr MorvTensorLayernormBackwardX(const MorvTensorRec& x, const MorvTensorRec& gamma,
                                       const MorvTensorRec& dy, double eps);
TensorPtr MorvTensorLayernormBackwardGamma(const MorvTensorRec& x, const MorvTensorRec& dy, double eps);
/// The sum of the rows of dy. Fits any shape.
TensorPtr MorvTensorLayernormBackwardBeta(const MorvTensorRec& dy);
/// Adds each row of dy to the row of the table that its id chose.
TensorPtr MorvTensorEmbeddingLookupBackward(const MorvTensorRec& table, const MorvTensorRec& ids,
                                            const MorvTensorRec& dy);

/// w = w - gradient rate, in place. Other shapes change nothing.
void MorvTensorSgdStep(MorvTensorRec& w, const MorvTensorRec& gradient, double rate);

}  // namespace vorc
