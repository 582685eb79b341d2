#include "tensor/trace_steps.h"

#include <algorithm>
#include <cmath>

#include "base/format.h"
#include "tensor/rows.h"

namespace vorc {

namespace {

using Rule = LlmTraceBlock::Rule;
using Reasons = std::span<const std::string_view>;

constexpr size_t kTracedCharacters = 32;
constexpr size_t kTracedHeads = 2;
constexpr int kTitleCharacters = 60;

std::string Size(const MorvTensorRec& t) {
  return Format("[%dx%d]", t.rows(), t.cols());
}

void PrintWithMatrix(Rule rule, const std::string& title, Reasons reasons, std::string_view label,
                     const MorvTensorRec& shown) {
  LlmTraceBlock block(rule, title, reasons);
  block.MorvLlmTraceMatrix(label, MatrixOf(shown));
  block.Print();
}

constexpr std::string_view kSoftmaxReasons[] = {
    "raw scores can be any numbers; softmax turns each row into weights",
    "between 0 and 1 that add up to 1, so they can be read as probabilities.",
};
constexpr std::string_view kMatmulReasons[] = {
    "this is the basic operation of a neural network: every cell of the result",
    "is a weighted sum of a row's features, many weighted sums at once.",
};
constexpr std::string_view kAddReasons[] = {
    "a residual connection: adding a layer's input back to its output lets the",
    "layer learn only a correction, and lets gradients flow past it. The same",
    "sum also mixes position information into token embeddings.",
};
constexpr std::string_view kReluReasons[] = {
    "without a bend between them, stacked linear layers collapse into a single one.",
    "Cutting negative values to zero is the simplest bend that works.",
};
constexpr std::string_view kLinearReasons[] = {
    "a learned change of view: each output feature is a weighted sum of all input",
    "features plus a bias. The weights are what training adjusts.",
};
constexpr std::string_view kLayernormReasons[] = {
    "values that drift too large or too small make training unstable; bringing each",
    "row to mean 0 and variance 1, then rescaling by learned gamma and beta, prevents it.",
};
constexpr std::string_view kEmbeddingReasons[] = {
    "a token ID is only a label, so nothing follows from its size. Each ID picks a row",
    "of a learned table: a vector in which similar tokens can come to lie close together.",
};
constexpr std::string_view kMaskReasons[] = {
    "a model that predicts the next token must not peek at it. Scores of later",
    "positions become hugely negative, so that softmax gives them no weight.",
};
constexpr std::string_view kPositionReasons[] = {
    "attention by itself sees a bag of tokens without order. Waves of different",
    "lengths give every position a pattern of its own, and near ones similar patterns.",
};
constexpr std::string_view kAttentionReasons[] = {
    "each position asks a question (query), every position offers a key, and the better",
    "they match, the more of that position's value flows in. This is how words take",
    "their meaning from context. Several heads look for different relations at once.",
};
constexpr std::string_view kLossReasons[] = {
    "training needs one number that says how wrong the prediction was: minus the log of",
    "the probability given to the correct token. Sure and right costs nothing, sure and",
    "wrong costs a lot.",
};
constexpr std::string_view kBackwardReasons[] = {
    "which way should each logit move to lower the loss? The answer is the predicted",
    "probability minus 1 for the correct token, and the probability alone for the others.",
    "The chain rule then carries this gradient back through every layer.",
};
constexpr std::string_view kSgdReasons[] = {
    "the gradient points uphill in the loss, so each weight takes a small step the other",
    "way: new = old - learning rate * gradient. Repeating this is all that training is.",
};
constexpr std::string_view kTokenizeReasons[] = {
    "a model computes with numbers, not letters. Here every byte becomes one token ID,",
    "so the vocabulary is fixed at 256 entries and no word can be unknown.",
};
constexpr std::string_view kDetokenizeReasons[] = {
    "the model's answer is a row of token IDs; people read text. This is the exact",
    "inverse of tokenizing.",
};

}  // namespace

void TraceSoftmax(const MorvTensorRec& y) {
  PrintWithMatrix(Rule::kPlain, "SOFTMAX  " + Size(y), kSoftmaxReasons, "probabilities", y);
}

void TraceMatmul(const MorvTensorRec& a, const MorvTensorRec& b, const MorvTensorRec& product) {
  const std::string title = "MATRIX MULTIPLY  " + Size(a) + " @ " + Size(b) + " -> " + Size(product);
  PrintWithMatrix(Rule::kPlain, title, kMatmulReasons, "product", product);
}

void TraceAdd(const MorvTensorRec& sum) {
  PrintWithMatrix(Rule::kPlain, "ADD  " + Size(sum) + " + " + Size(sum), kAddReasons, "sum", sum);
}

void TraceRelu(const MorvTensorRec& x, const MorvTensorRec& y) {
  LlmTraceBlock block(Rule::kPlain, "RELU  " + Size(x), kReluReasons);
  const auto cut = std::ranges::count_if(x.values(), [](double value) { return value < 0.0; });
  block.Line(Format("  %zd of %zu values were negative and became 0", cut, x.values().size()));
  block.MorvLlmTraceMatrix("output", MatrixOf(y));
  block.Print();
}

void TraceLinear(const MorvTensorRec& x, const MorvTensorRec& w, const MorvTensorRec& y) {
  LlmTraceBlock block(Rule::kPlain, "LINEAR LAYER  y = x @ W + b   ('weight assignment' in action)",
                      kLinearReasons);
  block.Line("  " + Size(x) + " @ " + Size(w) + " -> " + Size(y));
  block.MorvLlmTraceMatrix("y", MatrixOf(y));
  block.Print();
}

void TraceLayernorm(const MorvTensorRec& y, double eps) {
  LlmTraceBlock block(Rule::kPlain, "LAYER NORMALIZATION  " + Size(y), kLayernormReasons);
  block.Line(Format("  eps = %g keeps the division safe", eps));
  block.MorvLlmTraceMatrix("normalized", MatrixOf(y));
  block.Print();
}

void TraceEmbeddingLookup(const MorvTensorRec& table, const MorvTensorRec& result) {
  LlmTraceBlock block(
      Rule::kMajor,
      Format("TOKEN EMBEDDING LOOKUP  %d token(s) from a ", result.rows()) + Size(table) + " table",
      kEmbeddingReasons);
  block.MorvLlmTraceMatrix("embeddings", MatrixOf(result));
  block.Print();
}

void TraceCausalMask(const MorvTensorRec& masked) {
  PrintWithMatrix(Rule::kPlain, "CAUSAL MASK  " + Size(masked), kMaskReasons, "masked scores", masked);
}

void TracePositionalEncoding(const MorvTensorRec& encoding) {
  PrintWithMatrix(Rule::kMajor,
                  "POSITIONAL ENCODING (word-order / 'distancing' information)  " + Size(encoding),
                  kPositionReasons, "encoding", encoding);
}

void TraceCrossEntropyBackward(const MorvTensorRec& gradient) {
  PrintWithMatrix(Rule::kMajor, "BACKWARD PASS BEGINS - gradient of the loss  " + Size(gradient),
                  kBackwardReasons, "gradient of the logits", gradient);
}

void TraceTokenize(std::string_view text) {
  const std::string shown = OnOneLine(text.substr(0, kTitleCharacters));
  const bool cut = text.size() > static_cast<size_t>(kTitleCharacters);
  LlmTraceBlock block(Rule::kMajor,
                      Format("TOKENIZING  \"%.*s\"%s", kTitleCharacters, shown.c_str(), cut ? "..." : ""),
                      kTokenizeReasons);
  const size_t count = std::min(text.size(), kTracedCharacters);
  for (size_t i = 0; i < count; ++i) {
    const int c = static_cast<unsigned char>(text[i]);
    const char* format = c >= 32 && c <= 126 ? "  position %d: '%c' -> token ID %d"
                                             : "  position %d: byte 0x%02x -> token ID %d";
    block.Line(Format(format, static_cast<int>(i), c, c));
  }
  if (count < text.size()) {
    block.Line(Format("  ... (%d more characters)", static_cast<int>(text.size() - count)));
  }
  block.Line(Format("result: a [1 x %d] row of token IDs - the model's actual input.",
                    static_cast<int>(text.size())));
  block.Print();
}

void TraceDetokenize(const MorvTensorRec& ids, std::string_view text) {
  LlmTraceBlock block(Rule::kMajor, Format("DETOKENIZING %d token ID(s) back into text", ids.cols()),
                      kDetokenizeReasons);
  block.Line("result: \"" + OnOneLine(text) + "\"");
  block.Print();
}

void AttentionTrace::Rows(size_t head, const char* what, ConstMatrix shown, size_t rows, const char* cell) {
  if (head >= kTracedHeads) return;
  lines_ += TraceLine(Format("  head %d, %s  (%d rows x %d cols):", static_cast<int>(head), what,
                             static_cast<int>(rows), static_cast<int>(shown.cols)));
  shown.rows = rows;
  lines_ += TraceRows(shown, cell);
}

void AttentionTrace::Scores(size_t head, ConstMatrix scores, size_t rows) {
  Rows(head, "raw scores", scores, rows, "%10.4g");
}

void AttentionTrace::Weights(size_t head, ConstMatrix weights, size_t rows) {
  Rows(head, "weights after softmax", weights, rows, "%8.4f");
}

void AttentionTrace::Print(const MorvTensorRec& output) const {
  LlmTraceBlock block(Rule::kMajor,
                      Format("ATTENTION  (%d head%s, %s)", heads_, heads_ == 1 ? "" : "s",
                             causal_ ? "causal/GPT-style masking ON" : "no masking"),
                      kAttentionReasons);
  block.Append(lines_);
  if (heads_ > static_cast<int32_t>(kTracedHeads)) {
    block.Line(Format("  (heads 2..%d ran identically on their own slices - not printed)", heads_ - 1));
  }
  block.MorvLlmTraceMatrix("merged output", MatrixOf(output));
  block.Print();
}

void CrossEntropyTrace::Position(size_t position, int32_t target, double loss) {
  if (position >= kTracedCells) return;
  lines_ += TraceLine(Format("  position %d: correct next token id=%d, model gave it p=%.6f -> -log(p)=%.4f",
                             static_cast<int>(position), target, std::exp(-loss), loss));
}

void CrossEntropyTrace::Print(const MorvTensorRec& logits, double mean) const {
  LlmTraceBlock block(Rule::kMajor, "CROSS-ENTROPY LOSS  ('how wrong was the model?')", kLossReasons);
  block.Append(lines_);
  if (logits.RowCount() > kTracedCells) {
    block.Line(Format("  ... (%d more positions)", static_cast<int>(logits.RowCount() - kTracedCells)));
  }
  block.Line(Format("  average loss over the sequence = %.6f", mean));
  block.Print();
}

SgdTrace::SgdTrace(std::span<const double> weights, std::span<const double> slopes)
    : count_(std::min(weights.size(), kShown)) {
  std::ranges::copy(weights.first(count_), weights_.begin());
  std::ranges::copy(slopes.first(count_), slopes_.begin());
}

void SgdTrace::Print(const MorvTensorRec& w, double rate) const {
  LlmTraceBlock block(Rule::kMajor, "SGD WEIGHT UPDATE - the model actually LEARNS here", kSgdReasons);
  block.Line("  " + Size(w) + Format(", learning rate %g; old  -  rate * gradient  ->  new:", rate));
  for (size_t i = 0; i < count_; ++i) {
    block.Line(Format("  %.6f  -  %g * %.6f  ->  %.6f", weights_[i], rate, slopes_[i], w.values()[i]));
  }
  block.Print();
}

}  // namespace vorc
