// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>

namespace Statistics {

/// The place of a double in the ascending order of all doubles.
inline int64_t placeOf(double x) {
  const auto bits = std::bit_cast<int64_t>(x);
  return bits < 0 ? INT64_MIN - bits : bits;
}

inline double doubleAt(int64_t place) { return std::bit_cast<double>(place < 0 ? INT64_MIN - place : place); }

/// The least double x in (low, high] with cdf(x) >= q, by bisection in the order of the doubles: at most 64 values,
/// without a start, a width or a derivative.
template <class CDF>
double leastReaching(double q, double low, double high, CDF&& cdf) {
  int64_t below = placeOf(low), above = placeOf(high);
  while (true) {
    const int64_t middle = (below >> 1) + (above >> 1) + (below & above & 1);
    if (middle == below) break;
    (cdf(doubleAt(middle)) >= q ? above : below) = middle;
  }
  return doubleAt(above);
}

}  // namespace Statistics
