// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace HighPrecision {

// Limb by limb, without a change of radix. Limbs are found from the top by doubles over the highest places of what is
// left, which stands in columns that wait with their carries; a limb that was one too high makes the next one negative.

/// So many limbs of the divisor or of the root, at most: columns hold their sums.
inline constexpr std::size_t kLongestQuotient = 4000;

/// quotient = floor(a 10^(7 padding) / b) for b of 2 limbs and more, the highest not 0. The quotient has one place more
/// than its length less that of b, or as many, when it is known to fit.
void quotientLimbs(std::span<const int64_t> a, std::size_t padding, std::span<const int64_t> b,
                   std::span<int64_t> quotient);

/// root = floor(sqrt(a 10^(7 padding))) of at least 3 limbs in all, the highest of a not 0; half as many places.
void rootLimbs(std::span<const int64_t> a, std::size_t padding, std::span<int64_t> root);

}  // namespace HighPrecision
