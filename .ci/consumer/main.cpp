// A client program built against the installed package only.
#include <vq0300/vq0300.h>

#include <cstdio>

int main() {
  LObject a;
  LObjList list;
  list.AddTail(&a);
  std::printf("consumer: %d entry, tail %s\n", list.GetCount(),
              list.GetTail() == &a ? "ok" : "wrong");
  return list.GetCount() == 1 && list.GetTail() == &a ? 0 : 1;
}
