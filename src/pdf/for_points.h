// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "frame/processor.h"

/// One loop over points, as wide as the processor's vectors. The instructions differ, the rounding does not: without
/// fused operations every lane gives the bits of the plain loop.
namespace PDF {

template <class Formula>
[[gnu::always_inline]] inline void pointLoop(const Formula& formula, const double* x, double* y, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) y[i] = formula(x[i]);
}

#if ORVANE_DISPATCH_AVX2

template <class Formula>
[[gnu::target("avx2"), gnu::flatten]] void pointLoopAvx2(const Formula& formula, const double* x, double* y,
                                                         std::size_t n) {
  pointLoop(formula, x, y, n);
}

#endif

/// y[i] = formula(x[i]); x and y may be the same array.
template <class Formula>
void forPoints(const Formula& formula, const double* x, double* y, std::size_t n) {
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return pointLoopAvx2(formula, x, y, n);
#endif
  pointLoop(formula, x, y, n);
}

/// Sum of (y - cdf)^2 in the order of the points, where fill(x, y, n) gives the y of a block: nothing is allocated.
template <std::size_t kBlock, class Fill>
double squaredErrorByBlocks(std::span<const double> x, std::span<const double> cdf, const Fill& fill) {
  std::array<double, kBlock> y;
  double sum = 0;
  for (std::size_t from = 0; from < x.size(); from += kBlock) {
    const std::size_t n = std::min(kBlock, x.size() - from);
    fill(x.data() + from, y.data(), n);
    for (std::size_t i = 0; i < n; ++i) {
      const double difference = y[i] - cdf[from + i];
      sum += difference * difference;
    }
  }
  return sum;
}

}  // namespace PDF
