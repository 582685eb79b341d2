#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "builtins/bindings.h"
#include "lib/sandbox.h"
#include "lib/whole_file.h"
#include "tensor/attention.h"
#include "tensor/operations.h"
#include "tensor/slots.h"
#include "tensor/tensor_file.h"
#include "tensor/tokens.h"
#include "tensor/training.h"

namespace vorc {

namespace {

constexpr double kLossFailed = -1.0;

MorvTensorSlots& Slots(const BuiltinCall& call) {
  return call.runtime().State<MorvTensorSlots>();
}

/// The tensor whose handle is argument `i`, or null.
MorvTensorRec* Tensor(const BuiltinCall& call, size_t i) {
  const std::optional<int64_t> handle = call.Int64(i);
  return handle ? Slots(call).Find(*handle) : nullptr;
}

void ReturnTensor(BuiltinCall& call, TensorPtr tensor) {
  call.ReturnInt(Slots(call).Add(std::move(tensor)));
}

/// The tensors of the first arguments, if all of them are there.
template <size_t count>
std::optional<std::array<MorvTensorRec*, count>> Tensors(const BuiltinCall& call) {
  std::array<MorvTensorRec*, count> tensors;
  for (size_t i = 0; i < count; ++i) {
    tensors[i] = Tensor(call, i);
    if (tensors[i] == nullptr) return std::nullopt;
  }
  return tensors;
}

/// A built-in whose arguments are `count` tensors.
template <auto operation, size_t count>
void OfTensors(BuiltinCall& call) {
  const auto tensors = Tensors<count>(call);
  if (!tensors) return call.ReturnInt(0);
  ReturnTensor(call, std::apply([](auto*... t) { return operation(*t...); }, *tensors));
}

/// The same with a number behind them.
template <auto operation, size_t count>
void OfTensorsAndNumber(BuiltinCall& call) {
  const auto tensors = Tensors<count>(call);
  if (!tensors) return call.ReturnInt(0);
  const double number = call.Double(count);
  ReturnTensor(call, std::apply([number](auto*... t) { return operation(*t..., number); }, *tensors));
}

/// A built-in that makes a tensor of a size given by two integers.
template <auto operation>
void OfSize(BuiltinCall& call) {
  const auto rows = call.Int(0);
  const auto cols = call.Int(1);
  ReturnTensor(call, rows && cols ? operation(*rows, *cols) : nullptr);
}

void Free(BuiltinCall& call) {
  if (const auto handle = call.Int64(0)) Slots(call).Free(*handle);
}

void Rows(BuiltinCall& call) {
  const MorvTensorRec* t = Tensor(call, 0);
  call.ReturnInt(t == nullptr ? 0 : t->rows());
}

void Cols(BuiltinCall& call) {
  const MorvTensorRec* t = Tensor(call, 0);
  call.ReturnInt(t == nullptr ? 0 : t->cols());
}

void Get(BuiltinCall& call) {
  const MorvTensorRec* t = Tensor(call, 0);
  const auto row = call.Int(1);
  const auto col = call.Int(2);
  call.ReturnDouble(t != nullptr && row && col ? MorvTensorGet(*t, *row, *col) : 0.0);
}

void Set(BuiltinCall& call) {
  MorvTensorRec* t = Tensor(call, 0);
  const auto row = call.Int(1);
  const auto col = call.Int(2);
  call.ReturnInt(t != nullptr && row && col && MorvTensorSet(*t, *row, *col, call.Double(3)));
}

void InitSpread(BuiltinCall& call) {
  MorvTensorRec* t = Tensor(call, 0);
  const auto seed = call.Int(1);
  if (t == nullptr || !seed) return call.ReturnInt(0);
  MorvTensorInitSpread(*t, *seed);
  call.ReturnInt(1);
}

void Argmax(BuiltinCall& call) {
  const MorvTensorRec* t = Tensor(call, 0);
  const auto row = call.Int(1);
  call.ReturnInt(t != nullptr && row ? MorvTensorArgmax(*t, *row) : -1);
}

void Cosine(BuiltinCall& call) {
  const auto tensors = Tensors<2>(call);
  call.ReturnDouble(tensors ? MorvTensorCosine(*(*tensors)[0], *(*tensors)[1]) : 0.0);
}

void Save(BuiltinCall& call) {
  const MorvTensorRec* t = Tensor(call, 0);
  const auto path = call.Text(1);
  if (t == nullptr || !path) return call.ReturnInt(0);
  call.ReturnInt(
      MorvWriteWholeFile(std::string(*path), [t](PieceWriter write) { return MorvTensorSave(*t, write); }));
}

void Load(BuiltinCall& call) {
  const auto path = call.Text(0);
  const auto text = path ? MorvReadWholeFile(std::string(*path)) : std::nullopt;
  ReturnTensor(call, text ? MorvTensorLoad(*text) : nullptr);
}

void MultiheadAttention(BuiltinCall& call) {
  const auto tensors = Tensors<3>(call);
  const auto heads = call.Int(3);
  const auto causal = call.Int(4);
  if (!tensors || !heads || !causal) return call.ReturnInt(0);
  const auto [q, k, v] = *tensors;
  ReturnTensor(call, MorvTensorMultiheadAttention(*q, *k, *v, *heads, *causal != 0));
}

// Projected attention, of as many inputs as stand in front of the eight weights and biases.
template <size_t inputs>
void ProjectedAttention(BuiltinCall& call) {
  constexpr size_t kTensors = inputs + 8;
  const auto tensors = Tensors<kTensors>(call);
  const auto heads = call.Int(kTensors);
  const auto causal = call.Int(kTensors + 1);
  if (!tensors || !heads || !causal) return call.ReturnInt(0);
  const auto weight = [&](size_t i) -> const MorvTensorRec& { return *(*tensors)[inputs + i]; };
  const AttentionWeights weights = {weight(0), weight(1), weight(2), weight(3),
                                    weight(4), weight(5), weight(6), weight(7)};
  ReturnTensor(call, MorvTensorCrossAttention(*tensors->front(), *(*tensors)[inputs - 1], weights, *heads,
                                              *causal != 0));
}

void CrossEntropyLoss(BuiltinCall& call) {
  const auto tensors = Tensors<2>(call);
  call.ReturnDouble(tensors ? MorvTensorCrossEntropyLoss(*(*tensors)[0], *(*tensors)[1]) : kLossFailed);
}

void SgdStep(BuiltinCall& call) {
  if (const auto tensors = Tensors<2>(call)) {
    MorvTensorSgdStep(*(*tensors)[0], *(*tensors)[1], call.Double(2));
  }
}

void Tokenize(BuiltinCall& call) {
  const auto text = call.Text(0);
  ReturnTensor(call, text ? MorvTokenize(*text) : nullptr);
}

void Detokenize(BuiltinCall& call) {
  const MorvTensorRec* t = Tensor(call, 0);
  call.ReturnText(t == nullptr ? std::string() : MorvDetokenize(*t, BuiltinCall::kTextLimit));
}

void TextEmbed(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto dims = call.Int(1);
  ReturnTensor(call, text && dims ? MorvTextEmbed(*text, *dims) : nullptr);
}

constexpr BuiltinBinding kBindings[] = {
    {"tensor_new", OfSize<MorvTensorNew>},
    {"tensor_free", Free},
    {"tensor_rows", Rows},
    {"tensor_cols", Cols},
    {"tensor_get", Get},
    {"tensor_set", Set},
    {"tensor_init_spread", InitSpread},
    {"tensor_save", Save},
    {"tensor_load", Load},
    {"tensor_matmul", OfTensors<MorvTensorMatmul, 2>},
    {"tensor_add", OfTensors<MorvTensorAdd, 2>},
    {"tensor_sub", OfTensors<MorvTensorSub, 2>},
    {"tensor_scale", OfTensorsAndNumber<MorvTensorScale, 1>},
    {"tensor_transpose", OfTensors<MorvTensorTranspose, 1>},
    {"tensor_relu", OfTensors<MorvTensorRelu, 1>},
    {"tensor_softmax", OfTensors<MorvTensorSoftmax, 1>},
    {"tensor_linear", OfTensors<MorvTensorLinear, 3>},
    {"tensor_layernorm", OfTensorsAndNumber<MorvTensorLayernorm, 3>},
    {"tensor_embedding_lookup", OfTensors<MorvTensorEmbeddingLookup, 2>},
    {"tensor_causal_mask", OfTensors<MorvTensorCausalMask, 1>},
    {"tensor_positional_encoding", OfSize<MorvTensorPositionalEncoding>},
    {"tensor_argmax", Argmax},
    {"tensor_cosine", Cosine},
    {"tensor_multihead_attention", MultiheadAttention},
    {"tensor_self_attention", ProjectedAttention<1>},
    {"tensor_cross_attention", ProjectedAttention<2>},
    {"tensor_cross_entropy_loss", CrossEntropyLoss},
    {"tensor_cross_entropy_loss_backward", OfTensors<MorvTensorCrossEntropyLossBackward, 2>},
    {"tensor_relu_backward", OfTensors<MorvTensorReluBackward, 2>},
    {"tensor_softmax_backward", OfTensors<MorvTensorSoftmaxBackward, 2>},
    {"tensor_layernorm_backward_x", OfTensorsAndNumber<MorvTensorLayernormBackwardX, 3>},
    {"tensor_layernorm_backward_gamma", OfTensorsAndNumber<MorvTensorLayernormBackwardGamma, 2>},
    {"tensor_layernorm_backward_beta", OfTensors<MorvTensorLayernormBackwardBeta, 1>},
    {"tensor_embedding_lookup_backward", OfTensors<MorvTensorEmbeddingLookupBackward, 3>},
    {"tensor_sgd_step", SgdStep},
    {"tensor_tokenize", Tokenize},
    {"tensor_detokenize", Detokenize},
    {"morv_text_embed", TextEmbed},
};

}  // namespace

std::span<const BuiltinBinding> TensorBuiltins() {
  return kBindings;
}

}  // namespace vorc
