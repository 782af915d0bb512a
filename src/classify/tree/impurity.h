// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "classify/tree/samples.h"

/// How badly a split separates the labels of a node: the lower, the better. A scan over candidates keeps the running
/// `Side` of the samples that would go left; the rest of the node goes right.
namespace NetWork {

/// Gini impurity of the two sides, weighted by their shares of the samples.
class GiniScore {
 public:
  struct Side {
    std::size_t count = 0, positive = 0;
  };

  GiniScore(const Samples& samples, std::span<const uint32_t> members);

  void add(Side& side, uint32_t sample) const { ++side.count, side.positive += labels[sample]; }
  double score(const Side& left) const;

  /// Scores are exact: no second look.
  static constexpr bool kExact = true;

 private:
  const std::vector<uint8_t>& labels;
  Side all;
};

/// Sum of the squared deviations of both sides from their means. Running sums give it to rounding; what decides between
/// near candidates is the sum over the deviations themselves, in the order of the node's samples.
class DeviationScore {
 public:
  struct Side {
    std::size_t count = 0;
    double sum = 0, squares = 0;  // of the distances from the node's mean
  };

  DeviationScore(const Samples& samples, std::span<const uint32_t> members);

  void add(Side& side, uint32_t sample) const {
    const double d = labels[sample] - mean;
    ++side.count, side.sum += d, side.squares += d * d;
  }
  double score(const Side& left) const;

  static constexpr bool kExact = false;
  double slack() const { return 1e-9 * all.squares; }  ///< far above the rounding of score()

  /// The score by the deviations; `goesLeft` tells a sample's side.
  template <class GoesLeft>
  double exactScore(GoesLeft&& goesLeft) const {
    double sum[2] = {}, squares[2] = {}, count[2] = {};
    for (const uint32_t sample : members) {
      const bool side = goesLeft(sample);
      sum[side] += labels[sample];
      ++count[side];
    }
    const double means[2] = {sum[0] / count[0], sum[1] / count[1]};
    for (const uint32_t sample : members) {
      const bool side = goesLeft(sample);
      const double d = labels[sample] - means[side];
      squares[side] += d * d;
    }
    return squares[1] + squares[0];
  }

 private:
  const std::vector<double>& labels;
  std::span<const uint32_t> members;
  double mean = 0;
  Side all;
};

}  // namespace NetWork
