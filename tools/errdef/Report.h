// Report: the text that vq0300-errdef writes, through an LMsgOutput.
//
// LMsgOutput takes every text as a format ("%%" prints one "%"), so text that
// comes from the user (paths, messages, statements) goes out through Say,
// which doubles each "%" and shows control bytes as \xHH.
#ifndef VQ0300_TOOLS_ERRDEF_REPORT_H
#define VQ0300_TOOLS_ERRDEF_REPORT_H

#include <string>

#include <vq0300/LMsgOutput.h>

#include "DefinitionCheck.h"

namespace errdef {

// Writes text as it stands to the console stream that out's options select.
void Say(LMsgOutput& out, const std::string& text);

// The usage text.
void PrintUsage(LMsgOutput& out);

// Prints the result of a check of path, as the user typed it: the table of
// loaded elements and the warnings, or the one line of a failed load.
// Returns the exit status: 0 loaded without warnings, 1 with warnings,
// 2 the load failed.
int PrintReport(LMsgOutput& out, const std::string& path, int selector, const CheckResult& check);

}  // namespace errdef

#endif  // VQ0300_TOOLS_ERRDEF_REPORT_H
