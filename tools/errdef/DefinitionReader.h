// DefinitionReader: the reading of an error definition file by the loader's
// own scanner (errors/DefinitionScanner_internal.h, compiled into the tool),
// keeping what the loader throws away: the line of every statement, the
// statements it dropped or took apart, and the places where its rules cut
// text that a person probably meant to keep, as warnings in words.
#ifndef VQ0300_TOOLS_ERRDEF_DEFINITIONREADER_H
#define VQ0300_TOOLS_ERRDEF_DEFINITIONREADER_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "errors/DefinitionScanner_internal.h"

namespace errdef {

// A finding at a line of the file (1 for the first line); line 0 concerns the
// file as a whole.
struct Warning {
  int line;
  std::string text;
};

// One statement as the loader's reader cut it out, with the fields it takes
// from it (see DefinitionScanner_internal.h).
using Statement = vq0300_internal::ScannedStatement;

struct Reading {
  // 0 when the pass ends normally, -1 when the loader's pass fails (no
  // header, a comment that never ends); failure then says why in one line.
  int result = 0;
  std::string failure;
  // Every statement the pass reached, in file order, loaded or not. With a
  // selector of 0 or more the pass ends at the offset statement behind the
  // selected block, which is listed last, with ends_block set.
  std::vector<Statement> statements;
  // Places where the reader's rules drop or join text: comments that remove
  // what stands ahead of them, lines with more than one "<E/>", text carried
  // behind an "<E/>", a statement cut off by the end of the file, text
  // behind the header.
  std::vector<Warning> warnings;
  bool block_found = false;  // an offset statement had the selector's value
};

// Reads file from its current position to the end, as the loader's pass
// with this selector does (-1 for every block, or a block's offset value).
// The file is read in pieces of at most 65535 bytes as the loader reads them;
// a NUL byte ends the text of its piece, and a read error ends the file.
Reading ReadDefinitionFile(std::FILE* file, int selector);

// text in double quotes for a warning, cut to about 60 bytes ("...").
std::string Quoted(const std::string& text);

}  // namespace errdef

#endif  // VQ0300_TOOLS_ERRDEF_DEFINITIONREADER_H
