// DefinitionCheck: loads an error definition file with ErrorHandler, lists
// the definitions the load takes, and warns about statements the loader
// accepts but a person probably did not mean.
//
// The loader cannot list its definitions, so the file is read a second time
// by DefinitionReader, with the loader's own scanner, which tells the line of
// every statement and whether the loader takes it. The check is a client of
// that reading: it reads no statement text again.
#ifndef VQ0300_TOOLS_ERRDEF_DEFINITIONCHECK_H
#define VQ0300_TOOLS_ERRDEF_DEFINITIONCHECK_H

#include <cstdint>
#include <string>
#include <vector>

#include "DefinitionReader.h"

namespace errdef {

// One loaded element, with the line of its definition.
struct Row {
  int line;
  uint32_t code;  // offset << 16 | number
  uint16_t cont;  // m_wContinue: 0 stops, 1 continues
  std::string message;
};

struct CheckResult {
  int load_result = 0;            // what ErrorHandler::Initialize returned
  std::string failure;            // one line: why the load failed (load_result != 0)
  std::vector<Row> rows;          // loaded elements, in file order
  std::vector<Warning> warnings;  // by line; findings on the whole file last
};

// Loads path as a client of the library does: SetDefaultDir with the
// directory of path made absolute, then Initialize with the base name and the
// selector (-1 for every block, or the offset value of one block). When the
// load succeeds, the scanner's reading gives the rows and the warnings, which
// cover every statement the loader's pass reaches.
CheckResult CheckDefinitionFile(const std::string& path, int selector);

// True for an action that is not "STOP" but looks like a misspelling of it:
// "STOP" in other case, or at most two edits away from it ("STOPP", "SOTP").
bool LooksLikeStop(const std::string& action);

}  // namespace errdef

#endif  // VQ0300_TOOLS_ERRDEF_DEFINITIONCHECK_H
