#include "LHashModel.h"

TEST(LHash, EveryOperationAgreesWithTheRowModel) {
  model::RunSeeds(hashmodel::RunLHashOps, 30, 600);
}

// The rows move, all together, exactly when the array is full and doubles:
// at the 2nd, 3rd, 5th, 9th and 17th row. clear() keeps the capacity.
TEST(LHash, RowsMoveOnlyWhenTheArrayDoubles) {
  LHash table;
  for (const char* want : {"mm-m---m-------m", "----------------"}) {
    table.clear();
    std::string moves;
    auto first = reinterpret_cast<std::uintptr_t>(table.createKey("0"));
    for (int n = 1; n <= 16; ++n) {
      table.createKey(std::to_string(n).c_str());
      moves += reinterpret_cast<std::uintptr_t>(table.getKey(0)) == first ? '-' : 'm';
      first = reinterpret_cast<std::uintptr_t>(table.getKey(0));
    }
    EXPECT_EQ(moves, want);
  }
}

TEST(LHash, ARowMadeFromNullHasTheEmptyKey) { EXPECT_STREQ(LHashElement(nullptr).getKey(), ""); }
