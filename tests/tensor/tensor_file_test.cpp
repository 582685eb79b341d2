#include "tensor/tensor_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace vorc {
namespace {

std::string Saved(const MorvTensorRec& t) {
  std::string text;
  EXPECT_TRUE(MorvTensorSave(t, [&](std::string_view piece) {
    text += piece;
    return true;
  }));
  return text;
}

TEST(TensorFile, BringsBackEveryDouble) {
  std::mt19937_64 random(4);
  const TensorPtr t = MorvTensorNew(100, 301);
  for (double& value : t->values()) {
    const uint64_t bits = random();
    std::memcpy(&value, &bits, sizeof value);
    if (std::isnan(value)) value = -0.0;
  }
  t->values()[5] = std::numeric_limits<double>::denorm_min();
  t->values()[6] = -std::numeric_limits<double>::infinity();
  const std::string text = Saved(*t);
  EXPECT_EQ(text.substr(0, 19), "MORVTENSOR 100 301\n");
  char printed[64];
  std::snprintf(printed, sizeof printed, "\n%.17g\n", t->values()[300]);
  EXPECT_NE(text.find(printed), std::string::npos);
  const TensorPtr again = MorvTensorLoad(text);
  ASSERT_TRUE(again && again->SameShape(*t));
  EXPECT_EQ(std::memcmp(again->values().data(), t->values().data(), t->values().size_bytes()), 0);
}

TEST(TensorFile, StopsAtAWriterThatFails) {
  const TensorPtr t = MorvTensorNew(1000, 100);
  int calls = 0;
  EXPECT_FALSE(MorvTensorSave(*t, [&](std::string_view) { return ++calls < 2; }));
  EXPECT_EQ(calls, 2);
}

TEST(TensorFile, ReadsWhatAFormattedReaderReads) {
  const struct {
    const char* text;
    const char* values;
  } cases[] = {
      {"MORVTENSOR 1 2\n1\n2\n", "1 2"},
      {"  MORVTENSOR\t+1\n\n2 1 2", "1 2"},
      {"MORVTENSOR 1 2\n+.5 -1e3 99 rest", "0.5 -1000"},
      {"MORVTENSOR 2 1 0x1p4\r\n1.5e+0\v", "16 1.5"},
      {"MORVTENSOR 1 3 inf -Infinity nan", "inf -inf nan"},
      {"MORVTENSOR 1 2 1e999 1e-999", "inf 0"},
      {"MORVTENSOR 1 2 1-2", "1 -2"},
  };
  for (const auto& c : cases) {
    const TensorPtr t = MorvTensorLoad(c.text);
    ASSERT_TRUE(t) << c.text;
    std::string values;
    for (const double value : t->values()) {
      char one[32];
      std::snprintf(one, sizeof one, values.empty() ? "%g" : " %g", value);
      values += one;
    }
    EXPECT_EQ(values, c.values) << c.text;
  }
  for (const char* text :
       {"MORVTENSOR 1 2 1", "MORVTENSOR 1 2 1 x", "MORVTENSOR 1 2 1 +", "MORVTENSOR 1 2 + 1 2",
        "MORVTENSOR 1 2", "MORVTENSOR 1", "MORVTENSOR", "", "MORVTENSORS 1 1 1", "morvtensor 1 1 1",
        "MORVTENSOR 0 1 1", "MORVTENSOR 1 -1 1", "MORVTENSOR 99999999999 1 1",
        "MORVTENSOR 2000000000 2000000000 1", "MORVTENSOR 2000000000 1 1"}) {
    EXPECT_EQ(MorvTensorLoad(text), nullptr) << text;
  }
  EXPECT_EQ(MorvTensorRec::BytesInUse(), 0u);
}

}  // namespace
}  // namespace vorc
