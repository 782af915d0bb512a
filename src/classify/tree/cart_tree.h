// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <span>

#include "classify/tree/cart_node.h"
#include "classify/tree/samples.h"
#include "frame/data2d.h"

namespace NetWork {

/// A binary classification or regression tree (Breiman, Friedman, Olshen, Stone 1984) over real and class features.
class CartTree final : public BaseData {
 public:
  void setData(const Data2D_c& rows, const Data2D_c& labels, const uint8_t* flagBytes, bool labelsAreClasses);
  bool train();
  double predict(const double* x) const;

  bool isClass = true;
  int32_t realNum = 0, classNum = 0;
  std::atomic<bool> stop{false};
  std::weak_ptr<CartNode> root;
  uint8_t maxDepth = 6;
  int32_t minCount = 4;
  double minValueGap = 0.5;
  double minSplitScore = 0.16;
  std::vector<bool> flags;  ///< by column: set for a class feature

 private:
  Samples samples;
  std::vector<std::shared_ptr<CartNode>> grown;
};

}  // namespace NetWork
