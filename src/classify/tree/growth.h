// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>

#include "classify/tree/cart_tree.h"
#include "classify/tree/split.h"

namespace NetWork {

/// Grows a tree breadth first. The samples of a node are one stretch of each array of sample numbers (in the order of
/// the samples, and by value for each real feature), which a split parts in place: no feature is sorted twice.
class Growth {
 public:
  Growth(const CartTree& tree, const Samples& samples);

  /// All nodes, the root first. When the tree's stop is set, the nodes that wait become leaves.
  std::vector<std::shared_ptr<CartNode>> run();

 private:
  struct Work {
    std::shared_ptr<CartNode> node;
    std::size_t begin, end;
    int depth;  ///< that remains
    ClassFeatures classFeatures;
    RealFeatures realFeatures;
  };

  void grow(const Work& work);
  void split(const Work& work, const Split& split);
  void makeLeaf(const Work& work);
  std::shared_ptr<CartNode> append(const Work& parent, std::size_t begin, std::size_t end, const ClassFeatures& classes,
                                   const RealFeatures& reals);
  std::span<const uint32_t> membersOf(const Work& work) const {
    return std::span(members).subspan(work.begin, work.end - work.begin);
  }

  const CartTree& tree;
  const Samples& samples;
  std::vector<uint32_t> members;
  std::vector<std::vector<uint32_t>> ascending;  // [real feature]
  std::vector<uint32_t> spare;
  std::vector<std::shared_ptr<CartNode>> nodes;
  std::deque<Work> waiting;
};

}  // namespace NetWork
