// Lists, stacks and trees hold LObject pointers and own none of the objects.
#include <vq0300/vq0300.h>

#include <cstdio>

class Job : public LObject {
 public:
  explicit Job(int id) : id(id) {}
  int id;
};

int main() {
  Job a(1), b(2), c(3);

  LObjList list;
  list.AddTail(&a);
  list.AddTail(&c);
  list.Insert(1, &b);  // a, b, c
  const int before = list.GetCount();
  list.Delete(7);  // a miss returns the tail, not null: compare the count
  std::printf("list: %d entries, miss removed %d\n", list.GetCount(), before - list.GetCount());

  LStack stack;
  stack.Push(&a);
  stack.Push(&b);
  const Job* top = static_cast<Job*>(stack.Pop());
  std::printf("stack: popped %d, depth now %d\n", top->id, stack.GetStackElement());

  LTree root;  // the caller owns every node the tree hands out
  LTree* first = root.InsertLast(&a);
  LTree* second = root.InsertLast(&b);
  std::printf("tree: %d children, last is job %d\n", root.GetChildNumber(),
              static_cast<Job*>(root.GetLastChild())->id);
  for (LTree* node : {second, first}) {
    node->Delete();  // detach, then destroy
    delete node;
  }
  return 0;
}
