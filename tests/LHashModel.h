// LHash beside a model of its rows, each a key and its values in creation
// order: row and value operations read from an OpInput; after each one every
// row, every lookup and the flat index of all values are compared.
#pragma once

#include <vq0300/LHash.h>

#include <algorithm>
#include <utility>

#include "ModelRun.h"

namespace hashmodel {

using Values = std::vector<std::string>;
using Rows = std::vector<std::pair<std::string, Values>>;

// The first row with key, or the row count.
inline int Find(const Rows& rows, const std::string& key) {
  int i = 0;
  while (i < static_cast<int>(rows.size()) && rows[i].first != key) ++i;
  return i;
}

inline void Check(const LHash& table, const Rows& rows) {
  const int count = static_cast<int>(rows.size());
  MODEL_CHECK(table.getKeyCount() == count);
  MODEL_CHECK(table.getKey(-1) == nullptr);
  MODEL_CHECK(table.getKey(count) == nullptr);
  Values flat;
  for (int i = 0; i < count; ++i) {
    const LHashElement* row = table.getKey(i);
    const auto& [key, values] = rows[i];
    const int size = static_cast<int>(values.size());
    MODEL_CHECK(key == row->getKey());
    MODEL_CHECK(table.getKey(key.c_str()) == table.getKey(Find(rows, key)));
    MODEL_CHECK(row->getValueCount() == size);
    for (int v = 0; v < size; ++v) MODEL_CHECK(values[v] == row->getValue(v));
    MODEL_CHECK(row->getValue(size) == nullptr);
    flat.insert(flat.end(), values.begin(), values.end());
  }
  const int total = static_cast<int>(flat.size());
  MODEL_CHECK(table.getValueCount() == total);
  for (int i = 0; i < total; ++i) MODEL_CHECK(flat[i] == table[i]);
  MODEL_CHECK(table[total] == nullptr);
  MODEL_CHECK(table[-1] == nullptr);
}

inline void RunLHashOps(model::OpInput& in) {
  LHash table;
  Rows rows;
  while (!in.Done()) {
    const int op = in.Int(0, 15), count = static_cast<int>(rows.size());
    const std::string text = in.Text(2, "ab");
    const char* arg = in.Int(0, 15) == 0 ? nullptr : text.c_str();  // null changes nothing
    const int r = count == 0 ? 0 : in.Int(0, count - 1);
    LHashElement* row = table.getKey(r);
    Values* values = count == 0 ? nullptr : &rows[r].second;
    const int at = values ? in.Index(static_cast<int>(values->size())) : 0;
    model::Step() = "op " + std::to_string(op) + " row " + std::to_string(r) + " '" + text + "'";
    if (op <= 3) {  // an existing row comes back as it is, a new one goes last
      if (arg != nullptr && Find(rows, text) == count) rows.emplace_back(text, Values{});
      MODEL_CHECK(table.createKey(arg) == (arg ? table.getKey(Find(rows, text)) : nullptr));
    } else if (op == 15) {
      table.clear();
      rows.clear();
    } else if (values == nullptr) {
      continue;  // no row to work on
    } else if (op <= 7) {
      row->setValue(arg);
      if (arg != nullptr) values->push_back(text);
    } else if (op <= 9) {  // every equal value goes
      row->removeValue(arg);
      if (arg) values->erase(std::remove(values->begin(), values->end(), text), values->end());
    } else if (op <= 12) {
      row->removeValue(at);
      if (at >= 0 && at < static_cast<int>(values->size())) values->erase(values->begin() + at);
    } else {  // the row keeps its place, with the key ""
      row->clear();
      rows[r] = {};
    }
    Check(table, rows);
  }
}

}  // namespace hashmodel
