// SPDX-License-Identifier: Apache-2.0
#include <orvane/decision_tree.h>

#include <thread>

#include "support/csv.h"
#include "support/reference.h"

namespace {

using Values = std::vector<double>;

Data2D* tableOf(const Values& values, std::size_t rows) {
  Data2D* table = api_Data2D_Create(static_cast<uint32_t>(rows), static_cast<uint32_t>(values.size() / rows));
  api_Data2D_SetValue(table, values.data());
  return table;
}

struct Tree {
  ~Tree() { api_FreeHandle(handle); }
  void setData(const Values& x, const Values& labels, const std::vector<uint8_t>& flags, bool isClass) const {
    Data2D* rows = tableOf(x, labels.size());
    Data2D* column = tableOf(labels, labels.size());
    cart_SetData(handle, rows, column, flags.data(), isClass);
    api_FreeHandle(rows);
    api_FreeHandle(column);
  }
  CartTree* handle = cart_Create();
};

TEST(Tree, GrowsAsTheBruteForceTree) {
  for (const std::string& line : readLines("classify/trees.csv")) {
    const Cells cells = cellsOf(line);
    const auto number = [&](std::size_t i) { return std::strtod(cells[i].c_str(), nullptr); };
    std::vector<uint8_t> flags;
    for (const char c : cells[5]) flags.push_back(c == '1');
    const auto count = static_cast<std::size_t>(number(6));
    Values x, labels, expected;
    for (std::size_t i = 7; i < cells.size(); ++i)
      (x.size() < count * flags.size() ? x : labels.size() < count ? labels : expected).push_back(number(i));
    ASSERT_EQ(expected.size(), count) << line;

    const Tree tree;
    tree.setData(x, labels, flags, cells[0] == "1");
    cart_SetLimitCondition(tree.handle, static_cast<int32_t>(number(1)), number(2), number(3),
                           static_cast<uint8_t>(number(4)));
    ASSERT_TRUE(cart_Train(tree.handle));
    for (std::size_t i = 0; i < count; ++i)
      EXPECT_EQ(cart_Predict(tree.handle, &x[i * flags.size()]), expected[i]) << line << "\nrow " << i;
  }
}

TEST(Tree, DefaultsAndLeaves) {
  const Tree tree;
  EXPECT_TRUE(cart_isClass(tree.handle));
  EXPECT_FALSE(cart_Train(tree.handle));
  EXPECT_EQ(cart_Predict(tree.handle, nullptr), 0);
  tree.setData({0, 1, 10, 11}, {0, 0, 1, 1}, {0}, true);
  EXPECT_EQ(cart_GetRealNum(tree.handle), 1);
  ASSERT_TRUE(cart_Train(tree.handle));
  EXPECT_EQ(cart_BaseNode_GetFlag(cart_GetRoot(tree.handle)), ORVANE_CART_LEAF);  // kept.csv: MinSplitScore_good
  const double high = 10;
  EXPECT_EQ(cart_Predict(tree.handle, &high), -1);  // a tie
  cart_SetLimitCondition(tree.handle, 4, 0.5, 0, 6);
  ASSERT_TRUE(cart_Train(tree.handle));
  const CartNode* root = cart_GetRoot(tree.handle);
  EXPECT_EQ(cart_BaseNode_GetCompareReal(root), 5.5);
  EXPECT_EQ(cart_Predict(tree.handle, &high), 1);
  // NaN gives no threshold and goes right; rubbish labels and values bear no harm.
  const double nan = std::nan("");
  EXPECT_EQ(cart_Predict(tree.handle, &nan), 1);
  tree.setData({nan, 1, HUGE_VAL, -HUGE_VAL}, {nan, nan, 1, 0}, {0}, false);
  EXPECT_TRUE(cart_Train(tree.handle));
  tree.setData({nan, 1e300, -1, 300}, {1, 0, 1, 0}, {1}, true);
  EXPECT_TRUE(cart_Train(tree.handle));
}

TEST(Tree, NodesOfTheHost) {
  Tree tree;
  const uint8_t flags[] = {1, 0};
  cart_SetFlag(tree.handle, flags, 2);
  CartNode* root = cart_CreateBaseCARTNode(0);
  CartNode* leaf = cart_CreateBaseCARTNode(1);
  EXPECT_EQ(cart_BaseNode_GetFlag(leaf), ORVANE_CART_LEAF);
  cart_BaseNode_SetCompareClass(root, 3);
  cart_BaseNode_SetRightNode(root, leaf);
  cart_SetRoot(tree.handle, root);
  const double row[] = {3, 0.5};
  EXPECT_EQ(cart_Predict(tree.handle, row), -1);
  cart_BaseNode_setLeftNode(root, root);
  cart_BaseNode_SetCompareClass(root, 4);
  EXPECT_EQ(cart_Predict(tree.handle, row), 0);  // a ring
  cart_BaseNode_SetFlag(root, ORVANE_CART_REAL_SPLIT);
  cart_BaseNode_SetCompareReal(root, 0.5);
  EXPECT_EQ(cart_Predict(tree.handle, row), -1);  // 0.5 > 0.5 does not hold: right
  cart_BaseNode_SetCompareIndex(root, -7);
  EXPECT_EQ(cart_Predict(tree.handle, row), -1);
  api_FreeHandle(leaf);
  EXPECT_EQ(cart_BaseNode_GetRightNode(root), nullptr);
  api_FreeHandle(root);
  EXPECT_EQ(cart_GetRoot(tree.handle), nullptr);
  EXPECT_EQ(cart_Predict(tree.handle, row), 0);
}

TEST(Tree, StopsFromAnotherThread) {
  Values x, labels;
  for (int i = 0; i < 60000; ++i) x.push_back(i * 7919 % 60013), labels.push_back(i % 3 == 0);
  const Tree tree;
  tree.setData(x, Values(labels.begin(), labels.begin() + 6000), std::vector<uint8_t>(10), true);
  cart_SetLimitCondition(tree.handle, 2, 0, 0, 255);
  for (int round = 0; round < 20; ++round) {
    std::thread worker([&] { EXPECT_TRUE(cart_Train(tree.handle)); });
    cart_Stop(tree.handle);
    worker.join();
    EXPECT_NE(cart_GetRoot(tree.handle), nullptr);
    EXPECT_NE(cart_Predict(tree.handle, x.data()), 0);
  }
}

}  // namespace
