#include <gtest/gtest.h>

#include "TextModel.h"

TEST(LString, AgreesWithTheModel) { model::RunSeeds(text_model::RunLStringOps, 200, 2000); }
