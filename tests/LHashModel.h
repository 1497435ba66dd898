// LHash beside a model of its rows, each a key and its values in creation
// order: row and value operations read from an OpInput; after each one every
// row, every lookup and the flat index of all values are compared.
#pragma once

#include <vq0300/LHash.h>

#include <algorithm>
#include <utility>

#include "ModelRun.h"

namespace hashmodel {

inline void RunLHashOps(model::OpInput& in) {
  LHash table;
  std::vector<std::pair<std::string, std::vector<std::string>>> rows;
  while (!in.Done()) {
    const int count = static_cast<int>(rows.size()), op = in.Int(0, count == 0 ? 3 : 15);
    const int r = in.Int(0, std::max(count - 1, 0));
    const std::string text = in.Text(2, "ab");
    const char* arg = in.Int(0, 15) == 0 ? nullptr : text.c_str();  // null changes nothing
    LHashElement* row = table.getKey(r);
    if (op <= 3) {    // an existing row comes back as it is, a new one goes last
      int found = 0;  // the first row with the key, or the new one
      while (found < count && rows[found].first != text) ++found;
      if (arg != nullptr && found == count) rows.push_back({text, {}});
      MODEL_CHECK(table.createKey(arg) == (arg ? table.getKey(found) : nullptr));
    } else if (op == 15) {
      table.clear();
      rows.clear();
    } else if (auto& values = rows[r].second; op <= 7) {
      row->setValue(arg);
      if (arg != nullptr) values.push_back(text);
    } else if (op <= 9) {  // every equal value goes
      row->removeValue(arg);
      if (arg) values.erase(std::remove(values.begin(), values.end(), text), values.end());
    } else if (op <= 12) {
      const int at = in.Index(static_cast<int>(values.size()));
      row->removeValue(at);
      if (at >= 0 && at < static_cast<int>(values.size())) values.erase(values.begin() + at);
    } else {  // the row keeps its place, with the key ""
      row->clear();
      rows[r] = {};
    }
    // Every row, every value by row and by its flat index, and the counts.
    const int keys = static_cast<int>(rows.size());
    MODEL_CHECK(table.getKeyCount() == keys);
    MODEL_CHECK(table.getKey(-1) == nullptr);
    MODEL_CHECK(table.getKey(keys) == nullptr);
    int total = 0;
    for (int i = 0; i < keys; ++i) {
      const auto& [key, values] = rows[i];
      const int size = static_cast<int>(values.size());
      MODEL_CHECK(key == table.getKey(i)->getKey());
      MODEL_CHECK(table.getKey(i)->getValueCount() == size);
      for (int v = 0; v < size; ++v, ++total) {
        MODEL_CHECK(values[v] == table.getKey(i)->getValue(v));
        MODEL_CHECK(values[v] == table[total]);
      }
      MODEL_CHECK(table.getKey(i)->getValue(size) == nullptr);
    }
    MODEL_CHECK(table.getValueCount() == total);
    MODEL_CHECK(table[total] == nullptr);
    MODEL_CHECK(table[-1] == nullptr);
  }
}

}  // namespace hashmodel
