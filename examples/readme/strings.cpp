// LString works on the caller's buffers; LCString owns its text.
#include <vq0300/vq0300.h>

#include <cstdio>

int main() {
  LString ls;
  char line[] = "  key = value\r\n";
  ls.TrimLeft(line);
  ls.TrimRight(line);                 // "key = value"
  const int eq = ls.Find(line, '=');  // 4
  char key[sizeof line], value[sizeof line];
  ls.Left(key, line, eq);  // "key "
  ls.TrimRight(key);
  ls.Mid(value, line, eq + 1, 2147483647);  // " value": a huge count takes the rest
  ls.TrimLeft(value);
  std::printf("[%s] = [%s]\n", key, value);

  LCString name(value);
  name.MakeUpper();
  LCString joined = LCString(key) + LCString(": ") + name;
  std::printf("%s (%d characters), last 'E' at %d\n", joined.c_str(), joined.GetLength(),
              joined.ReverseFind('E'));

  // A pre-sized string filled in pieces, then cut to its text.
  LCString buffer(16);
  buffer.AddString(3, "abc");
  buffer.AddString(3, "def");
  buffer.TrimRight();  // the NUL tail counts as white space
  std::printf("%s %d\n", LTEXT(buffer), buffer.GetLength());
  return 0;
}
