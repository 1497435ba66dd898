#include <vq0300/LObjList.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

// Lists are written as strings: letter c stands for g_objects[c - 'a'], '-'
// for a null entry and "." for the empty list.
LObject g_objects[26];

LObject* Obj(char name) { return name == '-' ? nullptr : &g_objects[name - 'a']; }

void Fill(LObjList& list, const std::string& names) {
  for (char name : names) {
    if (name != '.') list.AddTail(Obj(name));
  }
}

std::string Names(LObjList& list) {
  std::string out = list.GetCount() == 0 ? "." : "";
  for (int i = 0; i < list.GetCount(); ++i) {
    LObject* entry = list.GetAt(i);
    out += entry ? static_cast<char>('a' + (entry - g_objects)) : '-';
  }
  return out;
}

// A caller's own class, held and destroyed through LObject*.
struct Counted : LObject {
  Counted() { ++alive; }
  ~Counted() override { --alive; }
  static inline int alive = 0;
};

}  // namespace

TEST(LObjList, CallsByPositionAndAtTheTail) {
  // "list call position result list-after". Delete returns the tail on a miss
  // (out of range, or a null entry at i) and changes nothing. Insert puts x at
  // the head for 0 or an empty list, at 1 .. count - 1 as asked, else at the
  // end, and answers 0. SetAt ignores a position outside the list. Reads
  // outside the list, and the tail calls on an empty list, give null.
  for (const char* row :
       {"abc D 0 a bc",  "abc D 1 b ac",  "abc D 2 c ab",  "abc D 5 c abc",  "abc D -1 c abc",
        "a-c D 1 c a-c", "a- D 7 - a-",   ". D 0 - .",     "ab I 0 - xab",   "ab I 1 - axb",
        "ab I 2 - abx",  "ab I 9 - abx",  "ab I -1 - abx", ". I 7 - x",      ". I -3 - x",
        ". I 0 - x",     "ab S 0 - xb",   "ab S 1 - ax",   "ab S 2 - ab",    "ab S -1 - ab",
        ". S 0 - .",     "-aa G 1 a -aa", "-aa G 3 - -aa", "-aa G -1 - -aa", ". G 0 - .",
        "ab T 0 b ab",   "a- T 0 - a-",   ". T 0 - .",     "a-a R 0 a a-",   "a- R 0 - a",
        ". R 0 - ."}) {
    std::istringstream in(row);
    std::string before, after;
    char call = 0, result = 0;
    int i = 0;
    in >> before >> call >> i >> result >> after;
    LObjList list;
    Fill(list, before);
    LObject* got = nullptr;
    if (call == 'D') got = list.Delete(i);
    if (call == 'I' && list.Insert(i, Obj('x')) != 0) got = Obj('z');
    if (call == 'S') list.SetAt(i, Obj('x'));
    if (call == 'G') got = list.GetAt(i);
    if (call == 'T') got = list.GetTail();
    if (call == 'R') got = list.RemoveTail();
    EXPECT_EQ(got, Obj(result)) << row;
    EXPECT_EQ(Names(list), after) << row;
    EXPECT_EQ(list.IsEmpty(), after == ".") << row;
  }
  LObjList list;
  Fill(list, "a-");
  const LObjList& view = list;
  EXPECT_TRUE(view.GetCount() == 2 && view.GetAt(0) == Obj('a') && view.GetAt(2) == nullptr);
}

TEST(LObjList, OwnsNoObject) {
  LObject* kept = new Counted;
  auto* list = new LObjList;
  for (int i = 0; i < 5; ++i) list->AddTail(kept);
  list->SetAt(0, nullptr);
  list->Delete(1);
  list->RemoveTail();
  delete static_cast<LObject*>(list);  // frees its array through LObject*
  EXPECT_EQ(Counted::alive, 1);        // no operation, nor the destructor, destroyed it
  delete kept;
  EXPECT_EQ(Counted::alive, 0);
}
