// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "highprecision/decimal/limb_vector.h"

namespace HighPrecision {

/// The longest shorter factor that productLimbs takes: its columns stay within 64 bits, the sums of its halves within
/// 31.
inline constexpr std::size_t kLongestColumns = 4096;

/// product = a b for limbs below 10^7 and a at least as long as b; product has as many places as both have limbs.
void productLimbs(std::span<const int64_t> a, std::span<const int64_t> b, std::span<int64_t> product);

/// Rows of a product that are added at a time: a column is read and written once for all of them.
inline constexpr std::size_t kRows = 4;

/// columns[t] += sum of a[t - j] b[j] over four rows j, for t below `count`; all below 2^31 in size. Places before a
/// count too.
void addRows(const int64_t* a, const int64_t* b, int64_t* columns, std::size_t count);

/// columns[i] -= factor * limbs[i] for |factor| and limbs below 2^31.
void subtractRow(int64_t* columns, int64_t factor, const int64_t* limbs, std::size_t n);
inline void subtractMultiple(int64_t* columns, int64_t factor, const int64_t* limbs, std::size_t n) {
  if (n > 8) return subtractRow(columns, factor, limbs, n);
  for (std::size_t i = 0; i < n; ++i) {
    columns[i] -= factor * limbs[i];
    oneByOne();
  }
}

}  // namespace HighPrecision
