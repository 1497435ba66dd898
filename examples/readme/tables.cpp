// LHash: text keys to lists of values. RBTree: an intrusive red-black tree.
#include <vq0300/vq0300.h>

#include <cstdio>

int main() {
  // A key holds any number of values; rows stay in creation order.
  LHash table;
  table.createKey("colour")->setValue("red");
  table.createKey("colour")->setValue("blue");  // finds the same row
  table.createKey("size")->setValue("large");
  std::printf("%d keys, %d values:", table.getKeyCount(), table.getValueCount());
  for (int i = 0; i < table.getValueCount(); ++i) std::printf(" %s", table[i]);
  std::printf("\n");

  // The caller owns the nodes and their key buffers; the tree only links them.
  struct Entry {
    RBTreeNode node;
    char key[16];  // room for any key, since Delete may move one in
    int value;
  };
  Entry entries[] = {{{}, "pear", 3}, {{}, "apple", 1}, {{}, "fig", 2}};
  RBTree tree{};
  for (Entry& e : entries) {
    e.node.key = e.key;
    e.node.data = &e.value;
    tree.Insert(&tree, &e.node);
  }
  for (RBTreeNode* n = tree.Minimum(tree.root); n != nullptr; n = tree.Succesor(n)) {
    std::printf("%s = %d\n", n->key, *static_cast<int*>(n->data));
  }

  // "fig" has two children: the "pear" node leaves the tree and the "fig"
  // node takes over its key and data. Release the node that Delete returns.
  char wanted[] = "fig";
  RBTreeNode* gone = tree.Delete(&tree, tree.Search(tree.root, wanted));
  std::printf("node that left holds %s; root now holds %s\n", gone->key, tree.root->key);
  return 0;
}
