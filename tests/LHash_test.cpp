#include "LHashModel.h"

TEST(LHash, FollowsTheRowModel) { model::RunSeeds(hashmodel::RunLHashOps, 30, 600); }

TEST(LHash, ARowMadeFromNullHasTheEmptyKey) { EXPECT_STREQ(LHashElement(nullptr).getKey(), ""); }
