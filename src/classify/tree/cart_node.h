// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "frame/base_data.h"

namespace NetWork {

enum class SplitKind : uint8_t { leaf = 0, byClass = 1, byReal = 2 };

/// A node of a classification or regression tree. Links do not own: a tree owns the nodes that it has grown, the
/// registry those that a host has made, and a link to a node that is gone is as good as none. So nothing is freed twice
/// and rings of nodes do not leak.
class CartNode final : public BaseData, public std::enable_shared_from_this<CartNode> {
 public:
  SplitKind splitKind = SplitKind::leaf;
  bool leafClass = false;
  double value = 0;  ///< of a leaf, for real labels
  int32_t compareIndex = 0;
  uint8_t compareClass = 0;
  double compareReal = 0;
  std::weak_ptr<CartNode> left, right;
};

}  // namespace NetWork
