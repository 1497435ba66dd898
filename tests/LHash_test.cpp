#include <vq0300/LHash.h>
#include <vq0300/LHashElement.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> Values(const LHashElement& row) {
  std::vector<std::string> out;
  for (int i = 0; i < row.getValueCount(); ++i) out.push_back(row.getValue(i));
  return out;
}

// The model of a table: rows in creation order, each a key and its values.
using Model = std::vector<std::pair<std::string, std::vector<std::string>>>;

void CheckAgainstModel(const LHash& table, const Model& model) {
  ASSERT_EQ(table.getKeyCount(), static_cast<int>(model.size()));
  std::vector<std::string> flat;
  for (std::size_t i = 0; i < model.size(); ++i) {
    const LHashElement* row = table.getKey(static_cast<int>(i));
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->getKey(), model[i].first);
    EXPECT_EQ(Values(*row), model[i].second);
    flat.insert(flat.end(), model[i].second.begin(), model[i].second.end());
    // A search finds the first row with the key (cleared rows share "").
    const auto first = std::find_if(model.begin(), model.end(),
                                    [&](const auto& r) { return r.first == model[i].first; });
    EXPECT_EQ(table.getKey(model[i].first.c_str()),
              table.getKey(static_cast<int>(first - model.begin())));
  }
  EXPECT_EQ(table.getKey(static_cast<int>(model.size())), nullptr);
  ASSERT_EQ(table.getValueCount(), static_cast<int>(flat.size()));
  for (std::size_t i = 0; i < flat.size(); ++i) {
    ASSERT_NE(table[static_cast<int>(i)], nullptr);
    EXPECT_EQ(table[static_cast<int>(i)], flat[i]);
  }
  EXPECT_EQ(table[static_cast<int>(flat.size())], nullptr);
  EXPECT_EQ(table[-1], nullptr);
}

}  // namespace

TEST(LHash, EmptyTableAnswersNull) {
  const LHash table;
  EXPECT_EQ(table.getKeyCount(), 0);
  EXPECT_EQ(table.getValueCount(), 0);
  EXPECT_EQ(table.getKey("a"), nullptr);
  EXPECT_EQ(table.getKey(""), nullptr);
  EXPECT_EQ(table.getKey(static_cast<const char*>(nullptr)), nullptr);
  EXPECT_EQ(table.getKey(0), nullptr);
  EXPECT_EQ(table.getKey(-1), nullptr);
  EXPECT_EQ(table[0], nullptr);
  EXPECT_EQ(table[-1], nullptr);
}

TEST(LHash, CreateKeyFindsOrAppends) {
  LHash table;
  LHashElement* row = table.createKey("k");
  ASSERT_NE(row, nullptr);
  row->setValue("v1");
  EXPECT_EQ(table.createKey("k"), row);  // the same row, values untouched
  EXPECT_EQ(table.getKeyCount(), 1);
  EXPECT_EQ(Values(*table.getKey("k")), std::vector<std::string>{"v1"});

  // Case matters; the empty text is a key like any other.
  table.createKey("K");
  table.createKey("");
  EXPECT_EQ(table.getKeyCount(), 3);
  EXPECT_STREQ(table.getKey(1)->getKey(), "K");
  EXPECT_STREQ(table.getKey("")->getKey(), "");
  EXPECT_EQ(table.getKey(3), nullptr);
  EXPECT_EQ(table.getKey(-1), nullptr);

  // A null key adds nothing.
  EXPECT_EQ(table.createKey(nullptr), nullptr);
  EXPECT_EQ(table.getKeyCount(), 3);

  // The key is a private copy.
  std::string buffer = "temp";
  table.createKey(buffer.c_str());
  buffer = "XXXX";
  EXPECT_NE(table.getKey("temp"), nullptr);

  // After clear, positions start again at 0.
  table.clear();
  EXPECT_EQ(table.getKeyCount(), 0);
  EXPECT_EQ(table.getKey("k"), nullptr);
  table.createKey("new");
  EXPECT_STREQ(table.getKey(0)->getKey(), "new");
}

TEST(LHash, FlatIndexSkipsEmptyRows) {
  LHash table;
  table.createKey("a")->setValue("1");
  table.getKey("a")->setValue("2");
  table.createKey("b");
  table.createKey("c")->setValue("3");
  EXPECT_EQ(table.getValueCount(), 3);
  EXPECT_STREQ(table[0], "1");
  EXPECT_STREQ(table[1], "2");
  EXPECT_STREQ(table[2], "3");
  EXPECT_EQ(table[3], nullptr);
  EXPECT_EQ(table[-1], nullptr);
}

