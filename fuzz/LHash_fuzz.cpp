// Fuzzes LHash and LHashElement: a sequence of key, value and clear
// operations driven by the input, beside a model of rows in creation order,
// each a key with its list of values. Every lookup (by key, by position,
// const and not, the flat operator[]) is compared with the model, and after
// every step so are both counts and every row's key and values. Positions
// are often at the edges: negative, the count, INT_MIN, INT_MAX.
#include <fuzzer/FuzzedDataProvider.h>
#include <vq0300/LHash.h>
#include <vq0300/LHashElement.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"

namespace {

const char* g_op = "";  // the current step, printed when a check fails

[[noreturn]] void Fail(int line, const char* what) { FailInStep("LHash_fuzz", line, g_op, what); }

struct Row {
  std::string key;
  std::vector<std::string> values;
};
using Model = std::vector<Row>;

int Count(size_t n) { return static_cast<int>(n); }

// The first row with key, or -1.
int Find(const Model& model, const std::string& key) {
  for (size_t i = 0; i < model.size(); ++i) {
    if (model[i].key == key) return Count(i);
  }
  return -1;
}

int TotalValues(const Model& model) {
  int total = 0;
  for (const Row& r : model) total += Count(r.values.size());
  return total;
}

const std::string* Flat(const Model& model, int index) {
  if (index < 0) return nullptr;
  for (const Row& r : model) {
    if (index < Count(r.values.size())) return &r.values[index];
    index -= Count(r.values.size());
  }
  return nullptr;
}

bool Same(const char* got, const std::string* want) {
  return want == nullptr ? got == nullptr : got != nullptr && *want == got;
}

// ---- Input --------------------------------------------------------------------------

// A text: mostly short ones over "ab", so that keys and values repeat.
std::string Text(FuzzedDataProvider& in) {
  if (in.ConsumeIntegralInRange(0, 3) == 0) return in.ConsumeRandomLengthString(8).c_str();
  std::string text(in.ConsumeIntegralInRange<size_t>(0, 2), 'a');
  for (char& c : text) c = static_cast<char>('a' + in.ConsumeIntegralInRange(0, 1));
  return text;
}

// A position, often at an edge of 0 .. n - 1.
int Index(FuzzedDataProvider& in, int n) {
  return EdgeOrRange(in, {INT_MIN, INT_MAX, -1, n}, 4, 0, std::max(n, 1) - 1);
}

// ---- Checks ---------------------------------------------------------------------------

void CheckTable(const LHash& hash, const Model& model) {
  CHECK(hash.getKeyCount() == Count(model.size()));
  CHECK(hash.getValueCount() == TotalValues(model));
  for (size_t i = 0; i < model.size(); ++i) {
    const LHashElement* row = hash.getKey(Count(i));
    CHECK(row != nullptr);
    CHECK(row->getKey() != nullptr && model[i].key == row->getKey());
    const int n = Count(model[i].values.size());
    CHECK(row->getValueCount() == n);
    for (int j = 0; j < n; ++j) CHECK(Same(row->getValue(j), &model[i].values[j]));
    CHECK(row->getValue(-1) == nullptr && row->getValue(n) == nullptr);
  }
  CHECK(hash.getKey(-1) == nullptr && hash.getKey(Count(model.size())) == nullptr);
}

void CheckFlat(const LHash& hash, const Model& model, int index) {
  CHECK(Same(hash[index], Flat(model, index)));
}

// ---- Steps ------------------------------------------------------------------------------

void Step(LHash& hash, Model& model, FuzzedDataProvider& in) {
  const LHash& constant = hash;
  const int rows = Count(model.size());
  // Row operations work on a row picked by position, looked up afresh: a
  // pointer from before the last createKey may be stale.
  const int r = rows == 0 ? -1 : in.ConsumeIntegralInRange(0, rows - 1);
  LHashElement* row = r < 0 ? nullptr : hash.getKey(r);
  CHECK(r < 0 || row != nullptr);
  switch (in.ConsumeIntegralInRange(0, 12)) {
    case 0:
    case 1: {
      g_op = "createKey";
      if (in.ConsumeIntegralInRange(0, 15) == 0) {
        CHECK(hash.createKey(nullptr) == nullptr);
        break;
      }
      const std::string key = Text(in);
      int at = Find(model, key);
      if (at < 0) {
        model.push_back({key, {}});
        at = rows;
      }
      CHECK(hash.createKey(key.c_str()) == hash.getKey(at));
      break;
    }
    case 2: {
      g_op = "getKey(text)";
      const std::string key = Text(in);
      const int at = Find(model, key);
      LHashElement* want = at < 0 ? nullptr : hash.getKey(at);
      CHECK(hash.getKey(key.c_str()) == want && constant.getKey(key.c_str()) == want);
      CHECK(hash.getKey(static_cast<const char*>(nullptr)) == nullptr);
      CHECK(constant.getKey(static_cast<const char*>(nullptr)) == nullptr);
      break;
    }
    case 3: {
      g_op = "getKey(index)";
      const int i = Index(in, rows);
      const LHashElement* got = hash.getKey(i);
      CHECK(got == constant.getKey(i));
      CHECK((got != nullptr) == (i >= 0 && i < rows));
      if (got != nullptr) CHECK(model[i].key == got->getKey());
      break;
    }
    case 4:
    case 5: {
      g_op = "setValue";
      if (row == nullptr) break;
      if (in.ConsumeIntegralInRange(0, 15) == 0) {
        row->setValue(nullptr);
        break;
      }
      const std::string value = Text(in);
      row->setValue(value.c_str());
      model[r].values.push_back(value);
      break;
    }
    case 6: {
      g_op = "getValue";
      if (row == nullptr) break;
      const int n = Count(model[r].values.size());
      const int i = Index(in, n);
      CHECK(Same(row->getValue(i), i >= 0 && i < n ? &model[r].values[i] : nullptr));
      break;
    }
    case 7: {
      g_op = "removeValue(text)";
      if (row == nullptr) break;
      std::vector<std::string>& values = model[r].values;
      if (in.ConsumeIntegralInRange(0, 15) == 0) {
        row->removeValue(static_cast<const char*>(nullptr));
        break;
      }
      // Often a value that the row holds.
      const bool held = !values.empty() && in.ConsumeBool();
      const std::string value =
          held ? values[in.ConsumeIntegralInRange<size_t>(0, values.size() - 1)] : Text(in);
      row->removeValue(value.c_str());
      values.erase(std::remove(values.begin(), values.end(), value), values.end());
      break;
    }
    case 8: {
      g_op = "removeValue(index)";
      if (row == nullptr) break;
      std::vector<std::string>& values = model[r].values;
      const int i = Index(in, Count(values.size()));
      row->removeValue(i);
      if (i >= 0 && i < Count(values.size())) values.erase(values.begin() + i);
      break;
    }
    case 9: {
      g_op = "LHashElement::clear";
      if (row == nullptr) break;
      row->clear();
      model[r] = Row{};
      break;
    }
    case 10: {
      g_op = "LHashElement copy";
      if (row == nullptr) break;
      // A copy is independent of its row.
      LHashElement copy = *row;
      copy.setValue("copy");
      copy.removeValue(0);
      CHECK(row->getValueCount() == Count(model[r].values.size()));
      CHECK(model[r].key == copy.getKey());
      break;
    }
    case 11: {
      g_op = "operator[]";
      CheckFlat(hash, model, Index(in, TotalValues(model)));
      break;
    }
    default: {
      g_op = "LHash::clear";
      if (in.ConsumeIntegralInRange(0, 3) != 0) break;  // now and then
      hash.clear();
      model.clear();
      break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  LHash hash;
  Model model;
  g_op = "empty table";
  CheckTable(hash, model);
  CheckFlat(hash, model, 0);
  for (int steps = 0; steps < 256 && in.remaining_bytes() > 0; ++steps) {
    Step(hash, model, in);
    CheckTable(hash, model);
  }
  g_op = "end of input";
  const int total = TotalValues(model);
  for (int i = -1; i <= total; ++i) CheckFlat(hash, model, i);
  CheckFlat(hash, model, INT_MIN);
  CheckFlat(hash, model, INT_MAX);
  return 0;
}
