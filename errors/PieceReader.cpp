// The piece reader of definition files: fgets pieces with exact line counts.
// Read is inline in the header, as the statement loop calls it for every
// line; its storage is set up here.
#include "PieceReader_internal.h"

namespace vq0300_internal {

PieceReader::PieceReader(std::FILE* file) : file_(file), area_(kReadSize, '\n') {}

}  // namespace vq0300_internal
