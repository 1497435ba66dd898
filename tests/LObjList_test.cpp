#include <vq0300/LObjList.h>
#include <vq0300/LStack.h>

#include "ModelRun.h"

namespace {

LObject g_objects[3];

// The list and a stack, each beside a std::vector: list operations at
// positions drawn with the edges, pushes and pops, null entries among them;
// after each one the counts, the tail and every entry through both GetAt forms.
void RunListOps(model::OpInput& in) {
  LObjList list;
  LStack stack;
  std::vector<LObject*> want, stacked;
  while (!in.Done()) {
    const int op = in.Int(0, 7), n = static_cast<int>(want.size()), i = in.Index(n),
              pick = in.Int(0, 3);
    const bool inside = i >= 0 && i < n;
    LObject *const entry = pick < 3 ? &g_objects[pick] : nullptr, *const tail =
                                                                      n ? want.back() : nullptr;
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
    } else if (op <= 5) {
      list.AddTail(entry);
      want.push_back(entry);
    } else if (op == 6) {
      stack.Push(entry);
      stacked.push_back(entry);
    } else {  // an empty stack pops null
      MODEL_CHECK(stack.Pop() == (stacked.empty() ? nullptr : stacked.back()));
      if (!stacked.empty()) stacked.pop_back();
    }
    const LObjList& view = list;
    const int count = static_cast<int>(want.size());
    MODEL_CHECK(view.GetCount() == count);
    MODEL_CHECK(list.GetCount() == count);
    MODEL_CHECK(list.IsEmpty() == want.empty());
    MODEL_CHECK(list.GetTail() == (count ? want.back() : nullptr));
    MODEL_CHECK(list.GetAt(i) == (i >= 0 && i < count ? want[i] : nullptr));
    for (int at = 0; at < count; ++at) MODEL_CHECK(view.GetAt(at) == want[at]);
    MODEL_CHECK(stack.GetStackElement() == static_cast<int>(stacked.size()));
    MODEL_CHECK(stack.IsEmpty() == stacked.empty());
  }
}

}  // namespace

TEST(LObjList, ListAndStackAgreeWithVectors) { model::RunSeeds(RunListOps, 40, 800); }
