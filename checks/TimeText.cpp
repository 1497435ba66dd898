// util_GetTime: the time stamp as text.
#include "vq0300/TimeText.h"

#include <ctime>

void util_GetTime(LCString& timeText) {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = now == static_cast<std::time_t>(-1) ? nullptr : std::localtime(&now);
  // asctime's layout holds only for four-digit years; anything else gets the
  // placeholder rather than a longer or undefined text.
  const bool usable =
      local != nullptr && local->tm_year >= 1000 - 1900 && local->tm_year <= 9999 - 1900;
  timeText = LCString(usable ? std::asctime(local) : "??? ??? ?? ??:??:?? ????\n");
  const int line_end = timeText.ReverseFind('\n');
  if (line_end != -1) timeText.SetAt(line_end, ' ');
  timeText += LCString(" ");
}
