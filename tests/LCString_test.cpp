// LString and LCString against their model (see TextModel.h), with the case
// mappings and strrev.
#include "TextModel.h"

TEST(LCString, AndLStringAgreeWithTheModel) { model::RunSeeds(text_model::RunTextOps, 300, 3000); }
