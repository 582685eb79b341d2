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

struct Thing {
  static constexpr const char* kKind = "thing";
};

TEST(HandleTable, TellsOfTheFirstRefusalAlone) {
  HandleTable<Thing> table;
  testing::internal::CaptureStderr();
  for (int i = 1; i < HandleTable<Thing>::kSlotCount; ++i) table.Create();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  testing::internal::CaptureStderr();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(table.Add(std::make_unique<Thing>()), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "morv: no number left for another thing - a run can make 4095 of them, freed ones included\n");
}

}  // namespace
}  // namespace vorc