TEST(LHashElement, ValuesKeepOrderAndRepeats) {
  LHashElement row("key");
  EXPECT_STREQ(row.getKey(), "key");
  row.setValue("x");
  row.setValue(nullptr);  // ignored
  row.setValue("");
  row.setValue("x");
  EXPECT_EQ(Values(row), (std::vector<std::string>{"x", "", "x"}));
  ASSERT_NE(row.getValue(1), nullptr);  // an empty value is not a miss
  EXPECT_STREQ(row.getValue(1), "");
  EXPECT_EQ(row.getValue(3), nullptr);
  EXPECT_EQ(row.getValue(-1), nullptr);

  // A null key gives a row with the empty key.
  const LHashElement unnamed(nullptr);
  EXPECT_STREQ(unnamed.getKey(), "");
}

TEST(LHashElement, RemovalsByTextAndPosition) {
  LHashElement row("r");
  row.removeValue("x");  // no values: nothing happens
  EXPECT_EQ(row.getValueCount(), 0);

  for (const char* v : {"x", "y", "x"}) row.setValue(v);
  LHashElement by_text = row;
  by_text.removeValue("x");
  EXPECT_EQ(Values(by_text), std::vector<std::string>{"y"});
  by_text.removeValue("X");  // case-sensitive: no match
  by_text.removeValue(static_cast<const char*>(nullptr));  // does nothing
  EXPECT_EQ(Values(by_text), std::vector<std::string>{"y"});

  LHashElement by_position = row;
  by_position.removeValue(3);
  by_position.removeValue(-1);
  EXPECT_EQ(Values(by_position), (std::vector<std::string>{"x", "y", "x"}));
  by_position.removeValue(0);
  EXPECT_EQ(Values(by_position), (std::vector<std::string>{"y", "x"}));

  EXPECT_EQ(Values(row), (std::vector<std::string>{"x", "y", "x"}));  // copies are deep
}

TEST(LHashElement, ClearedRowStaysInItsTable) {
  LHash table;
  table.createKey("a")->setValue("1");
  table.createKey("b")->setValue("2");
  table.getKey("a")->clear();
  EXPECT_EQ(table.getKeyCount(), 2);
  EXPECT_EQ(table.getKey("a"), nullptr);
  EXPECT_EQ(table.getKey(""), table.getKey(0));
  EXPECT_EQ(table.createKey(""), table.getKey(0));  // found, not added
  EXPECT_EQ(table.getValueCount(), 1);
  EXPECT_STREQ(table[0], "2");
}

TEST(LHash, RandomOperationsAgainstModel) {
  for (const std::uint32_t seed : {11u, 12u, 13u}) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> op(0, 99);
    std::uniform_int_distribution<int> text(0, 11);
    auto random_text = [&] { return text(rng) == 0 ? std::string() : "t" + std::to_string(text(rng)); };
    LHash table;
    Model model;
    for (int step = 0; step < 3000; ++step) {
      const int what = op(rng);
      const std::string t = random_text();
      if (what < 20) {  // createKey
        auto it = std::find_if(model.begin(), model.end(), [&](const auto& r) { return r.first == t; });
        LHashElement* row = table.createKey(t.c_str());
        if (it == model.end()) {
          model.emplace_back(t, std::vector<std::string>{});
          EXPECT_EQ(row, table.getKey(static_cast<int>(model.size()) - 1));
        } else {
          EXPECT_EQ(row, table.getKey(static_cast<int>(it - model.begin())));
        }
      } else if (!model.empty()) {
        std::uniform_int_distribution<std::size_t> pick(0, model.size() - 1);
        const std::size_t i = pick(rng);
        LHashElement* row = table.getKey(static_cast<int>(i));
        std::vector<std::string>& values = model[i].second;
        if (what < 65) {
          row->setValue(t.c_str());
          values.push_back(t);
        } else if (what < 78) {
          row->removeValue(t.c_str());
          values.erase(std::remove(values.begin(), values.end(), t), values.end());
        } else if (what < 93) {
          std::uniform_int_distribution<int> at(-1, static_cast<int>(values.size()));
          const int p = at(rng);
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
      if (HasFailure()) FAIL() << "seed " << seed << ", step " << step;
    }
  }
}
