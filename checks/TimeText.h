/// @file
/// The current local time as text, for time stamps.
#ifndef VQ0300_TIMETEXT_H
#define VQ0300_TIMETEXT_H

#include "vq0300/LCString.h"
#include "vq0300/vq0300_export.h"

/// Replaces timeText with the current local time in the layout of asctime
/// without its line end, followed by two blanks: 26 characters, e.g.
/// "Mon Nov 23 01:15:49 2026  ". Goes through the platform's localtime and
/// asctime, whose static storage is shared by every caller in the process.
/// If the clock cannot be read or broken down, the 24 characters are
/// "??? ??? ?? ??:??:?? ????" (the length stays 26).
VQ0300_API void util_GetTime(LCString& timeText);

#endif  // VQ0300_TIMETEXT_H
