#include <vq0300/LObjList.h>
#include <vq0300/LStack.h>

#include "ModelRun.h"

namespace {

LObject g_objects[3];
LObject* Entry(int pick) { return pick < 3 ? &g_objects[pick] : nullptr; }

// The list beside a std::vector: each operation at a position drawn with the
// edges, then the count, the tail and every entry through both GetAt forms.
void RunListOps(model::OpInput& in) {
  LObjList list;
  std::vector<LObject*> want;
  while (!in.Done()) {
    const int op = in.Int(0, 5), n = static_cast<int>(want.size()), i = in.Index(n);
    const bool inside = i >= 0 && i < n;
    LObject *const entry = Entry(in.Int(0, 3)), *const tail = n ? want.back() : nullptr;
    if (op == 0) {  // inside the list at i, anywhere else at the end
      MODEL_CHECK(list.Insert(i, entry) == 0);
      want.insert(want.begin() + (inside ? i : n), entry);
    } else if (op == 1) {
      list.SetAt(i, entry);
      if (inside) want[i] = entry;
    } else if (op == 2) {  // a miss, outside or at a null entry, answers the tail
      const bool hit = inside && want[i] != nullptr;
      MODEL_CHECK(list.Delete(i) == (hit ? want[i] : tail));
      if (hit) want.erase(want.begin() + i);
    } else if (op == 3) {
      MODEL_CHECK(list.RemoveTail() == tail);
      if (n > 0) want.pop_back();
    } else {
      list.AddTail(entry);
      want.push_back(entry);
    }
    const LObjList& view = list;
    const int count = static_cast<int>(want.size());
    MODEL_CHECK(view.GetCount() == count);
    MODEL_CHECK(list.GetCount() == count);
    MODEL_CHECK(list.IsEmpty() == want.empty());
    MODEL_CHECK(list.GetTail() == (count ? want.back() : nullptr));
    MODEL_CHECK(list.GetAt(i) == (i >= 0 && i < count ? want[i] : nullptr));
    for (int at = 0; at < count; ++at) MODEL_CHECK(view.GetAt(at) == want[at]);
  }
}

// The stack beside a std::vector: as many pops as pushes, null pushed too,
// an empty stack's pop answering null; then the depth.
void RunStackOps(model::OpInput& in) {
  LStack stack;
  std::vector<LObject*> want;
  while (!in.Done()) {
    const int pick = in.Int(0, 7);
    if (pick < 4) {
      want.push_back(Entry(pick));
      stack.Push(want.back());
    } else {
      MODEL_CHECK(stack.Pop() == (want.empty() ? nullptr : want.back()));
      if (!want.empty()) want.pop_back();
    }
    MODEL_CHECK(stack.GetStackElement() == static_cast<int>(want.size()));
    MODEL_CHECK(stack.IsEmpty() == want.empty());
  }
}

}  // namespace

TEST(LStack, EveryOperationAgreesWithAVector) { model::RunSeeds(RunStackOps, 20, 400); }

TEST(LObjList, EveryOperationAgreesWithAVector) { model::RunSeeds(RunListOps, 40, 600); }

// One row a miss: the list ('-' a null entry), a position, then what GetAt
// and Delete answer there ('-' for null): reads outside give null, a Delete
// that takes nothing out gives the tail.
TEST(LObjList, MissesAnswerNullOrTheTail) {
  const std::tuple<const char*, int, const char*> rows[] = {
      {"abc", 5, "-c"}, {"abc", -1, "-c"}, {"a-c", 1, "-c"}, {"ab-", 2, "--"}, {"", 0, "--"}};
  for (const auto& [items, i, answers] : rows) {
    LObjList list;
    for (const char* c = items; *c != '\0'; ++c)
      list.AddTail(*c == '-' ? nullptr : &g_objects[*c - 'a']);
    std::string got;
    for (LObject* p : {list.GetAt(i), list.Delete(i)})
      got += p ? static_cast<char>('a' + (p - g_objects)) : '-';
    EXPECT_EQ(got, answers) << items << " at " << i;
    EXPECT_EQ(list.GetCount(), static_cast<int>(std::string(items).size()));
  }
}
