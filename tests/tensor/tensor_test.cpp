#include "tensor/tensor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "tensor/attention.h"
#include "tensor/operations.h"
#include "tensor/slots.h"
#include "tensor/tokens.h"
#include "tensor/training.h"

namespace vorc {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TensorPtr Filled(int32_t rows, int32_t cols, std::initializer_list<double> values = {}) {
  TensorPtr t = MorvTensorNew(rows, cols);
  std::copy(values.begin(), values.end(), t->values().begin());
  return t;
}

std::vector<double> Values(const TensorPtr& t) {
  return t ? std::vector<double>(t->values().begin(), t->values().end()) : std::vector<double>();
}

TEST(Tensor, SizesThatAreRefused) {
  constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
  const int32_t sizes[][2] = {{0, 3}, {3, 0}, {-1, 3}, {3, -1}, {kLargest, kLargest}, {1 << 30, 1 << 30}};
  for (const auto& [rows, cols] : sizes) {
    EXPECT_EQ(MorvTensorNew(rows, cols), nullptr) << rows << 'x' << cols;
  }
  EXPECT_EQ(MorvTensorRec::BytesInUse(), 0u);
}

TEST(Tensor, FailedOperationsLeaveNothingBehind) {
  {
    const TensorPtr a = Filled(2, 3), b = Filled(3, 2), four = Filled(5, 4), one = Filled(1, 1);
    const TensorPtr w = Filled(4, 4);
    const TensorPtr ids = Filled(1, 3, {0, 1.4, 1.5}), row = Filled(1, 4), nan = Filled(1, 2, {0, kNan});
    const size_t before = MorvTensorRec::BytesInUse();
    const AttentionWeights weights = {*w, *row, *w, *row, *w, *row, *b, *row};
    const struct {
      const char* name;
      TensorPtr result;
    } cases[] = {
        {"add", MorvTensorAdd(*a, *b)},
        {"sub", MorvTensorSub(*a, *b)},
        {"matmul", MorvTensorMatmul(*a, *a)},
        {"linear: w", MorvTensorLinear(*a, *a, *row)},
        {"linear: b", MorvTensorLinear(*a, *b, *row)},
        {"layernorm: gamma", MorvTensorLayernorm(*a, *row, *a, 0)},
        {"layernorm: beta", MorvTensorLayernorm(*a, *a, *row, 0)},
        {"lookup: id too large", MorvTensorEmbeddingLookup(*a, *ids)},
        {"lookup: id no number", MorvTensorEmbeddingLookup(*a, *nan)},
        {"lookup: two rows", MorvTensorEmbeddingLookup(*a, *a)},
        {"mask", MorvTensorCausalMask(*a)},
        {"positions", MorvTensorPositionalEncoding(0, 4)},
        {"heads don't divide", MorvTensorMultiheadAttention(*four, *four, *four, 3, true)},
        {"no heads", MorvTensorMultiheadAttention(*four, *four, *four, 0, true)},
        {"negative heads", MorvTensorMultiheadAttention(*four, *four, *four, -2, true)},
        {"keys", MorvTensorMultiheadAttention(*four, *a, *a, 1, true)},
        {"values", MorvTensorMultiheadAttention(*four, *four, *row, 1, true)},
        {"last projection", MorvTensorCrossAttention(*four, *four, weights, 2, false)},
        {"loss gradient: target", MorvTensorCrossEntropyLossBackward(*b, *ids)},
        {"loss gradient: shape", MorvTensorCrossEntropyLossBackward(*b, *row)},
        {"relu gradient", MorvTensorReluBackward(*a, *b)},
        {"softmax gradient", MorvTensorSoftmaxBackward(*a, *b)},
        {"layernorm gradient: dy", MorvTensorLayernormBackwardX(*a, *a, *b, 0)},
        {"layernorm gradient: gamma", MorvTensorLayernormBackwardX(*a, *row, *a, 0)},
        {"gamma gradient", MorvTensorLayernormBackwardGamma(*a, *b, 0)},
        {"lookup gradient: id", MorvTensorEmbeddingLookupBackward(*a, *ids, *Filled(3, 3))},
        {"lookup gradient: dy", MorvTensorEmbeddingLookupBackward(*a, *ids, *a)},
        {"tokens of nothing", MorvTokenize("")},
    };
    for (const auto& c : cases) EXPECT_EQ(c.result, nullptr) << c.name;
    EXPECT_EQ(MorvTensorRec::BytesInUse(), before);
    for (const double loss : {MorvTensorCrossEntropyLoss(*b, *ids), MorvTensorCrossEntropyLoss(*b, *row),
                              MorvTensorCrossEntropyLoss(*one, *Filled(1, 1, {-0.6}))}) {
      EXPECT_EQ(loss, -1.0);
    }
    MorvTensorSgdStep(*a, *b, 1.0);
    EXPECT_EQ(MorvTensorArgmax(*a, 2), -1);
    EXPECT_EQ(MorvTensorCosine(*a, *b), 0.0);
  }
  EXPECT_EQ(MorvTensorRec::BytesInUse(), 0u);
}

TEST(Tensor, NumbersThatAreNone) {
  EXPECT_EQ(Values(MorvTensorSoftmax(*Filled(2, 2, {1000, 1000, 0, -kInfinity}))),
            (std::vector<double>{0.5, 0.5, 1, 0}));
  for (const auto& row : {Filled(1, 3, {0, kNan, 0}), Filled(1, 3, {kInfinity, 0, 0})}) {
    for (const double value : Values(MorvTensorSoftmax(*row))) EXPECT_TRUE(std::isnan(value));
    EXPECT_TRUE(std::isnan(MorvTensorCrossEntropyLoss(*row, *Filled(1, 1))));
  }
  EXPECT_EQ(MorvTensorArgmax(*Filled(1, 3, {1, kNan, 2}), 0), 2);
  EXPECT_EQ(MorvTensorCosine(*Filled(1, 2, {1, kNan}), *Filled(1, 2, {1, 1})), 0.0);
  EXPECT_EQ(MorvDetokenize(*Filled(1, 6, {72, 104.5, 300, kNan, 33, 33}), 4096), "Hi\xff");
  EXPECT_EQ(Values(MorvTensorRelu(*Filled(1, 3, {-kInfinity, -1e-300, 2}))), (std::vector<double>{0, 0, 2}));
}

TEST(Tensor, SpreadFollowsPlaceAndSeed) {
  const TensorPtr t = Filled(2, 3);
  MorvTensorInitSpread(*t, 0);
  EXPECT_EQ(Values(t), (std::vector<double>{-8 * 0.02, 4 * 0.02, -1 * 0.02, 5 * 0.02, 0.0, -5 * 0.02}));
  MorvTensorInitSpread(*t, -1);  // 4294967289 mod 17 is 12
  EXPECT_EQ(t->values()[0], ((4294967289u % 17) - 8.0) * 0.02);
}

TEST(Tensor, TokensAndEmbeddings) {
  const std::string text = "a\xff\x01" + std::string(5000, 'x');
  EXPECT_EQ(MorvDetokenize(*MorvTokenize(text), 4096), text.substr(0, 4095));
  EXPECT_EQ(MorvDetokenize(*Filled(2, 1, {65, 66}), 4096), "");
  EXPECT_EQ(Values(MorvTextEmbed(" \t Hello \r\n World", 0)), Values(MorvTextEmbed("hello world", 64)));
  const auto embedding = Values(MorvTextEmbed("aA", 7));
  EXPECT_EQ(embedding[(32 * 31 + 97) % 7], 1.0);
  EXPECT_EQ(embedding[(97 * 31 + 97) % 7], 1.0);
  EXPECT_EQ(Values(MorvTextEmbed("", 2)), (std::vector<double>{0, 0}));
}

TEST(TensorSlots, TheLowestFreeNumberIsNext) {
  MorvTensorSlots slots;
  for (int32_t expected = 1; expected < 4096; ++expected) ASSERT_EQ(slots.Add(Filled(1, 1)), expected);
  EXPECT_EQ(slots.Add(Filled(1, 1)), 0);
  for (const int64_t bad : {int64_t{0}, int64_t{-1}, int64_t{4096}, (int64_t{1} << 32) + 1}) {
    EXPECT_EQ(slots.Find(bad), nullptr);
    slots.Free(bad);
  }
  slots.Free(4000);
  slots.Free(17);
  slots.Free(17);
  EXPECT_EQ(slots.Find(17), nullptr);
  EXPECT_EQ(slots.Add(nullptr), 0);
  EXPECT_EQ(slots.Add(Filled(1, 1)), 17);
  EXPECT_EQ(slots.Add(Filled(1, 1)), 4000);
  EXPECT_EQ(MorvTensorRec::BytesInUse(), 4095 * sizeof(double));
}

}  // namespace
}  // namespace vorc
