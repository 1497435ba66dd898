// The error definition file loader against the reading of DefinitionModel.h,
// over fuzzer input: a first byte '0' to '9' takes the rest as the file's
// text (the seeds in corpus/ErrorDefinitionFile), any other builds the file
// from pieces. The ctest ErrorDefinitionFile.LoadsWhatTheModelReads runs the
// same decoder from fixed seeds.
#include "DefinitionModel.h"

MODEL_FUZZ_TARGET(defmodel::RunDefinitionFile)
