#include "codes/galois.h"

#include <gtest/gtest.h>

#include "pictures.h"

namespace vorc::codes {
namespace {

using Block = std::vector<uint8_t>;

Block RandomBlock(Dice& dice, size_t data_length, size_t ecc_length) {
  Block block;
  for (size_t i = 0; i < data_length; ++i) block.push_back(static_cast<uint8_t>(dice.Below(256)));
  Block ecc(ecc_length);
  ReedSolomonRemainder(block, ReedSolomonGenerator(ecc_length), ecc);
  block.insert(block.end(), ecc.begin(), ecc.end());
  return block;
}

Block WithErrors(Block block, size_t count, Dice& dice) {
  std::vector<bool> hit(block.size());
  while (count > 0) {
    const auto at = static_cast<size_t>(dice.Below(static_cast<int>(block.size())));
    if (hit[at]) continue;
    hit[at] = true;
    block[at] ^= static_cast<uint8_t>(1 + dice.Below(255));
    --count;
  }
  return block;
}

TEST(ReedSolomon, MendsEveryCountUpToTheLimitAndInventsNothingAbove) {
  Dice dice(3);
  int accepted = 0, tries = 0;
  for (size_t ecc_length = 7; ecc_length <= 30; ++ecc_length) {
    for (size_t errors = 0; errors <= ecc_length; ++errors) {
      const Block block = RandomBlock(dice, 19 + static_cast<size_t>(dice.Below(100)), ecc_length);
      const Block broken = WithErrors(block, errors, dice);
      Block mended = broken;
      const bool done = RepairBlock(mended, ecc_length);
      if (errors <= ecc_length / 2) {
        EXPECT_TRUE(done) << ecc_length << " " << errors;
        EXPECT_EQ(mended, block);
        continue;
      }
      ++tries;
      accepted += done ? 1 : 0;
      EXPECT_TRUE(done || mended == broken);
    }
  }
  // Now and then another codeword is near, most of all with few check symbols.
  EXPECT_LE(accepted, tries / 50);
}

}  // namespace
}  // namespace vorc::codes
