#include <vq0300/LCString.h>

#include <gtest/gtest.h>

#include "TextModel.h"

// Both string classes run their decoders here (see TextModel.h). The quirks of
// LCString's slices (Left and Right of the whole string or more give its
// terminated view, Mid keeps counted NULs) are the model's own rules there.
TEST(LString, AgreesWithTheModel) { model::RunSeeds(text_model::RunLStringOps, 200, 2000); }
TEST(LCString, AgreesWithTheModel) { model::RunSeeds(text_model::RunLCStringOps, 300, 3000); }
