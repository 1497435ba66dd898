// DefinitionCheck: loads an error definition file with ErrorHandler, lists
// the elements the loader produced, and warns about statements the loader
// accepts but a person probably did not mean.
//
// The loader cannot list its definitions, so the file is read a second time
// by DefinitionReader, with the loader's own scanner, keeping the line of
// every statement. Each definition found there is then looked up in the
// loaded handler, in file order, and the table shows the loaded element, not
// the second reading. Where the two disagree (they share one reader, so only
// a fault of the handler would make them), a warning says so.
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
// load succeeds, every definition is looked up and checked; the warnings
// cover every statement the loader's pass reaches.
// To find the second of two elements with one code, an element already
// matched gets, for the time of the check, a code that no definition of the
// file has; every code is restored before the handler goes.
CheckResult CheckDefinitionFile(const std::string& path, int selector);

// True for an action that is not "STOP" but looks like a misspelling of it:
// "STOP" in other case, or at most two edits away from it ("STOPP", "SOTP").
bool LooksLikeStop(const std::string& action);

}  // namespace errdef

#endif  // VQ0300_TOOLS_ERRDEF_DEFINITIONCHECK_H
