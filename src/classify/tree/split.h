// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "classify/tree/cart_node.h"
#include "classify/tree/samples.h"

namespace NetWork {

/// A class feature with the values that a split may still ask for, ascending.
struct ClassFeature {
  int32_t index;
  std::vector<uint8_t> values;
};

/// The features that a node may split on. Shared by the nodes that may use the same ones.
using ClassFeatures = std::shared_ptr<const std::vector<ClassFeature>>;
using RealFeatures = std::shared_ptr<const std::vector<int32_t>>;

struct Split {
  SplitKind kind = SplitKind::leaf;
  std::size_t place = 0;  ///< of the feature in its list
  int32_t index = 0;      ///< of the feature
  uint8_t classValue = 0;
  double threshold = 0;
  double score = 0;

  bool goesLeft(const Samples& samples, uint32_t sample) const {
    const auto feature = static_cast<std::size_t>(index);
    return kind == SplitKind::byReal ? threshold > samples.reals[feature][sample]
                                     : samples.classes[feature][sample] != classValue;
  }
};

/// What a search for the best split of one node looks at.
struct SplitSearch {
  const Samples& samples;
  std::span<const uint32_t> members;  ///< in the order of the samples
  const ClassFeatures& classFeatures;
  const RealFeatures& realFeatures;
  const std::vector<std::vector<uint32_t>>& ascending;  ///< [real feature]: the samples by value, NaN last
  std::size_t begin;                                    ///< of the node's part of `ascending`
  double minValueGap;
};

/// The candidate of the lowest score, of equal ones the first; none without a candidate. Candidates with a NaN score do
/// not count.
std::optional<Split> bestSplit(const SplitSearch& search, bool isClass);

}  // namespace NetWork
