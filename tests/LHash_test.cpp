#include <vq0300/LHash.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Values = std::vector<std::string>;
// The model of a table: rows in creation order, each a key and its values.
using Model = std::vector<std::pair<std::string, Values>>;

// Rows, keys, values, searches by key (the first row with it wins) and the
// flat index against the model; one past every end gives null.
void CheckAgainstModel(const LHash& table, const Model& model) {
  const int rows = static_cast<int>(model.size());
  ASSERT_EQ(table.getKeyCount(), rows);
  Values flat;
  std::map<std::string, int> firsts;  // the row of each key's first appearance
  for (int i = 0; i < rows; ++i) {
    const auto& [key, values] = model[i];
    const LHashElement* row = table.getKey(i);
    ASSERT_EQ(row->getKey(), key);
    ASSERT_EQ(row->getValueCount(), static_cast<int>(values.size()));
    for (std::size_t v = 0; v <= values.size(); ++v)
      ASSERT_STREQ(row->getValue(static_cast<int>(v)),
                   v < values.size() ? values[v].c_str() : nullptr);
    flat.insert(flat.end(), values.begin(), values.end());
    ASSERT_EQ(table.getKey(key.c_str()), table.getKey(firsts.emplace(key, i).first->second));
  }
  ASSERT_FALSE(table.getKey(rows));
  ASSERT_FALSE(table.getKey(-1));
  ASSERT_FALSE(table[-1]);
  ASSERT_EQ(table.getValueCount(), static_cast<int>(flat.size()));
  for (std::size_t i = 0; i <= flat.size(); ++i)
    ASSERT_STREQ(table[static_cast<int>(i)], i < flat.size() ? flat[i].c_str() : nullptr);
}

}  // namespace

TEST(LHash, NullArgumentsCaseAndEmptyValues) {
  LHash table;
  EXPECT_EQ(table.createKey(nullptr), nullptr);  // adds nothing
  EXPECT_EQ(table.getKey(static_cast<const char*>(nullptr)), nullptr);
  table.createKey("a");
  LHashElement& row = *table.createKey("A");           // case matters: a second row
  row.setValue(nullptr);                               // ignored
  row.setValue("");                                    // an empty value is a value, not a miss
  row.removeValue(static_cast<const char*>(nullptr));  // does nothing
  CheckAgainstModel(table, {{"a", {}}, {"A", {""}}});
  EXPECT_STREQ(LHashElement(nullptr).getKey(), "");  // a null key reads as ""
}

TEST(LHash, RandomOperationsAgainstModel) {
  for (const std::uint32_t seed : {11u, 12u, 13u}) {
    std::mt19937 rng(seed);
    LHash table;
    Model model;
    for (int step = 0; step < 3000; ++step) {
      // Texts t0 .. t11 and the empty text, which a cleared row answers to.
      const unsigned what = rng() % 100;
      const std::string t = rng() % 12 == 0 ? std::string() : "t" + std::to_string(rng() % 12);
      if (what < 20 || model.empty()) {  // createKey: the first row with t, or a new one at the end
        auto it = std::find_if(model.begin(), model.end(), [&](auto& r) { return r.first == t; });
        if (it == model.end()) it = model.emplace(it, t, Values{});
        LHashElement* row = table.createKey(t.c_str());
        ASSERT_EQ(row, table.getKey(static_cast<int>(it - model.begin())));
      } else if (what == 99) {
        table.clear();
        model.clear();
      } else {
        const std::size_t i = rng() % model.size();
        LHashElement& row = *table.getKey(static_cast<int>(i));
        Values& values = model[i].second;
        const int p = static_cast<int>(rng() % (values.size() + 2)) - 1;  // -1 .. size
        if (what < 65) {
          row.setValue(t.c_str());
          values.push_back(t);
        } else if (what < 78) {  // every equal value goes
          row.removeValue(t.c_str());
          values.erase(std::remove(values.begin(), values.end(), t), values.end());
        } else if (what < 93) {  // one position, out of range included
          row.removeValue(p);
          if (p >= 0 && p < static_cast<int>(values.size())) values.erase(values.begin() + p);
        } else {  // the row stays in its place with key ""
          row.clear();
          model[i] = {std::string(), {}};
        }
      }
      CheckAgainstModel(table, model);
      ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step;
    }
  }
}
