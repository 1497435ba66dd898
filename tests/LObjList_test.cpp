#include <vq0300/LObjList.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

// A caller's own class, to show that derived objects can be held and
// destroyed through LObject*.
class Counted : public LObject {
 public:
  explicit Counted(int* alive) : alive_(alive) { ++*alive_; }
  ~Counted() override { --*alive_; }

 private:
  int* alive_;
};

std::vector<LObject*> Entries(LObjList& list) {
  std::vector<LObject*> out;
  for (int i = 0; i < list.GetCount(); ++i) out.push_back(list.GetAt(i));
  return out;
}

struct Abc {
  LObject a, b, c, x;
};

}  // namespace

TEST(LObjList, DeleteRemovesByPositionAndReturnsTailOnMiss) {
  Abc o;
  LObjList list;
  EXPECT_EQ(list.Delete(0), nullptr);  // empty list

  list.AddTail(&o.a);
  list.AddTail(&o.b);
  list.AddTail(&o.c);
  EXPECT_EQ(list.Delete(5), &o.c);
  EXPECT_EQ(list.Delete(-1), &o.c);
  EXPECT_EQ(Entries(list), (std::vector<LObject*>{&o.a, &o.b, &o.c}));

  EXPECT_EQ(list.Delete(2), &o.c);  // the last position
  EXPECT_EQ(Entries(list), (std::vector<LObject*>{&o.a, &o.b}));
  EXPECT_EQ(list.Delete(1), &o.b);
  EXPECT_EQ(Entries(list), (std::vector<LObject*>{&o.a}));

  // A null entry at the position is a miss: nothing moves, the tail comes back.
  LObjList gap;
  gap.AddTail(&o.a);
  gap.AddTail(nullptr);
  gap.AddTail(&o.c);
  EXPECT_EQ(gap.Delete(1), &o.c);
  EXPECT_EQ(gap.GetCount(), 3);
  // A miss with a null tail yields null.
  LObjList null_tail;
  null_tail.AddTail(&o.a);
  null_tail.AddTail(nullptr);
  EXPECT_EQ(null_tail.Delete(7), nullptr);
}

TEST(LObjList, InsertPlaceRule) {
  Abc o;
  auto make = [&o]() {
    auto* list = new LObjList;
    list->AddTail(&o.a);
    list->AddTail(&o.b);
    return list;
  };
  const std::vector<LObject*> appended{&o.a, &o.b, &o.x};
  for (int i : {2, 9, -1}) {
    LObjList* list = make();
    EXPECT_EQ(list->Insert(i, &o.x), 0);
    EXPECT_EQ(Entries(*list), appended) << "position " << i;
    delete list;
  }
  LObjList* head = make();
  EXPECT_EQ(head->Insert(0, &o.x), 0);
  EXPECT_EQ(Entries(*head), (std::vector<LObject*>{&o.x, &o.a, &o.b}));
  delete head;
  LObjList* middle = make();
  EXPECT_EQ(middle->Insert(1, &o.x), 0);
  EXPECT_EQ(Entries(*middle), (std::vector<LObject*>{&o.a, &o.x, &o.b}));
  delete middle;

  LObjList empty;
  EXPECT_EQ(empty.Insert(7, &o.x), 0);
  EXPECT_EQ(Entries(empty), (std::vector<LObject*>{&o.x}));
  LObjList empty_negative;
  EXPECT_EQ(empty_negative.Insert(-3, &o.x), 0);
  EXPECT_EQ(Entries(empty_negative), (std::vector<LObject*>{&o.x}));
}

TEST(LObjList, SetAtIgnoresBadPositions) {
  Abc o;
  LObjList list;
  list.SetAt(0, &o.x);
  EXPECT_TRUE(list.IsEmpty());
  list.AddTail(&o.a);
  list.AddTail(&o.b);
  list.SetAt(2, &o.x);
  list.SetAt(-1, &o.x);
  EXPECT_EQ(Entries(list), (std::vector<LObject*>{&o.a, &o.b}));
  list.SetAt(1, &o.x);
  EXPECT_EQ(Entries(list), (std::vector<LObject*>{&o.a, &o.x}));
}

TEST(LObjList, NullEntriesAndOutOfRangeReads) {
  Abc o;
  LObjList list;
  // Out-of-range reads answer null rather than read outside the array.
  EXPECT_EQ(list.GetTail(), nullptr);
  EXPECT_EQ(list.RemoveTail(), nullptr);
  EXPECT_EQ(list.GetAt(0), nullptr);
  EXPECT_EQ(list.GetCount(), 0);

  list.AddTail(nullptr);
  EXPECT_EQ(list.GetCount(), 1);
  EXPECT_FALSE(list.IsEmpty());
  EXPECT_EQ(list.GetTail(), nullptr);
  list.AddTail(&o.a);
  list.AddTail(&o.a);  // the same pointer twice is fine
  EXPECT_EQ(list.GetAt(2), &o.a);
  EXPECT_EQ(list.GetAt(3), nullptr);
  EXPECT_EQ(list.GetAt(-1), nullptr);
  const LObjList& view = list;
  EXPECT_EQ(view.GetCount(), 3);
  EXPECT_EQ(view.GetAt(1), &o.a);
  EXPECT_EQ(list.RemoveTail(), &o.a);
  EXPECT_EQ(list.GetCount(), 2);
}

TEST(LObjList, OwnsNoObject) {
  int alive = 0;
  LObject* kept = new Counted(&alive);
  {
    LObjList list;
    list.AddTail(kept);
    list.AddTail(kept);
    list.SetAt(0, nullptr);
    list.Delete(1);
  }
  EXPECT_EQ(alive, 1);  // neither SetAt, Delete nor the destructor destroyed it
  delete kept;          // destroyed through LObject*
  EXPECT_EQ(alive, 0);

  // A list destroyed through LObject* frees its array (checked by the sanitizers).
  LObject* as_object = new LObjList;
  static_cast<LObjList*>(as_object)->AddTail(nullptr);
  delete as_object;
}
