// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace Search {

/// Solves n linear equations by elimination with partial pivoting, n = x.size(). Row i of `equations` is its n
/// coefficients and its right side; they are used up. A singular system gives what is not finite. For systems so small
/// and so many that a library call would cost more than the work.
inline void smallSolve(std::span<double> equations, std::span<double> x) {
  const std::size_t n = x.size(), stride = n + 1;
  const auto row = [&](std::size_t i) { return equations.data() + i * stride; };
  for (std::size_t k = 0; k < n; ++k) {
    std::size_t pivot = k;
    for (std::size_t i = k + 1; i < n; ++i)
      if (std::abs(row(i)[k]) > std::abs(row(pivot)[k])) pivot = i;
    double* const own = row(k);
    if (pivot != k) std::swap_ranges(own + k, own + stride, row(pivot) + k);
    for (std::size_t i = k + 1; i < n; ++i) {
      double* const other = row(i);
      const double factor = other[k] / own[k];
      for (std::size_t j = k + 1; j < stride; ++j) other[j] -= factor * own[j];
    }
  }
  for (std::size_t k = n; k-- > 0;) {
    double value = row(k)[n];
    for (std::size_t j = k + 1; j < n; ++j) value -= row(k)[j] * x[j];
    x[k] = value / row(k)[k];
  }
}

}  // namespace Search
