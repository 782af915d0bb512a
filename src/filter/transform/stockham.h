// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "filter/transform/fourier.h"

namespace Filter {

/// Stockham's self-sorting transform in mixed radices (Swarztrauber 1984), over `lanes` interleaved transforms at once:
/// element j of transform q stands at j lanes + q.
class Stockham {
 public:
  static constexpr std::size_t kLargestRadix = 61;  ///< beyond, a convolution costs less than the sums

  /// Whether n has no prime factor beyond kLargestRadix.
  static bool fits(std::size_t n);

  explicit Stockham(std::size_t n);

  std::size_t size() const { return n; }
  std::size_t tableSize() const { return 2 * re.size(); }

  /// Transforms in to out by way of work, all [n lanes]; in may be out, work neither.
  void run(ConstSplit in, Split out, Split work, std::size_t lanes) const;

 private:
  struct Pass {
    std::size_t radix;
    std::size_t rest;      ///< m: length of the sub-transforms that are left behind this pass
    std::size_t twiddles;  ///< offset of exp(-2 pi i j p/(radix m)), j = 1..radix-1 rows of p < m
    std::size_t roots;     ///< offset of the radix-th roots of unity, for the radices without a butterfly of their own
  };

  void runPass(const Pass& pass, ConstSplit in, Split out, std::size_t stride) const;

  std::size_t n;
  std::vector<Pass> passes;
  std::vector<double> re, im;
};

}  // namespace Filter
