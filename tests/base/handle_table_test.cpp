#include "base/handle_table.h"

#include <gtest/gtest.h>

namespace vorc {
namespace {

TEST(HandleTable, NumbersAreNeverUsedAgainAndRunOut) {
  HandleTable<int> table;
  EXPECT_EQ(table.Create(7), 1);
  EXPECT_TRUE(table.Free(1));
  EXPECT_FALSE(table.Free(1));
  EXPECT_EQ(table.Find(1), nullptr);
  for (int expected = 2; expected < HandleTable<int>::kSlotCount; ++expected) {
    ASSERT_EQ(table.Create(expected), expected);
  }
  EXPECT_EQ(table.Create(0), 0);
  EXPECT_EQ(*table.Find(4095), 4095);
  EXPECT_EQ(table.Find(0), nullptr);
  EXPECT_EQ(table.Find(4096), nullptr);
  EXPECT_EQ(table.Find(-1), nullptr);
}

}  // namespace
}  // namespace vorc
