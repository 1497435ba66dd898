#include <vq0300/LHash.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Values = std::vector<std::string>;
// The model of a table: rows in creation order, each a key and its values.
using Model = std::vector<std::pair<std::string, Values>>;

Values ValuesOf(const LHashElement& row) {
  Values out;
  for (int i = 0; i < row.getValueCount(); ++i) out.push_back(row.getValue(i));
  return out;
}

// Rows, keys, values, searches by key (the first row with it wins) and the
// flat index against the model.
void CheckAgainstModel(const LHash& table, const Model& model) {
  ASSERT_EQ(table.getKeyCount(), static_cast<int>(model.size()));
  Values flat;
  for (std::size_t i = 0; i < model.size(); ++i) {
    const LHashElement* row = table.getKey(static_cast<int>(i));
    ASSERT_EQ(row->getKey(), model[i].first);
    ASSERT_EQ(ValuesOf(*row), model[i].second);
    flat.insert(flat.end(), model[i].second.begin(), model[i].second.end());
    const auto first = std::find_if(model.begin(), model.end(),
                                    [&](auto& r) { return r.first == model[i].first; });
    ASSERT_EQ(table.getKey(model[i].first.c_str()),
              table.getKey(static_cast<int>(first - model.begin())));
  }
  ASSERT_EQ(table.getKey(static_cast<int>(model.size())), nullptr);
  ASSERT_EQ(table.getValueCount(), static_cast<int>(flat.size()));
  for (std::size_t i = 0; i < flat.size(); ++i) ASSERT_EQ(table[static_cast<int>(i)], flat[i]);
  ASSERT_EQ(table[static_cast<int>(flat.size())], nullptr);
  ASSERT_EQ(table[-1], nullptr);
}

}  // namespace

TEST(LHash, EdgeCasesAndNullArguments) {
  LHash table;
  CheckAgainstModel(table, {});  // empty: null everywhere, counts 0
  EXPECT_EQ(table.getKey(static_cast<const char*>(nullptr)), nullptr);
  EXPECT_EQ(table.createKey(nullptr), nullptr);  // adds nothing
  EXPECT_EQ(table.getKeyCount(), 0);

  // a {1, 2}, b {}, c {3}: the flat index passes over b.
  table.createKey("a")->setValue("1");
  table.createKey("b");
  table.createKey("c")->setValue("3");
  table.createKey("a")->setValue("2");  // the same row again
  table.createKey("A");                 // case matters
  CheckAgainstModel(table, {{"a", {"1", "2"}}, {"b", {}}, {"c", {"3"}}, {"A", {}}});

  LHashElement& row = *table.getKey("b");
  row.setValue(nullptr);  // ignored
  row.setValue("");       // an empty value is a value, not a miss
  EXPECT_STREQ(row.getValue(0), "");
  row.removeValue(static_cast<const char*>(nullptr));  // does nothing
  EXPECT_EQ(row.getValueCount(), 1);
  EXPECT_EQ(row.getValue(-1), nullptr);
  EXPECT_STREQ(LHashElement(nullptr).getKey(), "");  // a null key reads as ""

  // x, y, x: by text x leaves y; by position 0 leaves y, x; 3 and -1 nothing.
  LHashElement values("v");
  for (const char* v : {"x", "y", "x"}) values.setValue(v);
  LHashElement by_text = values, by_position = values;  // deep copies
  by_text.removeValue("x");
  by_position.removeValue(3);
  by_position.removeValue(-1);
  by_position.removeValue(0);
  EXPECT_EQ(ValuesOf(by_text), Values{"y"});
  EXPECT_EQ(ValuesOf(by_position), (Values{"y", "x"}));
  EXPECT_EQ(ValuesOf(values), (Values{"x", "y", "x"}));

  // A cleared row keeps its place and answers to "", also for createKey.
  table.getKey("a")->clear();
  EXPECT_EQ(table.createKey(""), table.getKey(0));
  CheckAgainstModel(table, {{"", {}}, {"b", {""}}, {"c", {"3"}}, {"A", {}}});
  table.clear();
  LHashElement* fresh = table.createKey("new");
  EXPECT_EQ(fresh, table.getKey(0));
}

TEST(LHash, RandomOperationsAgainstModel) {
  for (const std::uint32_t seed : {11u, 12u, 13u}) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> op(0, 99), text(0, 11);
    LHash table;
    Model model;
    for (int step = 0; step < 3000; ++step) {
      const int what = op(rng);
      const std::string t = text(rng) == 0 ? std::string() : "t" + std::to_string(text(rng));
      if (what < 20 || model.empty()) {
        auto it = std::find_if(model.begin(), model.end(), [&](auto& r) { return r.first == t; });
        const int at = static_cast<int>(it - model.begin());
        if (it == model.end()) model.emplace_back(t, Values{});
        LHashElement* row = table.createKey(t.c_str());
        ASSERT_EQ(row, table.getKey(at)) << t;
      } else {
        const std::size_t i = std::uniform_int_distribution<std::size_t>(0, model.size() - 1)(rng);
        LHashElement* row = table.getKey(static_cast<int>(i));
        Values& values = model[i].second;
        const int p = std::uniform_int_distribution<int>(-1, static_cast<int>(values.size()))(rng);
        if (what < 65) {
          row->setValue(t.c_str());
          values.push_back(t);
        } else if (what < 78) {
          row->removeValue(t.c_str());
          values.erase(std::remove(values.begin(), values.end(), t), values.end());
        } else if (what < 93) {
          row->removeValue(p);
          if (p >= 0 && p < static_cast<int>(values.size())) values.erase(values.begin() + p);
        } else if (what < 99) {
          row->clear();
          model[i] = {std::string(), {}};
        } else {
          table.clear();
          model.clear();
        }
      }
      CheckAgainstModel(table, model);
      ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step;
    }
  }
}
