// DefinitionReader: a second reading of an error definition file, done the
// way ErrorHandler's loader reads it, but keeping what the loader throws away:
// the line of every character, the statements it dropped or took apart, and
// the places where its rules cut text that a person probably meant to keep.
//
// The loader itself stays the authority: DefinitionCheck compares every
// definition found here with the element the loader produced.
#ifndef VQ0300_TOOLS_ERRDEF_DEFINITIONREADER_H
#define VQ0300_TOOLS_ERRDEF_DEFINITIONREADER_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace errdef {

// A finding at a line of the file (1 for the first line); line 0 concerns the
// file as a whole.
struct Warning {
  int line;
  std::string text;
};

// One statement as the reader cut it out: the text up to and including its
// first "<E/>", trimmed, with the fields the loader takes from it.
struct Statement {
  int line = 0;             // line of the statement's first character
  std::string text;         // ends in "<E/>"
  bool is_offset = false;   // holds "Offset" anywhere
  bool ends_block = false;  // an offset statement that ends the selected block and the pass
  // Offset statements.
  std::string value_text;  // between the first "<S/>" and the "<E/>"
  int32_t value = 0;       // strtol, low 32 bits
  // Definition statements.
  std::string number_text;
  std::string message;
  std::string action;
  uint32_t code = 0;             // offset in force << 16 | number, 16 bits each
  uint16_t cont = 1;             // 0 only for the action "STOP"
  bool loaded = false;           // the loader appends it to its definition list
  bool ahead_of_blocks = false;  // no offset statement stood before it
};

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

// The trimming of the loader: drops at both ends every byte outside 0x21..0x7E.
std::string Trimmed(const std::string& text);

// text in double quotes for a warning, cut to about 60 bytes ("...").
std::string Quoted(const std::string& text);

}  // namespace errdef

#endif  // VQ0300_TOOLS_ERRDEF_DEFINITIONREADER_H
